// bench/AllocationMeter.h: the most memory that a piece of work holds at once.
#pragma once

#include <cstddef>
#include <utility>

namespace velkor::AllocationMeter {

/// Counts from here; what is held already does not count.
void Start();
/// Stops counting.
/// @return the most bytes that operator new had handed out and not taken back since Start, with
///         the allocator's own share of each block
std::size_t Stop();

template <typename Work>
std::size_t PeakOf(Work&& work) {
  Start();
  std::forward<Work>(work)();
  return Stop();
}

}  // namespace velkor::AllocationMeter
