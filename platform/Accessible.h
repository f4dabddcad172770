// platform/Accessible.h: what screen readers ask about a control that shows more than its elements.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "values/Twips.h"

namespace velkor {

class Element;

enum class AccessibleRole {
  Control,
  ToolBar,
  Button,
  Label,
  Status,
  Edit,
  ScrollBar,
  Header,
  Table,
  Row,
  Cell,
  /// What lies over several cells of a table.
  Bar,
  List,
  ListItem,
};

/// A node by its place in the tree: a few numbers, so that nothing is kept for a node that nobody
/// asks about. The control itself is the node of all zeros.
struct AccessibleId {
  /// What `index` counts, as the tree numbers it.
  std::uint8_t kind = 0;
  std::uint32_t index = 0;
  /// The state of the tree in which it was counted: in others the node may be gone.
  std::uint64_t revision = 0;

  friend bool operator==(const AccessibleId&, const AccessibleId&) = default;
};

/// What is to be said about a node.
struct AccessibleFacts {
  AccessibleRole role = AccessibleRole::Control;
  std::string name;
  std::string description;
  /// What it holds at present, beside its name.
  std::string value;
  /// What Act does, in a word; empty for nothing.
  std::string action;
  /// In pixels of the control; also where it is scrolled out of sight.
  PixelRect bounds;
  bool enabled = true;
  /// Its element is shown.
  bool visible = true;
  /// Some of it is not scrolled away.
  bool inSight = true;
  bool focusable = false;
  bool selectable = false;
  bool selected = false;
  bool pressed = false;
};

enum class AccessibleChange {
  /// The keyboard is on another node of the element; told with that node.
  Current,
  /// Others are selected; told with the one node that is, else with the element's.
  Selection,
  /// It has other children.
  Children,
};

/// The control as a tree of nodes. Whatever it is asked about a node that is gone, as after the
/// year was loaded again, it answers none.
class AccessibleTree {
 public:
  virtual ~AccessibleTree() = default;

  virtual bool IsThere(const AccessibleId& node) = 0;
  virtual std::optional<AccessibleFacts> FactsOf(const AccessibleId& node) = 0;
  /// None for the control too.
  virtual std::optional<AccessibleId> ParentOf(const AccessibleId& node) = 0;
  /// 0 for a node that is gone.
  virtual int ChildCount(const AccessibleId& node) = 0;
  /// @param index  from 0
  virtual std::optional<AccessibleId> ChildAt(const AccessibleId& node, int index) = 0;
  /// Place among the children of its parent, from 0; of one that is there and is not the control.
  virtual int IndexOf(const AccessibleId& node) = 0;
  /// The node of this kind and index as the tree is now.
  virtual std::optional<AccessibleId> NodeAt(std::uint8_t kind, std::uint32_t index) = 0;
  /// None for an element that only holds others.
  virtual std::optional<AccessibleId> NodeOf(const Element& element) = 0;
  /// The element that shows a node; null for the control.
  virtual Element* ElementOf(const AccessibleId& node) = 0;
  /// The innermost node that is seen at a point.
  /// @param x, y  in pixels of the control
  virtual std::optional<AccessibleId> NodeAtPoint(int x, int y) = 0;
  /// The node of an element that the keyboard is on; the element's own where it has no other.
  virtual std::optional<AccessibleId> CurrentOf(const Element& element) = 0;
  /// What is selected among the nodes below one.
  virtual std::vector<AccessibleId> SelectionOf(const AccessibleId& node) = 0;

  /// Does what a press on the node does; may show a message or another program's window.
  /// @return false where that is nothing
  virtual bool Act(const AccessibleId& node) = 0;
  /// Selects the node and puts its element's keyboard on it.
  /// @return false where it cannot be selected
  virtual bool Select(const AccessibleId& node) = 0;

  /// Set by whoever passes changes on.
  std::function<void(AccessibleChange, const AccessibleId&)> onChange;
};

}  // namespace velkor
