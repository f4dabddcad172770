// tests/platform/windows/WindowsFilesTest.cpp: exclusive writing, replacing and a killed writer.
#include "platform/windows/system/WindowsFiles.h"

#include <gtest/gtest.h>

#include "platform/windows/system/Wide.h"
#include "platform/windows/system/Win32.h"
#include "platform/windows/system/WindowsSystem.h"
#include "tests/support/ErrorOf.h"

namespace velkor {
namespace {

class WindowsFilesTest : public testing::Test {
 protected:
  WindowsFilesTest() { ::CreateDirectoryW(ToWide(folder_).c_str(), nullptr); }
  ~WindowsFilesTest() override {
    for (const std::string& path : {work_, cache_}) {
      files_.Delete(path);
      ::RemoveDirectoryW(ToWide(path).c_str());
    }
    ::RemoveDirectoryW(ToWide(folder_).c_str());
  }

  WindowsFiles files_;
  const std::string folder_ = WindowsEnvironment().Variable("TMP") + "\\vélkor-test-" +
                              std::to_string(::GetCurrentProcessId());
  const std::string work_ = folder_ + "\\wörk 日";
  const std::string cache_ = folder_ + "\\cache";

  void Put(const std::string& path, std::string_view bytes) {
    files_.OpenForWriting(path)->Write(bytes);
  }
};

TEST_F(WindowsFilesTest, MovingOverReplacesTheOldFileWhole) {
  Put(cache_, "the old file, longer than the new one");
  {
    const auto file = files_.OpenForWriting(work_);
    file->Write("new");
    EXPECT_EQ(files_.Read(cache_), "the old file, longer than the new one");
    EXPECT_TRUE(file->MoveOver(cache_));
    EXPECT_EQ(files_.OpenForWriting(cache_), nullptr) << "its writer still lives";
  }
  EXPECT_EQ(files_.Read(cache_), "new");
  EXPECT_FALSE(files_.Exists(work_));
}

TEST_F(WindowsFilesTest, BothFilesStayWhenTheOldOneCannotBeReplaced) {
  {
    const auto other = files_.OpenForWriting(cache_);
    other->Write("other");
    const auto file = files_.OpenForWriting(work_);
    file->Write("new");
    EXPECT_FALSE(file->MoveOver(cache_));
  }
  EXPECT_EQ(files_.Read(cache_), "other");
  EXPECT_EQ(files_.Read(work_), "new");
}

TEST_F(WindowsFilesTest, SecondWriterIsRefusedAndDestroysNothing) {
  {
    const auto first = files_.OpenForWriting(work_);
    first->Write("first");
    EXPECT_EQ(files_.OpenForWriting(work_), nullptr);
  }
  EXPECT_EQ(files_.Read(work_), "first");
  EXPECT_TRUE(files_.Delete(work_));
  EXPECT_TRUE(files_.Delete(work_));
}

TEST_F(WindowsFilesTest, AFileThatHasAnotherNameIsNotWritten) {
  Put(cache_, "somebody's");
  ASSERT_TRUE(::CreateHardLinkW(ToWide(work_).c_str(), ToWide(cache_).c_str(), nullptr));
  Put(work_, "new");
  EXPECT_EQ(files_.Read(work_), "new");
  EXPECT_EQ(files_.Read(cache_), "somebody's");
}

TEST_F(WindowsFilesTest, AWriterThatGivesUpDeletesWhatItHolds) {
  {
    const auto file = files_.OpenForWriting(work_);
    file->Write("half");
    EXPECT_TRUE(files_.Delete(work_));
  }
  EXPECT_FALSE(files_.Exists(work_));
}

TEST_F(WindowsFilesTest, KilledWriterLeavesTheOldFileAndNoLock) {
  Put(cache_, "old");
  wchar_t program[MAX_PATH];
  ::GetModuleFileNameW(nullptr, program, MAX_PATH);
  // The writer gets its path through main's own arguments, in the ANSI code page.
  const std::string held = folder_.substr(0, folder_.rfind('\\')) + "\\velkor-held";
  std::wstring command = L"\"" + std::wstring(program) + L"\" --hold \"" + ToWide(held) + L"\"";
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  HANDLE reading = nullptr;
  HANDLE writing = nullptr;
  ASSERT_TRUE(::CreatePipe(&reading, &writing, &inherited, 0));
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = writing;
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(::CreateProcessW(program, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                               &start, &process));
  ::CloseHandle(writing);
  char word[4] = {};
  DWORD got = 0;
  EXPECT_TRUE(::ReadFile(reading, word, sizeof word, &got, nullptr));
  EXPECT_EQ(std::string_view(word, got), "held");
  EXPECT_EQ(files_.OpenForWriting(held), nullptr);
  ::TerminateProcess(process.hProcess, 3);
  ::WaitForSingleObject(process.hProcess, INFINITE);
  for (const HANDLE handle : {reading, process.hProcess, process.hThread}) ::CloseHandle(handle);

  EXPECT_EQ(files_.Read(held), "half");
  const auto next = files_.OpenForWriting(held);
  ASSERT_NE(next, nullptr);
  next->Write("new");
  EXPECT_TRUE(next->MoveOver(cache_));
}

TEST_F(WindowsFilesTest, FileBeyondTheLimitIsAnErrorWithItsName) {
  Put(work_, "");
  const HANDLE file = ::CreateFileW(ToWide(work_).c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  LARGE_INTEGER end{};
  end.QuadPart = LONGLONG{1} << 33;
  EXPECT_TRUE(::SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && ::SetEndOfFile(file));
  ::CloseHandle(file);
  EXPECT_EQ(ErrorOf([&] { files_.Read(work_); }).Description(),
            "Cannot read " + work_ + ": it is too large");
}

TEST_F(WindowsFilesTest, WhatCannotBeOpenedIsAnAnswer) {
  EXPECT_EQ(files_.Read(folder_ + "\\absent"), std::nullopt);
  EXPECT_EQ(files_.Read(folder_), std::nullopt);
  EXPECT_EQ(files_.Read("NUL"), std::nullopt);
  EXPECT_EQ(files_.OpenForWriting(folder_ + "\\absent\\file"), nullptr);
  EXPECT_EQ(files_.OpenForWriting(folder_), nullptr);
  EXPECT_TRUE(files_.DirectoryExists(folder_));
  EXPECT_FALSE(files_.Exists(folder_));
  EXPECT_FALSE(files_.Delete(folder_));
  EXPECT_EQ(FileErrorOf(ERROR_DISK_FULL), errors::DeviceInputOutput);
  EXPECT_EQ(FileErrorOf(ERROR_PATH_NOT_FOUND), errors::PathNotFound);
}

}  // namespace
}  // namespace velkor
