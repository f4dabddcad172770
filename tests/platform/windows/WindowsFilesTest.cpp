// tests/platform/windows/WindowsFilesTest.cpp: a killed writer, devices and the system's numbers.
#include "platform/windows/system/WindowsFiles.h"

#include <gtest/gtest.h>

#include "platform/windows/system/WindowsSystem.h"
#include "tests/platform/Face.h"
#include "tests/platform/windows/Programs.h"
#include "values/Error.h"

namespace velkor {
namespace {

TEST(WindowsFiles, AKilledWriterLeavesWhatItWroteAndNoLock) {
  WindowsFiles files;
  const std::string folder = WindowsEnvironment().Variable("TMP");
  // The writer gets its path through main's own arguments, in the ANSI code page.
  const std::string held = folder + "\\velkor-held";
  const std::string cache = folder + "\\velkor-cache";
  EXPECT_TRUE(files.Delete(held));
  const KernelHandle writer = StartProgram("windows_tests.exe", "--hold \"" + held + "\"");
  EXPECT_TRUE(PumpUntil([&] {
    std::error_code absent;
    return std::filesystem::file_size(held, absent) == 4;
  }));
  EXPECT_EQ(files.OpenForWriting(held), nullptr);
  ::TerminateProcess(writer.get(), 3);
  ::WaitForSingleObject(writer.get(), INFINITE);
  EXPECT_EQ(files.Read(held), "half");
  const auto next = files.OpenForWriting(held);
  ASSERT_NE(next, nullptr);
  EXPECT_TRUE(next->MoveOver(cache));
  EXPECT_TRUE(files.Delete(cache));
}

TEST(WindowsFiles, DevicesAreNoFilesAndFailuresHaveNumbers) {
  EXPECT_EQ(WindowsFiles().Read("NUL"), std::nullopt);
  EXPECT_EQ(FileErrorOf(ERROR_DISK_FULL), errors::DeviceInputOutput);
  EXPECT_EQ(FileErrorOf(ERROR_PATH_NOT_FOUND), errors::PathNotFound);
}

}  // namespace

std::unique_ptr<Files> MakeFiles() {
  return std::make_unique<WindowsFiles>();
}

}  // namespace velkor
