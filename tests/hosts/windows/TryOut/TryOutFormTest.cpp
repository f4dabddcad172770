// tests/hosts/windows/TryOut/TryOutFormTest.cpp: the try-out form, started with scripts.
#include <gmock/gmock.h>

#include <fstream>
#include <string>
#include <vector>

#include "platform/windows/system/WindowsFiles.h"
#include "tests/hosts/windows/ControlCase.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr DWORD Deadline = 60000;

struct ScriptResult {
  DWORD code = 0;
  std::string output;
  std::string errors;
};

class TryOut : public testing::Test {
 protected:
  static void SetUpTestSuite() { ControlLibrary().Call("DllRegisterServer"); }
  static void TearDownTestSuite() { ControlLibrary().Call("DllUnregisterServer"); }

  static HANDLE OpenOutput(const char* path) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return ::CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0,
                         nullptr);
  }

  /// Runs a script that is written into a file of this name.
  static ScriptResult Run(const std::string& name, const std::string& script) {
    std::ofstream(name, std::ios::binary) << script;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = OpenOutput("tryout.out");
    start.hStdError = OpenOutput("tryout.err");
    const std::string own = ModulePath(nullptr);
    const std::string program = own.substr(0, own.find_last_of('\\') + 1) + "TryOutForm.exe";
    std::wstring command = ToWide("\"" + program + "\" " + name);
    PROCESS_INFORMATION process{};
    ScriptResult result{~0U, {}, {}};
    if (::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                         &start, &process)) {
      if (::WaitForSingleObject(process.hProcess, Deadline) != WAIT_OBJECT_0) {
        ADD_FAILURE() << name << " did not end";
        ::TerminateProcess(process.hProcess, ~0U);
      }
      ::GetExitCodeProcess(process.hProcess, &result.code);
      ::CloseHandle(process.hThread);
      ::CloseHandle(process.hProcess);
    }
    ::CloseHandle(start.hStdOutput);
    ::CloseHandle(start.hStdError);
    WindowsFiles files;
    result.output = files.Read("tryout.out").value_or("");
    result.errors = files.Read("tryout.err").value_or("");
    return result;
  }
};

TEST_F(TryOut, ScriptSetsSavesAndRestoresPropertiesInEitherLanguage) {
  const ScriptResult basic = Run("properties.vbs", R"(
Sub Form_PropertyChanged(Name)
  Form.Print "changed " & Name
End Sub
Form.Place
Form.YearPlan.TitleName = "Team"
Form.Save "tryout.properties"
Form.Place
Form.Print Form.YearPlan.TitleName
Form.Check Form.Restore("tryout.properties") = "", "it takes what it gave"
Form.Print Form.YearPlan.TitleName
)");
  EXPECT_EQ(basic.code, 0U) << basic.errors;
  EXPECT_EQ(basic.output, "changed TitleName\r\nDefault\r\nTeam\r\n");
  const ScriptResult script = Run("properties.js", R"(
function Form_PropertyChanged(name) { Form.Print("changed " + name); }
Form.Restore("tryout.properties");
Form.YearPlan.AllEvents = true;
Form.Print(Form.YearPlan.TitleName + " " + Form.PropertiesChanged);
)");
  EXPECT_EQ(script.code, 0U) << script.errors;
  EXPECT_EQ(script.output, "changed AllEvents\r\nTeam AllEvents\r\n\r\n");
}

TEST_F(TryOut, DamagedPropertiesAreToldAndTheDefaultsStand) {
  const ScriptResult result = Run("damaged.vbs", R"(
Form.Place
Form.YearPlan.TitleName = "Team"
CreateObject("Scripting.FileSystemObject").CreateTextFile("damaged.properties").Write "no properties"
Form.Print Form.Restore("damaged.properties")
Form.Print Form.YearPlan.TitleName
Form.Restore "absent.properties"
)");
  EXPECT_EQ(result.code, 1U);
  EXPECT_EQ(result.output, "The stored properties are no planner's.\r\nDefault\r\n");
  EXPECT_THAT(result.errors, HasSubstr("absent.properties: no properties were saved there"));
}

TEST_F(TryOut, ErrorsNameTheirLineAndChecksTheirText) {
  struct Case {
    const char* name;
    const char* script;
    const char* error;
  };
  for (const Case& each : std::vector<Case>{
           {"member.vbs", "x = 1\nForm.Nonsense 3\n", "member.vbs(2): "},
           {"member.js", "var x = 1;\n\nabsent.call();\n", "member.js(3): "},
           {"grammar.vbs", "x = 1\nIf x Then Then\n", "grammar.vbs(2): "},
           {"empty.vbs", "Form.YearPlan.AboutBox\n", "There is no year planner in the form."},
           {"steps.vbs", "Form.Expect \"\", \"jump 1\"\n", "\"jump 1\" is no step for a dialog"},
           {"check.vbs", "Form.Check False, \"the sky is green\"\n", "failed: the sky is green"},
           {"handler.vbs",
            "Sub Form_PropertyChanged(Name)\n  Form.Nonsense\nEnd Sub\nForm.Place\n"
            "Form.YearPlan.TitleName = \"T\"\n",
            "handler.vbs"},
           {"script.txt", "", "a script ends in .vbs or .js"},
       }) {
    const ScriptResult result = Run(each.name, each.script);
    EXPECT_EQ(result.code, 1U) << each.name;
    EXPECT_THAT(result.errors, HasSubstr(each.error)) << each.name;
  }
}

TEST_F(TryOut, DialogsAreAnsweredAndThoseThatNeverCameAreTold) {
  const ScriptResult result = Run("dialogs.vbs", R"(
Form.Place
Form.Allow "OutlookVelkor", "press OK", 1500
Form.WaitForDialogs
Form.Expect "About OutlookVelkor YearPlan", "press OK"
Form.YearPlan.AboutBox
Form.Allow "Elsewhere", "press 1", 100
Form.WaitForDialogs
Form.Print Form.Dialogs
Form.Expect "Somebody", "press 1", 100
Form.Close
)");
  EXPECT_EQ(result.code, 1U);
  EXPECT_THAT(result.output, HasSubstr("About OutlookVelkor YearPlan: "));
  EXPECT_THAT(result.errors, HasSubstr("The dialog \"Somebody\" never came."));
  EXPECT_THAT(result.errors, Not(HasSubstr("Elsewhere")));
}

TEST_F(TryOut, TabKeyGoesThroughTheBarAndTheControl) {
  const ScriptResult result = Run("keys.vbs", R"(
Dim i, inside, turns, before
Form.Allow "", "press OK", 3000
Form.Place
Form.Wait 1500
before = Form.HasKeyboard
For i = 1 To 60
  Form.Press 9
  Form.Wait 20
  If Form.HasKeyboard <> before Then turns = turns + 1
  before = Form.HasKeyboard
Next
Form.Check turns >= 4, "the keyboard goes into the control and out again, not only " & turns
)");
  EXPECT_EQ(result.code, 0U) << result.errors;
}

TEST_F(TryOut, UnregisteredControlIsToldWithWhatToDo) {
  ControlLibrary().Call("DllUnregisterServer");
  const ScriptResult result = Run("unregistered.vbs", "Form.Place\n");
  ControlLibrary().Call("DllRegisterServer");
  EXPECT_EQ(result.code, 1U);
  EXPECT_THAT(result.errors, HasSubstr("Register.cmd"));
}

}  // namespace
}  // namespace velkor
