// hosts/windows/OutlookVelkor/PropertyBags.cpp: values as variants, and as texts in a stream.
#include "hosts/windows/OutlookVelkor/PropertyBags.h"

#include <cstdint>
#include <limits>

#include "platform/windows/com/Variant.h"
#include "values/Error.h"

namespace velkor {
namespace {

/// "VYP1" as its bytes stand in the stream.
constexpr std::uint32_t Mark = 0x31505956;
/// More than any bag of ours holds, so that other bytes are told early.
constexpr std::uint32_t MostProperties = 64;
constexpr std::uint32_t LongestText = 1 << 20;

Variant ToVariant(const PropertyValue& value) {
  return std::visit([](const auto& each) { return Variant(each); }, value);
}

/// A value in the type of another one. Throws Error (TypeMismatch).
PropertyValue As(const Variant& value, const PropertyValue& type) {
  if (std::holds_alternative<bool>(type)) return value.ToBool();
  if (std::holds_alternative<std::string>(type)) return value.ToText();
  const std::int32_t number = value.ToInt();
  using Limits = std::numeric_limits<std::int16_t>;
  if (number < Limits::min() || number > Limits::max()) {
    throw Error(errors::Overflow, std::to_string(number) + " does not fit 16 bits");
  }
  return static_cast<std::int16_t>(number);
}

PropertyValue AsProperty(std::string_view key, const Variant& value, const PropertyValue& type) {
  try {
    return As(value, type);
  } catch (const Error& error) {
    throw Error(errors::TypeMismatch,
                "The property " + std::string(key) + " cannot be read: " + error.Description(),
                "YearPlan");
  }
}

void Read(IStream& stream, void* bytes, std::uint32_t count) {
  ULONG got = 0;
  if (FAILED(stream.Read(bytes, count, &got)) || got != count) {
    throw Error(errors::InputPastEnd, "The stored properties end too early.", "YearPlan");
  }
}

std::uint32_t ReadNumber(IStream& stream) {
  std::uint32_t number = 0;
  Read(stream, &number, sizeof number);
  return number;
}

std::string ReadText(IStream& stream) {
  const std::uint32_t length = ReadNumber(stream);
  if (length > LongestText) {
    throw Error(errors::BadFileMode, "The stored properties are no planner's.", "YearPlan");
  }
  std::string text(length, '\0');
  Read(stream, text.data(), length);
  return text;
}

void Write(IStream& stream, const void* bytes, std::size_t count) {
  ULONG written = 0;
  if (FAILED(stream.Write(bytes, static_cast<ULONG>(count), &written)) || written != count) {
    throw Error(errors::DeviceInputOutput, "The properties cannot be stored.", "YearPlan");
  }
}

void WriteNumber(IStream& stream, std::size_t number) {
  const auto stored = static_cast<std::uint32_t>(number);
  Write(stream, &stored, sizeof stored);
}

void WriteText(IStream& stream, const std::string& text) {
  WriteNumber(stream, text.size());
  Write(stream, text.data(), text.size());
}

}  // namespace

PropertyValue ComPropertyBag::ReadProperty(std::string_view key, const PropertyValue& fallback) {
  Variant value;
  // The type asked for lets a bag of texts convert by itself.
  VARIANT* const out = value.Out();
  out->vt = ToVariant(fallback).Get().vt;
  // A bag that answers S_FALSE has left the value as it was.
  if (bag_.Read(ToWide(key).c_str(), out, log_) != S_OK || value.IsEmpty()) return fallback;
  return AsProperty(key, value, fallback);
}

void ComPropertyBag::WriteProperty(std::string_view key, const PropertyValue& value,
                                   const PropertyValue& fallback) {
  if (!keepAll_ && value == fallback) return;
  Variant stored = ToVariant(value);
  VARIANT* const passed = const_cast<VARIANT*>(&stored.Get());
  if (FAILED(bag_.Write(ToWide(key).c_str(), passed))) {
    throw Error(errors::DeviceInputOutput,
                "The property " + std::string(key) + " cannot be stored.", "YearPlan");
  }
}

void MemoryBag::Load(IStream& stream) {
  if (ReadNumber(stream) != Mark) {
    throw Error(errors::BadFileMode, "The stored properties are no planner's.", "YearPlan");
  }
  const std::uint32_t count = ReadNumber(stream);
  if (count > MostProperties) {
    throw Error(errors::BadFileMode, "The stored properties are no planner's.", "YearPlan");
  }
  texts_.clear();
  for (std::uint32_t i = 0; i < count; ++i) {
    std::string key = ReadText(stream);
    texts_[std::move(key)] = ReadText(stream);
  }
}

void MemoryBag::Save(IStream& stream) const {
  WriteNumber(stream, Mark);
  WriteNumber(stream, texts_.size());
  for (const auto& [key, text] : texts_) {
    WriteText(stream, key);
    WriteText(stream, text);
  }
}

std::size_t MemoryBag::Size() const {
  std::size_t size = 2 * sizeof(std::uint32_t);
  for (const auto& [key, text] : texts_) {
    size += 2 * sizeof(std::uint32_t) + key.size() + text.size();
  }
  return size;
}

PropertyValue MemoryBag::ReadProperty(std::string_view key, const PropertyValue& fallback) {
  const auto found = texts_.find(key);
  return found == texts_.end() ? fallback : AsProperty(key, Variant(found->second), fallback);
}

void MemoryBag::WriteProperty(std::string_view key, const PropertyValue& value,
                              const PropertyValue& /*fallback*/) {
  // Truth values as numbers, which every language reads.
  const bool* const truth = std::get_if<bool>(&value);
  texts_.insert_or_assign(std::string(key),
                          truth ? std::string(*truth ? "-1" : "0") : ToVariant(value).ToText());
}

}  // namespace velkor
