// platform/windows/accessible/AccessibleLink.h: ties the nodes that screen readers hold to the
// control that they tell of, for as long as it has windows.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <vector>

#include "platform/Accessible.h"
#include "platform/windows/system/DialogOwner.h"

namespace velkor {

class AccessibleNode;

/// Shared by a control's windows and its nodes. What refers to the control is not to be used any
/// more once `tree` is null.
struct AccessibleLink {
  AccessibleTree* tree = nullptr;
  const DialogOwner* owner = nullptr;
  HWND control = nullptr;
  std::map<const Element*, HWND> windows;
  /// All that somebody holds.
  std::set<AccessibleNode*> nodes;
  /// What is to be done when the control's window finds the time.
  std::vector<AccessibleId> acts;

  /// The window that shows a node.
  HWND WindowOf(const AccessibleId& node) const;
  /// Whether a user could reach the control: not below a dialog that is open.
  bool IsReachable() const;
  /// The node that the keyboard is on; none while it is elsewhere.
  std::optional<AccessibleId> Focused() const;
};

/// Tells the control's window that `acts` has grown.
inline constexpr UINT ActsAreDue = WM_APP;

/// A node as the child identifier of a window's events: nothing for what the window is itself, the
/// place for its children, and for those further down a code below 0.
LONG ChildIdOf(AccessibleTree& tree, const AccessibleId& node);
/// The node that a child identifier names where `parent` is asked; none for nonsense.
std::optional<AccessibleId> NodeOfChildId(AccessibleTree& tree, const AccessibleId& parent,
                                          LONG child);

}  // namespace velkor
