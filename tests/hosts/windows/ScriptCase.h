// tests/hosts/windows/ScriptCase.h: scripts run by the try-out form, a program of its own, against
// the calendar program for tests.
#pragma once

#include <gmock/gmock.h>

#include <functional>

#include "platform/windows/system/WindowsFiles.h"
#include "tests/hosts/windows/ControlCase.h"
#include "tests/platform/windows/StandIn.h"
#include "tests/platform/windows/UtilityCase.h"

namespace velkor {

/// What one run of a script left behind.
struct ScriptRun {
  DWORD code = 0;
  /// Standard output and standard error.
  std::string output;
  DWORD form = 0;
  std::set<DWORD> utilities;
};

/// A folder for a test's files, and registered programs. The control keeps its cache files there.
class ScriptCase : public testing::Test {
 protected:
  ScriptCase() {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    ::SetEnvironmentVariableW(L"TMP", folder_.c_str());
    EXPECT_EQ(control_.Call("DllRegisterServer"), S_OK);
    EXPECT_EQ(RunProgram("vkrRefresh.exe", "/RegServer"), 0U);
  }
  ~ScriptCase() override {
    EXPECT_TRUE(WaitForUtilitiesToEnd()) << "utilities stay behind";
    EXPECT_EQ(RunProgram("vkrRefresh.exe", "/UnregServer"), 0U);
    EXPECT_EQ(control_.Call("DllUnregisterServer"), S_OK);
  }

  static bool WaitForUtilitiesToEnd() {
    return velkor::PumpUntil([] { return ProcessesOf(L"vkrRefresh.exe").empty(); }, 20'000);
  }

  /// Runs a script with the steps that all share; its argument is the test's folder.
  /// @param meanwhile  called over and over while it runs
  ScriptRun RunScript(const std::string& name, const std::function<void()>& meanwhile = {}) const {
    WindowsFiles files;
    const std::string path = Path(name + ".vbs");
    files.OpenForWriting(path)->Write(files.Read(SCRIPTS + name + ".vbs").value_or("") + "\n" +
                                      files.Read(SCRIPTS "Steps.vbs").value_or(""));
    return Run("\"" + path + "\" \"" + ToUtf8(folder_.wstring()) + "\"", meanwhile);
  }
  std::string Path(const std::string& name) const {
    return ToUtf8((folder_ / ToWide(name)).wstring());
  }
  std::string Read(const std::string& name) const {
    return WindowsFiles().Read(Path(name)).value_or("");
  }

  /// Runs the form.
  static ScriptRun Run(const std::string& arguments, const std::function<void()>& meanwhile = {}) {
    constexpr DWORD Limit = 80'000;
    ScriptRun run;
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE ends[2] = {};
    EXPECT_TRUE(::CreatePipe(&ends[0], &ends[1], &inherited, 1 << 20));
    const KernelHandle reading(ends[0]);
    KernelHandle writing(ends[1]);
    const KernelHandle form = StartProgram("TryOutForm.exe", arguments, writing.get());
    writing.reset();
    run.form = ::GetProcessId(form.get());
    const bool ended = velkor::PumpUntil(
        [&] {
          run.utilities.merge(ProcessesOf(L"vkrRefresh.exe"));
          if (meanwhile) meanwhile();
          return ::WaitForSingleObject(form.get(), 0) == WAIT_OBJECT_0;
        },
        Limit);
    EXPECT_TRUE(ended) << arguments << " does not end";
    if (!ended) ::TerminateProcess(form.get(), 99);
    ::WaitForSingleObject(form.get(), 5000);
    ::GetExitCodeProcess(form.get(), &run.code);
    char part[4096];
    for (DWORD got = 0; ::ReadFile(reading.get(), part, sizeof part, &got, nullptr) && got > 0;) {
      run.output.append(part, got);
    }
    return run;
  }

  const std::filesystem::path folder_ = std::filesystem::absolute("hosts-tests");
  ControlLibrary control_;
};

}  // namespace velkor
