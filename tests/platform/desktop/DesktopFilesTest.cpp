// tests/platform/desktop/DesktopFilesTest.cpp: locks between processes, failures and devices.
#include "platform/desktop/DesktopFiles.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <vector>

#include "tests/platform/Face.h"
#include "tests/platform/desktop/ChildProcess.h"
#include "tests/platform/desktop/FolderCase.h"
#include "tests/support/ErrorOf.h"

namespace velkor {
namespace {

class DesktopFilesTest : public FolderCase {
 protected:
  DesktopFiles files_;
  const std::string work_ = Path("work");
  const std::string cache_ = Path("cache");

  void Put(const std::string& path, std::string_view bytes) {
    files_.OpenForWriting(path)->Write(bytes);
  }
};

TEST_F(DesktopFilesTest, AFolderIsNotReplaced) {
  ASSERT_EQ(::mkdir(cache_.c_str(), 0700), 0);
  Put(Path("cache/inside"), "x");
  const auto file = files_.OpenForWriting(work_);
  file->Write("new");
  EXPECT_FALSE(file->MoveOver(cache_));
  EXPECT_EQ(files_.Read(work_), "new");
  EXPECT_TRUE(files_.DirectoryExists(cache_));
  EXPECT_FALSE(files_.Exists(cache_));
}

TEST_F(DesktopFilesTest, AWriterOfAnotherProcessIsRefusedAndDestroysNothing) {
  const auto first = files_.OpenForWriting(work_);
  first->Write("first");
  first->Flush();
  ChildProcess second([&] { return files_.OpenForWriting(work_) == nullptr ? 7 : 0; });
  EXPECT_EQ(second.Wait(), 7);
  EXPECT_EQ(files_.OpenForWriting(work_), nullptr);
  EXPECT_EQ(files_.Read(work_), "first");
}

TEST_F(DesktopFilesTest, KilledWriterLeavesTheOldFileAndNoLock) {
  Put(cache_, "old");
  ChildProcess writer([&] {
    const auto file = files_.OpenForWriting(work_);
    file->Write(std::string(1 << 20, 'x'));
    return ::raise(SIGKILL);
  });
  EXPECT_EQ(writer.Wait(), -SIGKILL);
  EXPECT_EQ(files_.Read(cache_), "old");
  EXPECT_TRUE(files_.Exists(work_));
  const auto next = files_.OpenForWriting(work_);
  ASSERT_NE(next, nullptr);
  next->Write("new");
  EXPECT_TRUE(next->MoveOver(cache_));
  EXPECT_EQ(files_.Read(cache_), "new");
}

TEST_F(DesktopFilesTest, WritersOfManyProcessesLeaveOneWholeFile) {
  std::vector<ChildProcess> children;
  for (char letter = 'a'; letter < 'e'; ++letter) {
    children.emplace_back([&, letter] {
      for (int round = 0; round < 40; ++round) {
        const auto file = files_.OpenForWriting(work_);
        if (file == nullptr) continue;
        file->Write(std::string(5000, letter));
        file->MoveOver(cache_);
      }
      return 0;
    });
  }
  for (ChildProcess& child : children) EXPECT_EQ(child.Wait(), 0);
  const auto bytes = files_.Read(cache_);
  ASSERT_TRUE(bytes);
  EXPECT_EQ(*bytes, std::string(5000, bytes->front()));
}

TEST_F(DesktopFilesTest, FailedWriteIsReportedWithANumberAndTheFile) {
  // A limit on the file's size stands for the full disk.
  ChildProcess writer([&] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{100000, 100000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const auto file = files_.OpenForWriting(work_);
    const Error error = ErrorOf([&] { file->Write(std::string(300000, 'x')); });
    return error.Description().find(work_) == std::string::npos ? 1 : int(error.Number());
  });
  EXPECT_EQ(writer.Wait(), errors::DeviceInputOutput);
  EXPECT_EQ(FileErrorOf(ENOSPC), errors::DeviceInputOutput);
}

TEST_F(DesktopFilesTest, PipesAndDevicesAreNoFiles) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(files_.OpenForWriting(Path("pipe")), nullptr);
  EXPECT_EQ(files_.Read(Path("pipe")), std::nullopt);
  EXPECT_FALSE(files_.Exists(Path("pipe")));
  EXPECT_EQ(files_.Read("/dev/null"), std::nullopt);
}

TEST_F(DesktopFilesTest, NewFilesAreForWhomTheUmaskSays) {
  const mode_t before = ::umask(027);
  Put(work_, "to be shared");
  ::umask(before);
  struct stat status {};
  ASSERT_EQ(::stat(work_.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0640U);
}

}  // namespace

std::unique_ptr<Files> MakeFiles() {
  return std::make_unique<DesktopFiles>();
}

}  // namespace velkor
