// span/NameSet.h: a set of names that is asked for many texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velkor {

/// Looks a text up with few comparisons, however many names there are and however alike.
class NameSet {
 public:
  NameSet() = default;
  /// Names may repeat; each is kept once.
  explicit NameSet(std::vector<std::string> names);

  std::size_t Count() const { return names_.size(); }

  /// A number below Count that is the name's own; Count for a text that is none of the names.
  std::size_t IndexOf(std::string_view text) const {
    const std::size_t bucket = BucketOf(text);
    std::size_t low = starts_[bucket];
    for (std::size_t high = starts_[bucket + 1]; low < high;) {
      const std::size_t middle = low + (high - low) / 2;
      const int order = Compare(names_[middle], text);
      if (order == 0) return middle;
      if (order < 0) {
        low = middle + 1;
      } else {
        high = middle;
      }
    }
    return names_.size();
  }

 private:
  /// By length and then by text: most names differ in length already.
  static int Compare(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    return a.compare(b);
  }
  std::size_t BucketOf(std::string_view text) const {
    if (text.empty()) return 0;
    const auto byte = [&](std::size_t index) {
      return std::uint32_t{static_cast<unsigned char>(text[index])};
    };
    const std::uint32_t mixed = byte(0) | byte(text.size() / 2) << 8 | byte(text.size() - 1) << 16 |
                                static_cast<std::uint32_t>(text.size()) << 24;
    // The upper bits of the product depend on all bits of the factor.
    return (mixed * 2654435769U) >> shift_;
  }

  /// Bucket after bucket, sorted within each.
  std::vector<std::string> names_;
  /// Where each bucket begins, and where the last one ends.
  std::vector<std::uint32_t> starts_{0, 0, 0};
  /// Leaves so many bits of 32 as count the buckets.
  int shift_ = 31;
};

}  // namespace velkor
