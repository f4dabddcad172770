// platform/windows/com/Variant.h: owners of automation texts and values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/windows/com/ComObject.h"
#include "platform/windows/system/Wide.h"
#include "values/Date.h"

namespace velkor {

/// A text of automation. Never null: an empty text is an allocated one.
class Bstr {
 public:
  explicit Bstr(std::wstring_view text = {})
      : text_(::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
  explicit Bstr(std::string_view utf8) : Bstr(std::wstring_view(ToWide(utf8))) {}
  ~Bstr() { ::SysFreeString(text_); }
  Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;

  BSTR Get() const { return text_; }
  /// To an owner outside, as an [out] argument.
  BSTR Release() { return std::exchange(text_, nullptr); }

 private:
  BSTR text_;
};

/// A text that the caller of a function frees (CoTaskMemFree); null when there is no memory for it.
LPOLESTR CopyForCaller(const std::wstring& text);

/// A null text is an empty one.
inline std::string ToUtf8(BSTR text) {
  return text == nullptr ? std::string() : ToUtf8(std::wstring_view(text, ::SysStringLen(text)));
}

/// A value of automation. Empty at first.
class Variant {
 public:
  Variant() { ::VariantInit(&value_); }
  explicit Variant(bool value);
  explicit Variant(std::int16_t value);
  explicit Variant(std::int32_t value);
  explicit Variant(Date value);
  explicit Variant(std::string_view utf8);
  /// Without this a literal would be a truth value.
  explicit Variant(const char* utf8) : Variant(std::string_view(utf8)) {}
  explicit Variant(IDispatch* object);
  /// An array indexed from 1. Its elements are variants, since script languages index no others.
  explicit Variant(const std::vector<std::string>& texts);
  ~Variant() { ::VariantClear(&value_); }
  Variant(Variant&& other) noexcept : value_(other.value_) { ::VariantInit(&other.value_); }
  Variant& operator=(Variant&& other) noexcept;
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;

  const VARIANT& Get() const { return value_; }
  /// For a call that fills it; what it held is let go.
  VARIANT* Out();
  /// To an owner outside.
  void MoveTo(VARIANT* outside);

  bool IsEmpty() const { return value_.vt == VT_EMPTY || value_.vt == VT_NULL; }
  // Converted as automation converts. Throw Error (TypeMismatch) where there is no conversion.
  bool ToBool() const;
  std::int32_t ToInt() const;
  Date ToDate() const;
  std::string ToText() const;
  /// Null for anything but an object that answers calls by name.
  ComPtr<IDispatch> ToObject() const;

 private:
  Variant As(VARTYPE type) const;

  VARIANT value_;
};

}  // namespace velkor
