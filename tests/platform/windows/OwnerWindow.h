// tests/platform/windows/OwnerWindow.h: a top-level window that dialogs open over.
#pragma once

#include <vector>

#include "platform/windows/elements/PaintedWindow.h"
#include "platform/windows/system/DialogOwner.h"
#include "platform/windows/system/Modules.h"

namespace velkor {

/// Shown, and its owner's calls written down.
class OwnerWindow {
 public:
  OwnerWindow() {
    window =
        ::CreateWindowExW(0, PaintedWindowClass(), L"Container", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                          40, 40, 700, 500, nullptr, nullptr, ThisModule(), nullptr);
    ::SetActiveWindow(window);
    owner.SetWindow(window);
    owner.onModal = [this](bool open) { modal.push_back(open); };
  }
  ~OwnerWindow() { ::DestroyWindow(window); }
  OwnerWindow(const OwnerWindow&) = delete;
  OwnerWindow& operator=(const OwnerWindow&) = delete;

  HWND window;
  DialogOwner owner;
  /// What DialogOwner::onModal was called with.
  std::vector<bool> modal;
};

/// Takes WM_QUIT out of this thread's queue.
/// @return whether it was there
inline bool TakeQuit() {
  MSG message;
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) return true;
    ::DispatchMessageW(&message);
  }
  return false;
}

}  // namespace velkor
