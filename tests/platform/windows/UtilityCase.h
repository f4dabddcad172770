// tests/platform/windows/UtilityCase.h: the real cache utility and the calendar program for tests.
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/windows/com/Automation.h"
#include "platform/windows/com/ComCacheUtility.h"
#include "platform/windows/com/ProcessWatch.h"
#include "platform/windows/com/Registration.h"
#include "tests/platform/windows/PumpMessages.h"
// After windows.h.
#include <tlhelp32.h>

namespace velkor {

/// A program beside this one, with its arguments.
inline std::wstring CommandLine(const std::string& program, const std::string& arguments) {
  const std::filesystem::path folder =
      std::filesystem::path(ToWide(ModulePath(nullptr))).parent_path();
  return L"\"" + (folder / program).wstring() + L"\" " + ToWide(arguments);
}

/// Null when it does not start.
inline KernelHandle StartProgram(const std::string& program, const std::string& arguments,
                                 HANDLE output = nullptr) {
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = startup.hStdError = output;
  PROCESS_INFORMATION started{};
  std::wstring line = CommandLine(program, arguments);
  if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &started)) {
    return nullptr;
  }
  ::CloseHandle(started.hThread);
  return KernelHandle(started.hProcess);
}

/// Its exit code.
inline DWORD RunProgram(const std::string& program, const std::string& arguments,
                        HANDLE output = nullptr) {
  const KernelHandle process = StartProgram(program, arguments, output);
  DWORD code = 99;
  if (process && ::WaitForSingleObject(process.get(), 20'000) == WAIT_OBJECT_0) {
    ::GetExitCodeProcess(process.get(), &code);
  }
  return code;
}

/// The running processes of a program.
inline std::set<DWORD> ProcessesOf(const wchar_t* program) {
  std::set<DWORD> found;
  const KernelHandle all(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W process{};
  process.dwSize = sizeof process;
  for (BOOL more = ::Process32FirstW(all.get(), &process); more;
       more = ::Process32NextW(all.get(), &process)) {
    if (::lstrcmpiW(process.szExeFile, program) == 0) found.insert(process.th32ProcessID);
  }
  return found;
}

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
