// view/BandTree.cpp: the bands of one row by the last column that each has occupied.
#include "view/BandTree.h"

#include <algorithm>
#include <bit>

namespace velkor {

std::size_t BandTree::FirstBelow(std::int8_t bound) const {
  // Cells beyond the tree are 0, below every bound.
  if (capacity_ == 0) return 0;
  if (minima_[1] >= bound) return capacity_;
  std::size_t node = 1;
  while (node < capacity_) {
    node *= 2;
    if (minima_[node] >= bound) ++node;
  }
  return node - capacity_;
}

void BandTree::Set(std::size_t position, std::int8_t column) {
  if (position >= capacity_) Grow(position + 1);
  std::size_t node = capacity_ + position;
  minima_[node] = column;
  for (node /= 2; node > 0; node /= 2) {
    const std::int8_t least = std::min(minima_[2 * node], minima_[2 * node + 1]);
    if (minima_[node] == least) return;
    minima_[node] = least;
  }
}

void BandTree::Grow(std::size_t cells) {
  const std::size_t capacity = std::max<std::size_t>(std::bit_ceil(cells), 16);
  std::vector<std::int8_t> minima(2 * capacity, 0);
  if (capacity_ > 0) {
    std::copy(minima_.begin() + static_cast<std::ptrdiff_t>(capacity_), minima_.end(),
              minima.begin() + static_cast<std::ptrdiff_t>(capacity));
  }
  for (std::size_t node = capacity; --node > 0;) {
    minima[node] = std::min(minima[2 * node], minima[2 * node + 1]);
  }
  minima_ = std::move(minima);
  capacity_ = capacity;
}

}  // namespace velkor
