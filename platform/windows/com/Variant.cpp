// platform/windows/com/Variant.cpp: conversions by the system's own rules.
#include "platform/windows/com/Variant.h"

#include <cstring>
#include <new>

#include "values/Error.h"

namespace velkor {

Variant::Variant(bool value) : Variant() {
  value_.vt = VT_BOOL;
  value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(std::int16_t value) : Variant() {
  value_.vt = VT_I2;
  value_.iVal = value;
}

Variant::Variant(std::int32_t value) : Variant() {
  value_.vt = VT_I4;
  value_.lVal = value;
}

Variant::Variant(Date value) : Variant() {
  value_.vt = VT_DATE;
  value_.date = value.Days();
}

Variant::Variant(std::string_view utf8) : Variant() {
  value_.vt = VT_BSTR;
  value_.bstrVal = Bstr(utf8).Release();
}

Variant::Variant(IDispatch* object) : Variant() {
  value_.vt = VT_DISPATCH;
  value_.pdispVal = object;
  if (object != nullptr) object->AddRef();
}

Variant::Variant(const std::vector<std::string>& texts) : Variant() {
  SAFEARRAYBOUND bound{static_cast<ULONG>(texts.size()), 1};
  value_.parray = ::SafeArrayCreate(VT_VARIANT, 1, &bound);
  if (value_.parray == nullptr) throw std::bad_alloc();
  value_.vt = VT_ARRAY | VT_VARIANT;
  LONG index = bound.lLbound;
  for (const std::string& text : texts) {
    Variant element(text);
    // Takes a copy.
    if (FAILED(::SafeArrayPutElement(value_.parray, &index, &element.value_))) {
      throw std::bad_alloc();
    }
    ++index;
  }
}

Variant& Variant::operator=(Variant&& other) noexcept {
  if (this != &other) other.MoveTo(Out());
  return *this;
}

VARIANT* Variant::Out() {
  ::VariantClear(&value_);
  return &value_;
}

void Variant::MoveTo(VARIANT* outside) {
  *outside = value_;
  ::VariantInit(&value_);
}

Variant Variant::As(VARTYPE type) const {
  Variant converted;
  // An empty or absent value has no text but the empty one.
  if (IsEmpty() && type == VT_BSTR) return Variant("");
  if (FAILED(::VariantChangeTypeEx(&converted.value_, const_cast<VARIANT*>(&value_),
                                   LOCALE_USER_DEFAULT, 0, type))) {
    throw Error(errors::TypeMismatch, "Type mismatch");
  }
  return converted;
}

bool Variant::ToBool() const {
  return As(VT_BOOL).value_.boolVal != VARIANT_FALSE;
}

std::int32_t Variant::ToInt() const {
  return As(VT_I4).value_.lVal;
}

Date Variant::ToDate() const {
  return Date(As(VT_DATE).value_.date);
}

std::string Variant::ToText() const {
  return ToUtf8(As(VT_BSTR).value_.bstrVal);
}

ComPtr<IDispatch> Variant::ToObject() const {
  ComPtr<IDispatch> object;
  const bool holds = value_.vt == VT_DISPATCH || value_.vt == VT_UNKNOWN;
  if (holds && value_.punkVal != nullptr) value_.punkVal->QueryInterface(IID_PPV_ARGS(&object));
  return object;
}

LPOLESTR CopyForCaller(const std::wstring& text) {
  const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
  void* const copy = ::CoTaskMemAlloc(size);
  return copy == nullptr ? nullptr : static_cast<LPOLESTR>(std::memcpy(copy, text.c_str(), size));
}

}  // namespace velkor
