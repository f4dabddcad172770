// platform/windows/accessible/AccessibleLink.cpp: finds windows of nodes, and nodes of windows.
#include "platform/windows/accessible/AccessibleLink.h"

#include "platform/Elements.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {
namespace {

constexpr int KindShift = 24;
constexpr std::uint32_t MostIndex = (1U << KindShift) - 1;

}  // namespace

HWND AccessibleLink::WindowOf(const AccessibleId& node) const {
  const auto found = windows.find(tree->ElementOf(node));
  return found == windows.end() ? control : found->second;
}

bool AccessibleLink::IsReachable() const {
  return ::IsWindowEnabled(control) && ::IsWindowEnabled(::GetAncestor(control, GA_ROOT));
}

std::optional<AccessibleId> AccessibleLink::Focused() const {
  const HWND focus = ::GetFocus();
  for (const auto& [element, window] : windows) {
    if (window != focus || focus == nullptr) continue;
    const auto node = tree->NodeOf(*element);
    if (node && dynamic_cast<const Toolbar*>(element) != nullptr) {
      // Which of the buttons a key would press only the window knows.
      const auto hot = static_cast<int>(::SendMessageW(window, TB_GETHOTITEM, 0, 0));
      if (const auto button = tree->ChildAt(*node, hot)) return button;
    }
    return tree->CurrentOf(*element);
  }
  return std::nullopt;
}

LONG ChildIdOf(AccessibleTree& tree, const AccessibleId& node) {
  const auto parent = tree.ParentOf(node);
  if (!parent || *parent == AccessibleId()) return CHILDID_SELF;
  if (tree.ParentOf(*parent) == AccessibleId()) return tree.IndexOf(node) + 1;
  if (node.index > MostIndex) return CHILDID_SELF;
  return -1 - static_cast<LONG>(std::uint32_t{node.kind} << KindShift | node.index);
}

std::optional<AccessibleId> NodeOfChildId(AccessibleTree& tree, const AccessibleId& parent,
                                          LONG child) {
  if (child == CHILDID_SELF) return parent;
  if (child > 0) return tree.ChildAt(parent, static_cast<int>(child) - 1);
  const auto packed = static_cast<std::uint32_t>(-1 - child);
  return tree.NodeAt(static_cast<std::uint8_t>(packed >> KindShift), packed & MostIndex);
}

}  // namespace velkor
