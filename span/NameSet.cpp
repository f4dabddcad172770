// span/NameSet.cpp: a set of names that is asked for many texts.
#include "span/NameSet.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace velkor {
namespace {

// A text that is no name mostly meets an empty bucket.
constexpr std::size_t BucketsForAName = 8;
constexpr int LeastShift = 8;

}  // namespace

NameSet::NameSet(std::vector<std::string> names) : names_(std::move(names)) {
  const auto bits = static_cast<int>(std::bit_width(names_.size() * BucketsForAName));
  shift_ = std::max(32 - std::max(bits, 1), LeastShift);
  starts_.assign((std::size_t{1} << (32 - shift_)) + 1, 0);
  std::sort(names_.begin(), names_.end(), [&](const std::string& a, const std::string& b) {
    const std::size_t bucketOfA = BucketOf(a);
    const std::size_t bucketOfB = BucketOf(b);
    return bucketOfA != bucketOfB ? bucketOfA < bucketOfB : Compare(a, b) < 0;
  });
  names_.erase(std::unique(names_.begin(), names_.end()), names_.end());
  for (const std::string& name : names_) ++starts_[BucketOf(name) + 1];
  for (std::size_t bucket = 1; bucket < starts_.size(); ++bucket) {
    starts_[bucket] += starts_[bucket - 1];
  }
}

}  // namespace velkor
