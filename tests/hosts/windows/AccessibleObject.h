// tests/hosts/windows/AccessibleObject.h: a node as a screen reader reads it.
#pragma once

#include <string>
#include <vector>

#include "platform/windows/com/Variant.h"
#include "values/Twips.h"
// After windows.h.
#include <oleacc.h>

namespace velkor {

inline VARIANT ChildId(LONG id) {
  VARIANT child{};
  child.vt = VT_I4;
  child.lVal = id;
  return child;
}

/// An object, or one of its children by identifier.
class AccessibleObject {
 public:
  AccessibleObject() = default;
  explicit AccessibleObject(ComPtr<IAccessible> object, LONG child = CHILDID_SELF)
      : object_(std::move(object)), child_(child) {}
  static AccessibleObject Of(HWND window, LONG id = OBJID_CLIENT) {
    ComPtr<IAccessible> object;
    ::AccessibleObjectFromWindow(window, static_cast<DWORD>(id), __uuidof(IAccessible),
                                 reinterpret_cast<void**>(object.GetAddressOf()));
    return AccessibleObject(object);
  }

  IAccessible* operator->() const { return object_.Get(); }
  IAccessible* Get() const { return object_.Get(); }
  VARIANT Self() const { return ChildId(child_); }

  std::string Name() const { return TextBy(&IAccessible::get_accName); }
  std::string Value() const { return TextBy(&IAccessible::get_accValue); }
  std::string Description() const { return TextBy(&IAccessible::get_accDescription); }
  std::string Action() const { return TextBy(&IAccessible::get_accDefaultAction); }
  LONG Role() const { return NumberBy(&IAccessible::get_accRole); }
  LONG State() const { return NumberBy(&IAccessible::get_accState); }
  /// On the screen.
  PixelRect Place() const {
    LONG left = 0, top = 0, width = 0, height = 0;
    if (object_) object_->accLocation(&left, &top, &width, &height, Self());
    return {left, top, left + width, top + height};
  }
  std::vector<AccessibleObject> Children() const {
    if (!object_) return {};
    LONG count = 0;
    object_->get_accChildCount(&count);
    std::vector<VARIANT> given(static_cast<std::size_t>(count));
    LONG got = 0;
    ::AccessibleChildren(object_.Get(), 0, count, given.data(), &got);
    std::vector<AccessibleObject> children;
    for (LONG i = 0; i < got; ++i) children.push_back(Take(given[static_cast<std::size_t>(i)]));
    return children;
  }
  /// By its place, from 0.
  AccessibleObject ChildAt(LONG place) const {
    VARIANT child{};
    child.vt = VT_DISPATCH;
    if (object_) object_->get_accChild(ChildId(place + 1), &child.pdispVal);
    return child.pdispVal == nullptr ? AccessibleObject() : Take(child);
  }
  /// The first child with a role; empty for none.
  AccessibleObject Child(LONG role) const {
    for (const AccessibleObject& child : Children()) {
      if (child.Role() == role) return child;
    }
    return {};
  }
  AccessibleObject Focus() const {
    VARIANT focus{};
    if (object_) object_->get_accFocus(&focus);
    return Take(focus);
  }
  HWND Window() const {
    HWND window = nullptr;
    if (object_) ::WindowFromAccessibleObject(object_.Get(), &window);
    return window;
  }

 private:
  /// Takes what was given over.
  AccessibleObject Take(VARIANT& given) const {
    if (given.vt == VT_I4) return AccessibleObject(object_, given.lVal);
    ComPtr<IAccessible> object;
    if (given.vt == VT_DISPATCH) given.pdispVal->QueryInterface(IID_PPV_ARGS(&object));
    ::VariantClear(&given);
    return AccessibleObject(object);
  }
  std::string TextBy(HRESULT (STDMETHODCALLTYPE IAccessible::*get)(VARIANT, BSTR*)) const {
    BSTR text = nullptr;
    if (object_) (object_.Get()->*get)(Self(), &text);
    const std::string utf8 = ToUtf8(text);
    ::SysFreeString(text);
    return utf8;
  }
  LONG NumberBy(HRESULT (STDMETHODCALLTYPE IAccessible::*get)(VARIANT, VARIANT*)) const {
    VARIANT number{};
    return object_ && SUCCEEDED((object_.Get()->*get)(Self(), &number)) ? number.lVal : -1;
  }

  ComPtr<IAccessible> object_;
  LONG child_ = CHILDID_SELF;
};

}  // namespace velkor
