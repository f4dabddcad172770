// tests/CountedBlocks.cpp: the operators that count.
#include "tests/CountedBlocks.h"

#include <cstdlib>
#include <new>

std::size_t velkor::countedBlocks = 0;

void* operator new(std::size_t size) {
  ++velkor::countedBlocks;
  void* const block = std::malloc(size > 0 ? size : 1);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void operator delete(void* block) noexcept {
  std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}
