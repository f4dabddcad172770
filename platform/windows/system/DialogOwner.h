// platform/windows/system/DialogOwner.h: where the dialogs of one control open, and who hears of
// them.
#pragma once

#include <functional>

#include "platform/windows/system/WindowDensity.h"

namespace velkor {

/// Shared by the seams of one control; outlives them. On the user-interface thread.
class DialogOwner {
 public:
  explicit DialogOwner(HWND window = nullptr) : window_(window) {}
  DialogOwner(const DialogOwner&) = delete;
  DialogOwner& operator=(const DialogOwner&) = delete;

  /// The window that holds the control; null while there is none.
  void SetWindow(HWND window) { window_ = window; }
  HWND Window() const { return window_; }

  /// The window that a new dialog opens over: the dialog of this thread that is open, else the
  /// top-level window around the control; null without one.
  HWND Get() const;

  /// Whether a dialog is open or messages are processed in the middle of a call: whatever the
  /// messages bring, the control must live on until this is over.
  bool IsBusy() const { return depth_ > 0; }

  /// Set by whoever holds the control: the first level begins, the last one ended.
  std::function<void(bool busy)> onBusy;
  /// A dialog of the control opens or closed, so that the container's own windows follow
  /// (IOleInPlaceFrame::EnableModeless). Not called when only messages are processed.
  std::function<void(bool open)> onModal;
  /// Whoever is outside calls in (a call of the container's, a message of a window), or what it
  /// called has returned; calls may lie within one another. Once the outermost has returned, this
  /// may be gone.
  std::function<void(bool begins)> onEntry;

 private:
  friend class BusyScope;
  friend class ModalScope;

  HWND window_;
  int depth_ = 0;
};

/// Messages are processed in the middle of a call for as long as it lives.
class BusyScope {
 public:
  explicit BusyScope(DialogOwner& owner);
  ~BusyScope();
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;

 private:
  DialogOwner& owner_;
};

/// Somebody outside is answered for as long as it lives: nothing of the control may be used after
/// its end.
class EntryScope {
 public:
  explicit EntryScope(const DialogOwner& owner);
  ~EntryScope();
  EntryScope(const EntryScope&) = delete;
  EntryScope& operator=(const EntryScope&) = delete;

 private:
  /// A copy, since its call may be the end of the owner.
  std::function<void(bool)> onEntry_;
};

/// A dialog is open for as long as it lives, for the density awareness of the window under it,
/// which is enabled at its end as it was.
class ModalScope {
 public:
  explicit ModalScope(DialogOwner& owner);
  ~ModalScope();
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;

  /// The window to open over, as it was when this began; null without one.
  HWND Window() const { return window_; }

 private:
  BusyScope busy_;
  DialogOwner& owner_;
  HWND window_;
  AwarenessScope awareness_;
  bool wasEnabled_;
};

}  // namespace velkor
