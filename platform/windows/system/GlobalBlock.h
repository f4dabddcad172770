// platform/windows/system/GlobalBlock.h: an owner of the global memory that the common dialogs
// exchange.
#pragma once

#include <cstddef>
#include <utility>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// Movable memory, zero at first; freed at the end.
class GlobalBlock {
 public:
  /// Null where there is no memory.
  explicit GlobalBlock(std::size_t bytes) : handle_(::GlobalAlloc(GHND, bytes)) {}
  ~GlobalBlock() {
    if (handle_ != nullptr) ::GlobalFree(handle_);
  }
  GlobalBlock(const GlobalBlock&) = delete;
  GlobalBlock& operator=(const GlobalBlock&) = delete;

  HGLOBAL Get() const { return handle_; }
  std::size_t Size() const { return handle_ != nullptr ? ::GlobalSize(handle_) : 0; }
  /// A function that was given the handle may have put another one in its place, having freed it.
  void Follow(HGLOBAL handle) { handle_ = handle; }

 private:
  HGLOBAL handle_;
};

/// Holds a block at its place for as long as it lives.
template <typename T>
class LockedBlock {
 public:
  explicit LockedBlock(const GlobalBlock& block)
      : handle_(block.Get()), memory_(handle_ ? static_cast<T*>(::GlobalLock(handle_)) : nullptr) {}
  ~LockedBlock() {
    if (memory_ != nullptr) ::GlobalUnlock(handle_);
  }
  LockedBlock(const LockedBlock&) = delete;
  LockedBlock& operator=(const LockedBlock&) = delete;

  /// Null where the block is.
  T* Get() const { return memory_; }

 private:
  HGLOBAL handle_;
  T* memory_;
};

}  // namespace velkor
