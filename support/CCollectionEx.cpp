// support/CCollectionEx.cpp: an ordered, optionally keyed collection of items.
#include "support/CCollectionEx.h"

#include <algorithm>
#include <charconv>

namespace velkor {
namespace {

[[noreturn]] void Fail(long number, std::string description) {
  throw Error(number, std::move(description), "CCollectionEx");
}

std::string TextOf(double number) {
  // Fifteen significant digits, as the platform converts a double to text.
  char buffer[40];
  const auto end =
      std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::general, 15);
  return {buffer, end.ptr};
}

}  // namespace

std::size_t CCollectionEx::PositionOf(const Index& index) const {
  if (const auto* key = std::get_if<std::string>(&index)) {
    if (!keys_.contains(*key)) {
      Fail(errors::InvalidProcedureCall, "Invalid procedure call or argument");
    }
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& entry) { return entry.key == *key; });
    return static_cast<std::size_t>(found - entries_.begin());
  }
  const std::int32_t position = std::get<std::int32_t>(index);
  if (position < 1 || position > Count()) {
    Fail(errors::SubscriptOutOfRange, "Subscript out of range");
  }
  return static_cast<std::size_t>(position - 1);
}

std::size_t CCollectionEx::PositionFor(const Place& place) const {
  switch (place.side) {
    case Place::Side::Before:
      return PositionOf(place.of);
    case Place::Side::After:
      return PositionOf(place.of) + 1;
    case Place::Side::End:
      break;
  }
  return entries_.size();
}

void CCollectionEx::AddVariant(CollectionItem item, std::string key, const Place& place) {
  const std::size_t position = PositionFor(place);
  if (!key.empty() && !keys_.insert(key).second) {
    Fail(errors::KeyAlreadyExists,
         "This key is already associated with an element of this collection");
  }
  entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(position),
                  {std::move(item), std::move(key)});
}

void CCollectionEx::Add(std::string item, std::string key, const Place& place) {
  AddVariant(std::move(item), std::move(key), place);
}

void CCollectionEx::Remove(const Index& index) {
  const auto entry = entries_.begin() + static_cast<std::ptrdiff_t>(PositionOf(index));
  keys_.erase(entry->key);
  entries_.erase(entry);
}

void CCollectionEx::Clear() {
  entries_.clear();
  keys_.clear();
}

std::string CCollectionEx::ItemAsString(const Index& index) const {
  const CollectionItem& found = item(index);
  if (const auto* text = std::get_if<std::string>(&found)) return *text;
  if (const auto* number = std::get_if<std::int32_t>(&found)) return std::to_string(*number);
  if (const auto* number = std::get_if<double>(&found)) return TextOf(*number);
  if (const auto* truth = std::get_if<bool>(&found)) return *truth ? "True" : "False";
  Fail(errors::TypeMismatch, "Type mismatch");
}

const CollectionItem& CCollectionEx::item(const Index& index) const {
  return entries_[PositionOf(index)].item;
}

}  // namespace velkor
