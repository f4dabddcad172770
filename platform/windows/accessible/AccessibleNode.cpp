// platform/windows/accessible/AccessibleNode.cpp: answers a screen reader from the tree.
#include "platform/windows/accessible/AccessibleNode.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/Elements.h"
#include "platform/windows/com/Enumeration.h"
#include "platform/windows/com/Variant.h"
#include "platform/windows/system/WindowDensity.h"

namespace velkor {
namespace {

/// LIBID_Accessibility (oleacc.idl). What the cross compiler's library gives for the identifiers of
/// oleacc is a jump, not a number.
constexpr GUID AccessibilityTypes{
    0x1ea4dbf0, 0x3c3b, 0x11cf, {0x81, 0x0c, 0x00, 0xaa, 0x00, 0x38, 0x9b, 0x71}};

LONG RoleOf(AccessibleRole role) {
  switch (role) {
    case AccessibleRole::Control:
      return ROLE_SYSTEM_GROUPING;
    case AccessibleRole::ToolBar:
      return ROLE_SYSTEM_TOOLBAR;
    case AccessibleRole::Button:
      return ROLE_SYSTEM_PUSHBUTTON;
    case AccessibleRole::Label:
      return ROLE_SYSTEM_STATICTEXT;
    case AccessibleRole::Status:
      return ROLE_SYSTEM_INDICATOR;
    case AccessibleRole::Edit:
      return ROLE_SYSTEM_TEXT;
    case AccessibleRole::ScrollBar:
      return ROLE_SYSTEM_SCROLLBAR;
    case AccessibleRole::Header:
      return ROLE_SYSTEM_COLUMNHEADER;
    case AccessibleRole::Table:
      return ROLE_SYSTEM_TABLE;
    case AccessibleRole::Row:
      return ROLE_SYSTEM_ROW;
    case AccessibleRole::Cell:
      return ROLE_SYSTEM_CELL;
    case AccessibleRole::List:
      return ROLE_SYSTEM_LIST;
    case AccessibleRole::Bar:
    case AccessibleRole::ListItem:
      return ROLE_SYSTEM_LISTITEM;
  }
  return ROLE_SYSTEM_CLIENT;
}

void GiveNumber(LONG number, VARIANT* given) {
  given->vt = VT_I4;
  given->lVal = number;
}

void GiveObject(const ComPtr<IDispatch>& object, VARIANT& given) {
  given.vt = VT_DISPATCH;
  given.pdispVal = ComPtr<IDispatch>(object).Detach();
}

using Nodes = Enumeration<IEnumVARIANT, VARIANT, ComPtr<IDispatch>, GiveObject>;

/// What the node at this place among its siblings is to a direction: 1 the next one, -1 the one
/// before, 0 none of both.
int StepOf(LONG direction) {
  switch (direction) {
    case NAVDIR_NEXT:
    case NAVDIR_RIGHT:
    case NAVDIR_DOWN:
      return 1;
    case NAVDIR_PREVIOUS:
    case NAVDIR_LEFT:
    case NAVDIR_UP:
      return -1;
    default:
      return 0;
  }
}

/// Whether a sibling lies where a direction of space leads; those of order lead anywhere.
bool LiesThere(LONG direction, const PixelRect& from, const PixelRect& to) {
  switch (direction) {
    case NAVDIR_RIGHT:
      return to.left >= from.right;
    case NAVDIR_LEFT:
      return to.right <= from.left;
    case NAVDIR_DOWN:
      return to.top >= from.bottom;
    case NAVDIR_UP:
      return to.bottom <= from.top;
    default:
      return true;
  }
}

}  // namespace

AccessibleNode::AccessibleNode(std::shared_ptr<AccessibleLink> link, const AccessibleId& id)
    : link_(std::move(link)), id_(id) {
  link_->nodes.insert(this);
}

AccessibleNode::~AccessibleNode() {
  link_->nodes.erase(this);
}

void* AccessibleNode::FindOther(REFIID id) {
  return id == __uuidof(IDispatch) ? static_cast<IDispatch*>(this) : nullptr;
}

template <typename Work>
HRESULT AccessibleNode::Ask(const Work& work) {
  if (link_->tree == nullptr) return CO_E_OBJNOTCONNECTED;
  // What is called may be the end of the last reference.
  const ComPtr<IAccessible> kept(this);
  const EntryScope entry(*link_->owner);
  HRESULT result = E_FAIL;
  const HRESULT answered = Answer([&] {
    AccessibleTree& tree = *link_->tree;
    result = tree.IsThere(id_) ? work(tree) : CO_E_OBJNOTCONNECTED;
  });
  return FAILED(answered) ? answered : result;
}

template <typename Work>
HRESULT AccessibleNode::Ask(const VARIANT& child, const Work& work) {
  return Ask([&](AccessibleTree& tree) -> HRESULT {
    if (child.vt != VT_I4) return E_INVALIDARG;
    const auto node = NodeOfChildId(tree, id_, child.lVal);
    return node ? work(tree, *node) : E_INVALIDARG;
  });
}

template <typename Work>
HRESULT AccessibleNode::AskFacts(const VARIANT& child, const Work& work) {
  return Ask(child, [&](AccessibleTree& tree, const AccessibleId& node) -> HRESULT {
    const auto facts = tree.FactsOf(node);
    return facts ? work(node, *facts) : CO_E_OBJNOTCONNECTED;
  });
}

HRESULT AccessibleNode::GiveText(const VARIANT& child, BSTR* text, Text member) {
  if (text == nullptr) return E_POINTER;
  *text = nullptr;
  return AskFacts(child, [&](const AccessibleId&, const AccessibleFacts& facts) {
    if ((facts.*member).empty()) return S_FALSE;
    *text = Bstr(facts.*member).Release();
    return S_OK;
  });
}

ComPtr<IDispatch> AccessibleNode::Make(const AccessibleId& node) const {
  return ComPtr<IDispatch>(new AccessibleNode(link_, node));
}

void AccessibleNode::Give(const AccessibleId& node, VARIANT* given) const {
  if (node == id_) {
    GiveNumber(CHILDID_SELF, given);
  } else {
    GiveObject(Make(node), *given);
  }
}

bool AccessibleNode::IsWithin(AccessibleTree& tree, const AccessibleId& node) const {
  for (std::optional<AccessibleId> at = node; at; at = tree.ParentOf(*at)) {
    if (*at == id_) return true;
  }
  return false;
}

RECT AccessibleNode::OnScreen(const AccessibleId& node, const AccessibleFacts& facts) const {
  // In the window's own pixels, whatever those of the thread are.
  const AwarenessScope awareness(link_->control);
  const PixelRect& bounds = facts.bounds;
  RECT place{bounds.left, bounds.top, bounds.right, bounds.bottom};
  if (node == AccessibleId()) ::GetClientRect(link_->control, &place);
  ::MapWindowPoints(link_->control, nullptr, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

LONG AccessibleNode::StateOf(const AccessibleId& node, const AccessibleFacts& facts) const {
  LONG state = 0;
  const auto add = [&](bool is, LONG flag) { state |= is ? flag : 0; };
  add(!facts.enabled || !::IsWindowEnabled(link_->control), STATE_SYSTEM_UNAVAILABLE);
  add(!facts.visible || !::IsWindowVisible(link_->control), STATE_SYSTEM_INVISIBLE);
  add(!facts.inSight, STATE_SYSTEM_OFFSCREEN);
  add(facts.focusable, STATE_SYSTEM_FOCUSABLE);
  add(facts.focusable && link_->Focused() == node, STATE_SYSTEM_FOCUSED);
  add(facts.selectable, STATE_SYSTEM_SELECTABLE);
  add(facts.selected, STATE_SYSTEM_SELECTED);
  add(facts.pressed, STATE_SYSTEM_PRESSED);
  return state;
}

STDMETHODIMP AccessibleNode::get_accParent(IDispatch** parent) {
  if (parent == nullptr) return E_POINTER;
  *parent = nullptr;
  return Ask([&](AccessibleTree& tree) -> HRESULT {
    const auto node = tree.ParentOf(id_);
    if (!node) {
      return ::AccessibleObjectFromWindow(link_->control, static_cast<DWORD>(OBJID_WINDOW),
                                          IID_IDispatch, reinterpret_cast<void**>(parent));
    }
    *parent = Make(*node).Detach();
    return S_OK;
  });
}

STDMETHODIMP AccessibleNode::get_accChildCount(LONG* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return Ask([&](AccessibleTree& tree) {
    *count = tree.ChildCount(id_);
    return S_OK;
  });
}

STDMETHODIMP AccessibleNode::get_accChild(VARIANT child, IDispatch** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  return Ask(child, [&](AccessibleTree&, const AccessibleId& node) {
    *object = Make(node).Detach();
    return S_OK;
  });
}

STDMETHODIMP AccessibleNode::get_accName(VARIANT child, BSTR* name) {
  return GiveText(child, name, &AccessibleFacts::name);
}

STDMETHODIMP AccessibleNode::get_accValue(VARIANT child, BSTR* value) {
  return GiveText(child, value, &AccessibleFacts::value);
}

STDMETHODIMP AccessibleNode::get_accDescription(VARIANT child, BSTR* description) {
  return GiveText(child, description, &AccessibleFacts::description);
}

STDMETHODIMP AccessibleNode::get_accDefaultAction(VARIANT child, BSTR* action) {
  return GiveText(child, action, &AccessibleFacts::action);
}

STDMETHODIMP AccessibleNode::get_accRole(VARIANT child, VARIANT* role) {
  if (role == nullptr) return E_POINTER;
  ::VariantInit(role);
  return AskFacts(child, [&](const AccessibleId&, const AccessibleFacts& facts) {
    GiveNumber(RoleOf(facts.role), role);
    return S_OK;
  });
}

STDMETHODIMP AccessibleNode::get_accState(VARIANT child, VARIANT* state) {
  if (state == nullptr) return E_POINTER;
  ::VariantInit(state);
  return AskFacts(child, [&](const AccessibleId& node, const AccessibleFacts& facts) {
    GiveNumber(StateOf(node, facts), state);
    return S_OK;
  });
}

STDMETHODIMP AccessibleNode::get_accHelp(VARIANT /*child*/, BSTR* help) {
  if (help == nullptr) return E_POINTER;
  *help = nullptr;
  return S_FALSE;
}

STDMETHODIMP AccessibleNode::get_accHelpTopic(BSTR* file, VARIANT /*child*/, LONG* topic) {
  if (file == nullptr || topic == nullptr) return E_POINTER;
  *file = nullptr;
  *topic = 0;
  return S_FALSE;
}

STDMETHODIMP AccessibleNode::get_accKeyboardShortcut(VARIANT /*child*/, BSTR* shortcut) {
  if (shortcut == nullptr) return E_POINTER;
  *shortcut = nullptr;
  return S_FALSE;
}

STDMETHODIMP AccessibleNode::get_accFocus(VARIANT* child) {
  if (child == nullptr) return E_POINTER;
  ::VariantInit(child);
  return Ask([&](AccessibleTree& tree) {
    const auto focused = link_->Focused();
    if (!focused || !IsWithin(tree, *focused)) return S_FALSE;
    Give(*focused, child);
    return S_OK;
  });
}

STDMETHODIMP AccessibleNode::get_accSelection(VARIANT* children) {
  if (children == nullptr) return E_POINTER;
  ::VariantInit(children);
  return Ask([&](AccessibleTree& tree) {
    const std::vector<AccessibleId> selected = tree.SelectionOf(id_);
    if (selected.empty()) return S_FALSE;
    if (selected.size() == 1) {
      Give(selected.front(), children);
      return S_OK;
    }
    std::vector<ComPtr<IDispatch>> nodes;
    for (const AccessibleId& node : selected) nodes.push_back(Make(node));
    children->vt = VT_UNKNOWN;
    children->punkVal = ComPtr<IUnknown>(new Nodes(std::move(nodes))).Detach();
    return S_OK;
  });
}

STDMETHODIMP AccessibleNode::accSelect(LONG flags, VARIANT child) {
  return Ask(child, [&](AccessibleTree& tree, const AccessibleId& node) -> HRESULT {
    constexpr LONG Known = SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION | SELFLAG_ADDSELECTION;
    if (flags == 0 || (flags & ~Known) != 0) return E_INVALIDARG;
    if (!link_->IsReachable()) return S_FALSE;
    Element* const element = tree.ElementOf(node);
    const bool selected = tree.Select(node);
    const bool takesFocus = (flags & SELFLAG_TAKEFOCUS) != 0 && element != nullptr;
    if (takesFocus && link_->tree != nullptr) element->SetFocus();
    return selected || takesFocus ? S_OK : S_FALSE;
  });
}

STDMETHODIMP AccessibleNode::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                         VARIANT child) {
  if (left == nullptr || top == nullptr || width == nullptr || height == nullptr) return E_POINTER;
  *left = *top = *width = *height = 0;
  return AskFacts(child, [&](const AccessibleId& node, const AccessibleFacts& facts) {
    const RECT place = OnScreen(node, facts);
    *left = place.left;
    *top = place.top;
    *width = place.right - place.left;
    *height = place.bottom - place.top;
    return S_OK;
  });
}

STDMETHODIMP AccessibleNode::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
  if (end == nullptr) return E_POINTER;
  ::VariantInit(end);
  return Ask(start, [&](AccessibleTree& tree, const AccessibleId& node) {
    std::optional<AccessibleId> found;
    if (direction == NAVDIR_FIRSTCHILD) found = tree.ChildAt(node, 0);
    if (direction == NAVDIR_LASTCHILD) found = tree.ChildAt(node, tree.ChildCount(node) - 1);
    const auto parent = tree.ParentOf(node);
    if (const int step = StepOf(direction); step != 0 && parent) {
      found = tree.ChildAt(*parent, tree.IndexOf(node) + step);
      const auto from = tree.FactsOf(node);
      const auto to = found ? tree.FactsOf(*found) : std::nullopt;
      if (!from || !to || !LiesThere(direction, from->bounds, to->bounds)) found.reset();
    }
    if (!found) return S_FALSE;
    Give(*found, end);
    return S_OK;
  });
}

STDMETHODIMP AccessibleNode::accHitTest(LONG left, LONG top, VARIANT* child) {
  if (child == nullptr) return E_POINTER;
  ::VariantInit(child);
  return Ask([&](AccessibleTree& tree) -> HRESULT {
    const auto facts = tree.FactsOf(id_);
    if (!facts) return CO_E_OBJNOTCONNECTED;
    const AwarenessScope awareness(link_->control);
    const RECT place = OnScreen(id_, *facts);
    POINT at{left, top};
    if (!::PtInRect(&place, at)) return S_FALSE;
    ::ScreenToClient(link_->control, &at);
    const auto node = tree.NodeAtPoint(at.x, at.y);
    Give(node && IsWithin(tree, *node) ? *node : id_, child);
    return S_OK;
  });
}

STDMETHODIMP AccessibleNode::accDoDefaultAction(VARIANT child) {
  return AskFacts(child, [&](const AccessibleId& node, const AccessibleFacts& facts) {
    if (facts.action.empty() || !facts.enabled) return DISP_E_MEMBERNOTFOUND;
    if (!link_->IsReachable()) return S_FALSE;
    link_->acts.push_back(node);
    ::PostMessageW(link_->control, ActsAreDue, 0, 0);
    return S_OK;
  });
}

STDMETHODIMP AccessibleNode::put_accName(VARIANT /*child*/, BSTR /*name*/) {
  return DISP_E_MEMBERNOTFOUND;
}

STDMETHODIMP AccessibleNode::put_accValue(VARIANT child, BSTR value) {
  return Ask(child, [&](AccessibleTree& tree, const AccessibleId& node) -> HRESULT {
    const auto facts = tree.FactsOf(node);
    if (!facts || facts->role != AccessibleRole::Edit) return DISP_E_MEMBERNOTFOUND;
    if (!link_->IsReachable()) return S_FALSE;
    return ::SetWindowTextW(link_->WindowOf(node), value) ? S_OK : E_FAIL;
  });
}

STDMETHODIMP AccessibleNode::GetWindow(HWND* window) {
  if (window == nullptr) return E_POINTER;
  *window = nullptr;
  return Ask([&](AccessibleTree&) {
    *window = link_->WindowOf(id_);
    return S_OK;
  });
}

STDMETHODIMP AccessibleNode::Next(ULONG count, VARIANT* children, ULONG* fetched) {
  if (children == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
  ULONG given = 0;
  const HRESULT asked = Ask([&](AccessibleTree& tree) {
    for (; given < count; ++given, ++position_) {
      const auto child = tree.ChildAt(id_, position_);
      if (!child) break;
      GiveObject(Make(*child), children[given]);
    }
    return given == count ? S_OK : S_FALSE;
  });
  if (fetched != nullptr) *fetched = given;
  return asked;
}

STDMETHODIMP AccessibleNode::Skip(ULONG count) {
  return Ask([&](AccessibleTree& tree) {
    const auto left = static_cast<ULONG>(std::max(tree.ChildCount(id_) - position_, 0));
    position_ += static_cast<int>(std::min(count, left));
    return count <= left ? S_OK : S_FALSE;
  });
}

STDMETHODIMP AccessibleNode::Reset() {
  position_ = 0;
  return S_OK;
}

STDMETHODIMP AccessibleNode::Clone(IEnumVARIANT** copy) {
  if (copy == nullptr) return E_POINTER;
  const ComPtr<AccessibleNode> clone(new AccessibleNode(link_, id_));
  clone->position_ = position_;
  return clone->QueryInterface(IID_PPV_ARGS(copy));
}

STDMETHODIMP AccessibleNode::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

STDMETHODIMP AccessibleNode::GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  ComPtr<ITypeLib> library;
  const HRESULT loaded = ::LoadRegTypeLib(AccessibilityTypes, 1, 1, locale, &library);
  return FAILED(loaded) ? loaded : library->GetTypeInfoOfGuid(__uuidof(IAccessible), info);
}

STDMETHODIMP AccessibleNode::GetIDsOfNames(REFIID /*id*/, LPOLESTR* names, UINT count, LCID locale,
                                           DISPID* members) {
  ComPtr<ITypeInfo> info;
  const HRESULT found = GetTypeInfo(0, locale, &info);
  return FAILED(found) ? found : info->GetIDsOfNames(names, count, members);
}

STDMETHODIMP AccessibleNode::Invoke(DISPID member, REFIID /*id*/, LCID locale, WORD flags,
                                    DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                    UINT* badArgument) {
  ComPtr<ITypeInfo> info;
  const HRESULT found = GetTypeInfo(0, locale, &info);
  if (FAILED(found)) return found;
  return info->Invoke(static_cast<IAccessible*>(this), member, flags, parameters, result, exception,
                      badArgument);
}

}  // namespace velkor
