// platform/windows/drawing/ShrunkPicture.cpp: weighted sums of pixels, first along rows, then down
// columns.
#include "platform/windows/drawing/ShrunkPicture.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "platform/windows/drawing/DibSection.h"

namespace velkor {
namespace {

using Sum = std::array<float, 3>;

/// Where a pixel of the larger side falls: on one of the smaller side, and the rest on the next.
struct Share {
  int at = 0;
  float first = 0;
  float second = 0;
};

/// The shares that fall on a pixel of the smaller side add up to 1.
std::vector<Share> SharesOf(int larger, int smaller) {
  const double scale = static_cast<double>(smaller) / larger;
  std::vector<Share> shares;
  for (int i = 0; i < larger; ++i) {
    const double begin = i * scale;
    const double end = begin + scale;
    const int at = std::min(static_cast<int>(begin), smaller - 1);
    const double second = at + 1 < smaller ? std::max(0.0, end - (at + 1)) : 0;
    shares.push_back({at, static_cast<float>(scale - second), static_cast<float>(second)});
  }
  return shares;
}

void Add(Sum& sum, const Sum& pixel, float share) {
  for (std::size_t i = 0; i < sum.size(); ++i) sum[i] += pixel[i] * share;
}

Sum PartsOf(std::uint32_t pixel) {
  return {static_cast<float>(pixel >> 16 & 0xFF), static_cast<float>(pixel >> 8 & 0xFF),
          static_cast<float>(pixel & 0xFF)};
}

std::uint32_t PixelOf(const Sum& sum) {
  const auto part = [](float value) {
    return static_cast<std::uint32_t>(std::clamp(value + 0.5F, 0.0F, 255.0F));
  };
  return part(sum[0]) << 16 | part(sum[1]) << 8 | part(sum[2]);
}

void ShrinkRow(const std::uint32_t* row, const std::vector<Share>& shares, std::vector<Sum>& into) {
  std::fill(into.begin(), into.end(), Sum{});
  for (const Share& share : shares) {
    const Sum pixel = PartsOf(*row++);
    const auto at = static_cast<std::size_t>(share.at);
    Add(into[at], pixel, share.first);
    if (share.second > 0) Add(into[at + 1], pixel, share.second);
  }
}

}  // namespace

void Shrink(const DibSection& from, DibSection& to) {
  ::GdiFlush();
  const std::vector<Share> across = SharesOf(from.Width(), to.Width());
  const std::vector<Share> down = SharesOf(from.Height(), to.Height());
  std::vector<Sum> row(static_cast<std::size_t>(to.Width()));
  std::vector<Sum> sums(row.size());
  for (std::size_t y = 0; y < down.size(); ++y) {
    const Share& share = down[y];
    ShrinkRow(from.Row(static_cast<int>(y)), across, row);
    for (std::size_t x = 0; x < row.size(); ++x) Add(sums[x], row[x], share.first);
    const bool last = y + 1 == down.size() || down[y + 1].at != share.at;
    if (!last) continue;
    std::transform(sums.begin(), sums.end(), to.Row(share.at), PixelOf);
    for (std::size_t x = 0; x < row.size(); ++x) {
      sums[x] = {};
      Add(sums[x], row[x], share.second);
    }
  }
}

}  // namespace velkor
