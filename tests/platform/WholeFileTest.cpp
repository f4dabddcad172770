// tests/platform/WholeFileTest.cpp: files that change or do not fit while they are read.
#include "platform/WholeFile.h"

#include <gtest/gtest.h>

#include "tests/support/ErrorOf.h"
namespace velkor {
namespace {

TEST(WholeFile, FileThatGrowsOrShrinksMeanwhileIsReadToItsEnd) {
  const std::string text(200000, 'x');
  for (const std::uint64_t size :
       {std::uint64_t{0}, std::uint64_t{70000}, Files::LargestFile / 64}) {
    std::size_t done = 0;
    const std::string bytes = ReadWhole("file", size, [&](char* place, std::size_t room) {
      const std::size_t got = text.copy(place, std::min(room, std::size_t{999}), done);
      done += got;
      return got;
    });
    EXPECT_EQ(bytes, text) << size;
  }
}

TEST(WholeFile, LackOfMemoryIsAnErrorThatNamesTheFile) {
  const auto expectTooLarge = [](const auto& lack) {
    const Error error = ErrorOf(
        [&] { ReadWhole("big.dat", 1, [&](char*, std::size_t) -> std::size_t { throw lack; }); });
    EXPECT_EQ(error.Number(), errors::DeviceInputOutput);
    EXPECT_EQ(error.Description(), "Cannot read big.dat: it is too large");
  };
  expectTooLarge(std::bad_alloc());
  expectTooLarge(std::length_error("longer than a text can be"));
}

TEST(WholeFile, WhatWasReadBeforeADiskFailsIsThere) {
  std::string bytes;
  const Error error = ErrorOf([&] {
    ReadWholeInto(bytes, "file", 10, [](char* place, std::size_t) -> std::size_t {
      if (*place == 'a') throw Error(errors::DeviceInputOutput, "broken");
      *place = place[1] = 'a';
      return 1;
    });
  });
  EXPECT_EQ(error.Description(), "broken");
  EXPECT_EQ(bytes, "a");
}

}  // namespace
}  // namespace velkor
