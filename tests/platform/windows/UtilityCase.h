// tests/platform/windows/UtilityCase.h: the real cache utility and the calendar program for tests.
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/windows/com/ComCacheUtility.h"
#include "platform/windows/system/DialogOwner.h"
#include "tests/platform/windows/Programs.h"

namespace velkor {

class UtilityCase : public testing::Test {
 protected:
  using Completion = std::pair<short, long>;

  /// @param creates  makes the first utility
  explicit UtilityCase(bool creates = true) {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directory(folder_);
    EXPECT_EQ(RunProgram("vkrRefresh.exe", "/RegServer"), 0U);
    if (creates) Create();
  }
  ~UtilityCase() override {
    utility_.reset();
    EXPECT_TRUE(PumpUntil([] { return Utilities().empty(); })) << "utilities stay behind";
    std::filesystem::remove_all(folder_);
  }

  /// A utility whose completions and errors are written down.
  void Create() {
    utility_ = utilities_.Create([this](short result, long number) {
      completions_.emplace_back(result, number);
      if (number != 0) throw Error(number, "plain");
    });
  }
  static std::set<DWORD> Utilities() { return ProcessesOf(L"vkrRefresh.exe"); }
  /// Ends the one utility that runs.
  static void KillUtility() {
    const std::set<DWORD> running = Utilities();
    ASSERT_EQ(running.size(), 1U);
    const KernelHandle process(::OpenProcess(PROCESS_TERMINATE, FALSE, *running.begin()));
    ::TerminateProcess(process.get(), 9);
  }

  /// The completion of the refresh that runs, after a moment in which no other comes.
  Completion AwaitCompletion() {
    const std::size_t count = completions_.size();
    if (!PumpUntil([&] { return completions_.size() > count; })) return {};
    PumpFor(50);
    EXPECT_EQ(completions_.size(), count + 1);
    return completions_.back();
  }
  Completion Refresh() {
    const std::size_t count = completions_.size();
    utility_->Start(inputs_);
    EXPECT_EQ(completions_.size(), count) << "from within Start";
    return AwaitCompletion();
  }

  const std::string folder_ = "utility";
  RefreshInputs inputs_{2026,
                        1,
                        ToUtf8(std::filesystem::absolute(folder_).wstring()) + "\\c.tmp",
                        ToUtf8(std::filesystem::absolute(folder_).wstring()) + "\\~c.tmp",
                        "folder",
                        "store"};
  std::vector<Completion> completions_;
  std::vector<Error> errors_;
  DialogOwner owner_;
  ComCacheUtilities utilities_{owner_, [this](const Error& error) { errors_.push_back(error); }};
  std::unique_ptr<CacheUtility> utility_;
};

}  // namespace velkor
