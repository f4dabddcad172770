// platform/windows/accessible/AccessibleWindows.h: the windows of one control as screen readers
// meet them.
#pragma once

#include <memory>
#include <optional>

#include "platform/windows/accessible/AccessibleLink.h"

namespace velkor {

/// Answers those who ask a window for its objects, and tells them what changes. Nothing is made
/// before somebody asks, and what they hold is cut off at the end.
class AccessibleWindows {
 public:
  /// Both outlive this.
  AccessibleWindows(AccessibleTree& tree, const DialogOwner& owner);
  ~AccessibleWindows();
  AccessibleWindows(const AccessibleWindows&) = delete;
  AccessibleWindows& operator=(const AccessibleWindows&) = delete;

  /// The control's own window, before all others.
  void Begin(HWND control);
  void Add(const Element& element, HWND window);
  /// To be asked about each message of these windows first.
  /// @return none for a message that is for others, as the question for another object
  std::optional<LRESULT> Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  /// The windows go: whoever still holds a node is told that it is not connected any more.
  void End();

 private:
  std::optional<AccessibleId> NodeOf(HWND window) const;
  void Tell(AccessibleChange change, const AccessibleId& node) const;
  void TellFocus() const;
  void Act();

  std::shared_ptr<AccessibleLink> link_ = std::make_shared<AccessibleLink>();
};

}  // namespace velkor
