// support/CCollectionEx.h: an ordered, optionally keyed collection of items.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "values/Error.h"

namespace velkor {

/// Text, a number, a reference to an object, or nothing.
using CollectionItem =
    std::variant<std::monostate, std::string, std::int32_t, double, bool, std::shared_ptr<void>>;

/// An entry's key or its position.
using CollectionIndex = std::variant<std::string, std::int32_t>;

/// Where Add puts an entry: at the end, or before or after another one.
struct CollectionPlace {
  enum class Side { End, Before, After };
  Side side = Side::End;
  CollectionIndex of = 0;
};

/// Entries count from 1. Keys are texts, unique within one collection, compared exactly. A member
/// that fails throws Error with the source "CCollectionEx".
class CCollectionEx {
 public:
  using Index = CollectionIndex;
  using Place = CollectionPlace;

  /// Adds an entry; an empty key means none. Throws KeyAlreadyExists for a key in use, and
  /// SubscriptOutOfRange or InvalidProcedureCall for a place that is not there.
  void AddVariant(CollectionItem item, std::string key = {}, const Place& place = {});
  /// Adds a text.
  void Add(std::string item, std::string key = {}, const Place& place = {});
  void Remove(const Index& index);
  void Clear();
  /// The entry as text; throws TypeMismatch for an object reference or nothing.
  std::string ItemAsString(const Index& index) const;
  const CollectionItem& item(const Index& index) const;
  std::int32_t Count() const { return static_cast<std::int32_t>(entries_.size()); }
  bool HasKey(std::string_view key) const { return keys_.contains(key); }

  /// Walks the entries in order.
  class NewEnum {
   public:
    explicit NewEnum(const CCollectionEx& owner) : owner_(owner) {}
    auto begin() const { return owner_.entries_.begin(); }
    auto end() const { return owner_.entries_.end(); }

   private:
    const CCollectionEx& owner_;
  };

  struct Entry {
    CollectionItem item;
    std::string key;
  };

 private:
  std::size_t PositionOf(const Index& index) const;
  std::size_t PositionFor(const Place& place) const;

  std::vector<Entry> entries_;
  // Positions move, so a key's entry is looked up among the entries.
  std::set<std::string, std::less<>> keys_;
};

}  // namespace velkor
