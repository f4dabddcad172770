// platform/windows/accessible/AccessibleNode.h: a node of a control's tree as an object that screen
// readers hold.
#pragma once

#include <memory>
#include <string>

#include "platform/windows/accessible/AccessibleLink.h"
#include "platform/windows/com/ComError.h"
#include "platform/windows/com/ComObject.h"
// After windows.h.
#include <oleacc.h>

namespace velkor {

/// Made when it is asked for; nothing of it is kept but its numbers. Once the control's windows, or
/// what it told of, are gone, it answers CO_E_OBJNOTCONNECTED. A child is named as NodeOfChildId
/// takes it.
class AccessibleNode : public ComObject<IAccessible, IOleWindow, IEnumVARIANT> {
 public:
  AccessibleNode(std::shared_ptr<AccessibleLink> link, const AccessibleId& id);

  // IDispatch, by the system's description of IAccessible
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* members) override;
  STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

  // IAccessible
  STDMETHODIMP get_accParent(IDispatch** parent) override;
  STDMETHODIMP get_accChildCount(LONG* count) override;
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override;
  STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override;
  STDMETHODIMP get_accDescription(VARIANT child, BSTR* description) override;
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override;
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override;
  STDMETHODIMP get_accHelp(VARIANT child, BSTR* help) override;
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override;
  STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override;
  STDMETHODIMP get_accFocus(VARIANT* child) override;
  STDMETHODIMP get_accSelection(VARIANT* children) override;
  STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override;
  STDMETHODIMP accSelect(LONG flags, VARIANT child) override;
  STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                           VARIANT child) override;
  STDMETHODIMP accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
  STDMETHODIMP accHitTest(LONG left, LONG top, VARIANT* child) override;
  /// Is done soon after: it may show a dialog, for which no reader should wait.
  STDMETHODIMP accDoDefaultAction(VARIANT child) override;
  STDMETHODIMP put_accName(VARIANT child, BSTR name) override;
  STDMETHODIMP put_accValue(VARIANT child, BSTR value) override;

  // IOleWindow
  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

  // IEnumVARIANT, over the children
  STDMETHODIMP Next(ULONG count, VARIANT* children, ULONG* fetched) override;
  STDMETHODIMP Skip(ULONG count) override;
  STDMETHODIMP Reset() override;
  STDMETHODIMP Clone(IEnumVARIANT** copy) override;

 protected:
  ~AccessibleNode() override;
  void* FindOther(REFIID id) override;

 private:
  using Text = std::string AccessibleFacts::*;

  /// Answers with what `work` makes of the tree, while this node is there.
  template <typename Work>
  HRESULT Ask(const Work& work);
  /// Answers with what `work` makes of the tree and the node that `child` names.
  template <typename Work>
  HRESULT Ask(const VARIANT& child, const Work& work);
  template <typename Work>
  HRESULT AskFacts(const VARIANT& child, const Work& work);
  HRESULT GiveText(const VARIANT& child, BSTR* text, Text member);
  /// A child that is named, as get_accFocus and others give it: this one by its identifier, others
  /// as objects.
  void Give(const AccessibleId& node, VARIANT* given) const;
  ComPtr<IDispatch> Make(const AccessibleId& node) const;
  bool IsWithin(AccessibleTree& tree, const AccessibleId& node) const;
  RECT OnScreen(const AccessibleId& node, const AccessibleFacts& facts) const;
  LONG StateOf(const AccessibleId& node, const AccessibleFacts& facts) const;

  const std::shared_ptr<AccessibleLink> link_;
  const AccessibleId id_;
  /// Of the child that Next gives.
  int position_ = 0;
};

}  // namespace velkor
