// tests/hosts/windows/ScriptCase.h: scripts run by the try-out form, a program of its own, against
// the calendar program for tests.
#pragma once

#include <gmock/gmock.h>

#include <functional>

#include "platform/windows/system/WindowsFiles.h"
#include "tests/hosts/windows/ControlCase.h"
#include "tests/platform/windows/StandIn.h"

namespace velkor {

/// What one run of a script left behind.
struct ScriptRun : ProgramRun {
  DWORD form = 0;
  std::set<DWORD> utilities;
};

/// A folder for a test's files, where the control keeps its cache files, and all programs, each of
/// its own.
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
    EXPECT_TRUE(PumpUntil([] { return ProcessesOf(L"vkrRefresh.exe").empty(); }))
        << "utilities stay behind";
    EXPECT_EQ(RunProgram("vkrRefresh.exe", "/UnregServer"), 0U);
    EXPECT_EQ(control_.Call("DllUnregisterServer"), S_OK);
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
    ScriptRun run;
    static_cast<ProgramRun&>(run) = Capture("TryOutForm.exe", arguments, [&](HANDLE form) {
      run.form = ::GetProcessId(form);
      run.utilities.merge(ProcessesOf(L"vkrRefresh.exe"));
      if (meanwhile) meanwhile();
    });
    return run;
  }

  const std::filesystem::path folder_ = std::filesystem::absolute("hosts-tests");
  ControlLibrary control_;
  StandIn standIn_;
};

}  // namespace velkor
