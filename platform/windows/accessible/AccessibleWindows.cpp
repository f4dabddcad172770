// platform/windows/accessible/AccessibleWindows.cpp: WM_GETOBJECT, and the events of the system.
#include "platform/windows/accessible/AccessibleWindows.h"

#include <utility>
#include <vector>

#include "platform/windows/accessible/AccessibleNode.h"

namespace velkor {
namespace {

/// The keyboard came to one of the windows; told after the system has told of the window.
constexpr UINT FocusCame = ActsAreDue + 1;

void TellSystem(DWORD event, HWND window, LONG child) {
  ::NotifyWinEvent(event, window, OBJID_CLIENT, child);
}

}  // namespace

AccessibleWindows::AccessibleWindows(AccessibleTree& tree, const DialogOwner& owner) {
  link_->tree = &tree;
  link_->owner = &owner;
  tree.onChange = [this](AccessibleChange change, const AccessibleId& node) { Tell(change, node); };
}

AccessibleWindows::~AccessibleWindows() {
  End();
}

void AccessibleWindows::Begin(HWND control) {
  link_->control = control;
}

void AccessibleWindows::Add(const Element& element, HWND window) {
  link_->windows[&element] = window;
}

void AccessibleWindows::End() {
  if (link_->tree == nullptr) return;
  std::exchange(link_->tree, nullptr)->onChange = nullptr;
  link_->acts.clear();
  std::vector<ComPtr<IAccessible>> held;
  for (AccessibleNode* node : link_->nodes) held.emplace_back(node);
  for (const ComPtr<IAccessible>& node : held) ::CoDisconnectObject(node.Get(), 0);
}

std::optional<LRESULT> AccessibleWindows::Handle(HWND window, UINT message, WPARAM wParam,
                                                 LPARAM lParam) {
  if (link_->tree == nullptr) return std::nullopt;
  switch (message) {
    case WM_GETOBJECT: {
      // Some callers extend the sign of the number, some do not.
      if (static_cast<LONG>(lParam) != OBJID_CLIENT) return std::nullopt;
      const auto node = NodeOf(window);
      if (!node) return std::nullopt;
      const ComPtr<IAccessible> object(new AccessibleNode(link_, *node));
      return ::LresultFromObject(__uuidof(IAccessible), wParam, object.Get());
    }
    case WM_SETFOCUS:
      ::PostMessageW(link_->control, FocusCame, 0, 0);
      return std::nullopt;
    case FocusCame:
      if (window != link_->control) return std::nullopt;
      TellFocus();
      return 0;
    case ActsAreDue:
      if (window != link_->control) return std::nullopt;
      Act();
      return 0;
    default:
      return std::nullopt;
  }
}

std::optional<AccessibleId> AccessibleWindows::NodeOf(HWND window) const {
  if (window == link_->control) return AccessibleId();
  for (const auto& [element, own] : link_->windows) {
    if (own == window) return link_->tree->NodeOf(*element);
  }
  return std::nullopt;
}

void AccessibleWindows::Tell(AccessibleChange change, const AccessibleId& node) const {
  const HWND window = link_->WindowOf(node);
  const LONG child = ChildIdOf(*link_->tree, node);
  switch (change) {
    case AccessibleChange::Current:
      if (::GetFocus() == window) TellSystem(EVENT_OBJECT_FOCUS, window, child);
      break;
    case AccessibleChange::Selection:
      TellSystem(child == CHILDID_SELF ? EVENT_OBJECT_SELECTIONWITHIN : EVENT_OBJECT_SELECTION,
                 window, child);
      break;
    case AccessibleChange::Children:
      TellSystem(EVENT_OBJECT_REORDER, window, child);
      break;
  }
}

/// Of a window the system tells itself; not of a node within it.
void AccessibleWindows::TellFocus() const {
  const auto focused = link_->Focused();
  if (!focused) return;
  const LONG child = ChildIdOf(*link_->tree, *focused);
  if (child != CHILDID_SELF) {
    TellSystem(EVENT_OBJECT_FOCUS, link_->WindowOf(*focused), child);
  }
}

void AccessibleWindows::Act() {
  const std::vector<AccessibleId> due = std::exchange(link_->acts, {});
  const std::shared_ptr<AccessibleLink> link = link_;
  for (const AccessibleId& node : due) {
    if (link->tree != nullptr && link->IsReachable()) link->tree->Act(node);
  }
}

}  // namespace velkor
