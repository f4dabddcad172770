// bench/AllocationMeter.cpp: the program's operator new and delete, counting when told to.
#include "bench/AllocationMeter.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace velkor::AllocationMeter {
namespace {

// The operators have no owner that could hold these. Only one thread works while they count.
bool counting = false;
std::ptrdiff_t held = 0;
std::ptrdiff_t peak = 0;

/// glibc keeps the size of a block in front of it.
std::ptrdiff_t CostOf(void* block) {
  return static_cast<std::ptrdiff_t>(malloc_usable_size(block) + sizeof(std::size_t));
}

void* Allocate(std::size_t size) {
  void* const block = std::malloc(std::max<std::size_t>(size, 1));
  if (block == nullptr) throw std::bad_alloc();
  if (counting) {
    held += CostOf(block);
    peak = std::max(peak, held);
  }
  return block;
}

void Release(void* block) {
  if (counting && block != nullptr) held -= CostOf(block);
  std::free(block);
}

}  // namespace

void Start() {
  counting = true;
  held = 0;
  peak = 0;
}

std::size_t Stop() {
  counting = false;
  return static_cast<std::size_t>(peak);
}

}  // namespace velkor::AllocationMeter

void* operator new(std::size_t size) {
  return velkor::AllocationMeter::Allocate(size);
}

void operator delete(void* block) noexcept {
  velkor::AllocationMeter::Release(block);
}

void operator delete(void* block, std::size_t) noexcept {
  velkor::AllocationMeter::Release(block);
}
