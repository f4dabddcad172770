// tests/platform/FilesTest.cpp: exclusive writing and replacing on a real file system, in each
// face.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "tests/platform/Face.h"
#include "tests/support/ErrorOf.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;

/// A folder whose name is no plain one.
class FilesTest : public testing::Test {
 protected:
  FilesTest() { fs::create_directory(folder_); }
  ~FilesTest() override { fs::remove_all(folder_); }

  static std::string ToText(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
  }
  std::string Path(const char8_t* name) const { return ToText(folder_ / name); }
  void Put(const std::string& path, std::string_view bytes) const {
    files_->OpenForWriting(path)->Write(bytes);
  }

  const fs::path folder_ =
      fs::temp_directory_path() /
      (u8"vélkor-files-" +
       fs::path(std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()))
           .u8string());
  const fs::path workPath_ = folder_ / u8"wörk 日";
  const fs::path cachePath_ = folder_ / u8"cache";
  const std::string work_ = ToText(workPath_);
  const std::string cache_ = ToText(cachePath_);
  const std::unique_ptr<Files> files_ = MakeFiles();
};

TEST_F(FilesTest, MovingOverReplacesTheOldFileWhole) {
  Put(cache_, "the old file, longer than the new one");
  {
    const auto file = files_->OpenForWriting(work_);
    file->Write("new");
    EXPECT_EQ(files_->Read(cache_), "the old file, longer than the new one");
    EXPECT_TRUE(file->MoveOver(cache_));
    EXPECT_EQ(files_->OpenForWriting(cache_), nullptr) << "its writer still lives";
  }
  EXPECT_EQ(files_->Read(cache_), "new");
  EXPECT_FALSE(files_->Exists(work_));
}

TEST_F(FilesTest, BothFilesStayWhenTheOldOneCannotBeReplaced) {
  {
    const auto other = files_->OpenForWriting(cache_);
    other->Write("other");
    const auto file = files_->OpenForWriting(work_);
    file->Write("new");
    EXPECT_FALSE(file->MoveOver(cache_));
    EXPECT_EQ(files_->OpenForWriting(work_), nullptr) << "a second writer";
  }
  EXPECT_EQ(files_->Read(cache_), "other");
  EXPECT_EQ(files_->Read(work_), "new");
}

TEST_F(FilesTest, AFileThatHasAnotherNameIsNotWritten) {
  Put(cache_, "somebody's");
  fs::create_hard_link(cachePath_, workPath_);
  std::error_code lacking;
  fs::create_symlink(cachePath_, folder_ / u8"link", lacking);
  for (const std::string& name : {work_, Path(u8"link")}) {
    Put(name, "new");
    EXPECT_EQ(files_->Read(name), "new");
    EXPECT_EQ(files_->Read(cache_), "somebody's");
  }
}

TEST_F(FilesTest, AWriterThatGivesUpDeletesWhatItHolds) {
  {
    const auto file = files_->OpenForWriting(work_);
    file->Write("half");
    EXPECT_TRUE(files_->Delete(work_));
  }
  EXPECT_FALSE(files_->Exists(work_));
  EXPECT_TRUE(files_->Delete(work_)) << "nothing left to do";
}

TEST_F(FilesTest, FileBeyondTheLimitIsAnErrorWithItsName) {
  std::ofstream(workPath_, std::ios::binary).seekp(std::streamoff{1} << 33).put('x');
  EXPECT_EQ(ErrorOf([&] { files_->Read(work_); }).Description(),
            "Cannot read " + work_ + ": it is too large");
}

TEST_F(FilesTest, WhatCannotBeOpenedIsAnAnswer) {
  const std::string folder = ToText(folder_);
  for (const std::string& path : {Path(u8"absent"), folder}) {
    EXPECT_EQ(files_->Read(path), std::nullopt);
    EXPECT_FALSE(files_->Exists(path));
  }
  for (const std::string& path : {Path(u8"absent/file"), folder}) {
    EXPECT_EQ(files_->OpenForWriting(path), nullptr);
  }
  EXPECT_TRUE(files_->DirectoryExists(folder));
  EXPECT_FALSE(files_->Delete(folder));
}

}  // namespace
}  // namespace velkor
