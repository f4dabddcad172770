// tests/platform/windows/UserSteps.h: what a user does with a dialog that is about to open.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/windows/elements/MakePeer.h"
#include "platform/windows/system/Wide.h"

namespace velkor {

inline void PostKey(HWND window, WPARAM key) {
  ::PostMessageW(window, WM_KEYDOWN, key, 1);
  ::PostMessageW(window, WM_KEYUP, key, 1);
}

inline void PostText(HWND window, const std::wstring& text) {
  for (const wchar_t unit : text) ::PostMessageW(window, WM_CHAR, unit, 1);
}

inline void PostClick(HWND window, POINT at = {3, 3}) {
  ::PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
  ::PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
}

inline HWND WindowOf(const Element& element) {
  auto* const peer = dynamic_cast<WindowsPeer*>(element.Peer());
  return peer == nullptr ? nullptr : peer->Window();
}

inline std::wstring WindowText(HWND window) {
  wchar_t text[512]{};
  ::SendMessageW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
  return text;
}

/// In the coordinates of a window's parent.
inline RECT PlaceOf(HWND window) {
  RECT place{};
  ::GetWindowRect(window, &place);
  ::MapWindowPoints(nullptr, ::GetParent(window), reinterpret_cast<POINT*>(&place), 2);
  return place;
}

/// Runs one step after the other on this thread, inside the dialog's own loop, once the dialog with
/// this title is open; each when everything that was posted before is done. A dialog that does not
/// open in time fails the test; one that the steps leave open does too, and is closed.
class UserSteps {
 public:
  using Step = std::function<void(HWND dialog)>;

  UserSteps(std::wstring title, std::vector<Step> steps)
      : title_(std::move(title)), steps_(std::move(steps)) {
    timer_.onTimer = [this] { Tick(); };
    timer_.SetEnabled(true);
  }
  ~UserSteps() { EXPECT_EQ(done_, steps_.size()) << "steps that were never taken"; }
  UserSteps(const UserSteps&) = delete;
  UserSteps& operator=(const UserSteps&) = delete;

 private:
  void Tick() {
    const HWND dialog = ::FindWindowW(L"#32770", title_.c_str());
    const bool isOpen = dialog != nullptr && ::IsWindowVisible(dialog);
    if (done_ == 0 && !isOpen && patience_-- > 0) return;
    if (done_ < steps_.size()) return steps_[done_++](dialog);
    timer_.SetEnabled(false);
    if (!isOpen) return;
    ADD_FAILURE() << "The dialog stays open";
    ::PostMessageW(dialog, WM_CLOSE, 0, 0);
  }

  std::wstring title_;
  std::vector<Step> steps_;
  std::size_t done_ = 0;
  int patience_ = 500;
  Timer timer_{"step", 10};
  std::unique_ptr<ElementPeer> peer_ = MakePeer(timer_);
};

}  // namespace velkor
