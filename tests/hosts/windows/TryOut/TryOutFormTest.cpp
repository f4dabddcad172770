// tests/hosts/windows/TryOut/TryOutFormTest.cpp: the try-out form, started with scripts.
#include <gmock/gmock.h>

#include <fstream>
#include <string>
#include <vector>

#include "tests/hosts/windows/ControlCase.h"
#include "tests/platform/windows/Programs.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::Not;

class TryOut : public testing::Test {
 protected:
  static void SetUpTestSuite() { ControlLibrary().Call("DllRegisterServer"); }
  static void TearDownTestSuite() { ControlLibrary().Call("DllUnregisterServer"); }

  /// Runs a script that is written into a file of this name.
  static ProgramRun Run(const std::string& name, const std::string& script) {
    std::ofstream(name, std::ios::binary) << script;
    return Capture("TryOutForm.exe", name);
  }
};

TEST_F(TryOut, ScriptSetsSavesAndRestoresPropertiesInEitherLanguage) {
  const ProgramRun basic = Run("properties.vbs", R"(
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
  EXPECT_EQ(basic.code, 0U) << basic.output;
  EXPECT_EQ(basic.output, "changed TitleName\r\nDefault\r\nTeam\r\n");
  const ProgramRun script = Run("properties.js", R"(
function Form_PropertyChanged(name) { Form.Print("changed " + name); }
Form.Restore("tryout.properties");
Form.YearPlan.AllEvents = true;
Form.Print(Form.YearPlan.TitleName + " " + Form.PropertiesChanged);
)");
  EXPECT_EQ(script.code, 0U) << script.output;
  EXPECT_EQ(script.output, "changed AllEvents\r\nTeam AllEvents\r\n\r\n");
}

TEST_F(TryOut, DamagedPropertiesAreToldAndTheDefaultsStand) {
  const ProgramRun result = Run("damaged.vbs", R"(
Form.Place
Form.YearPlan.TitleName = "Team"
CreateObject("Scripting.FileSystemObject").CreateTextFile("damaged.properties").Write "no properties"
Form.Print Form.Restore("damaged.properties")
Form.Print Form.YearPlan.TitleName
Form.Restore "absent.properties"
)");
  EXPECT_EQ(result.code, 1U);
  EXPECT_THAT(result.output, HasSubstr("The stored properties are no planner's.\r\nDefault\r\n"));
  EXPECT_THAT(result.output, HasSubstr("absent.properties: no properties were saved there"));
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
    const ProgramRun result = Run(each.name, each.script);
    EXPECT_EQ(result.code, 1U) << each.name;
    EXPECT_THAT(result.output, HasSubstr(each.error)) << each.name;
  }
}

TEST_F(TryOut, DialogsAreAnsweredAndThoseThatNeverCameAreTold) {
  const ProgramRun result = Run("dialogs.vbs", R"(
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
  EXPECT_THAT(result.output, HasSubstr("The dialog \"Somebody\" never came."));
  EXPECT_THAT(result.output, Not(HasSubstr("Elsewhere")));
}

TEST_F(TryOut, TabKeyGoesThroughTheBarAndTheControl) {
  const ProgramRun result = Run("keys.vbs", R"(
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
  EXPECT_EQ(result.code, 0U) << result.output;
}

TEST_F(TryOut, UnregisteredControlIsToldWithWhatToDo) {
  ControlLibrary().Call("DllUnregisterServer");
  const ProgramRun result = Run("unregistered.vbs", "Form.Place\n");
  ControlLibrary().Call("DllRegisterServer");
  EXPECT_EQ(result.code, 1U);
  EXPECT_THAT(result.output, HasSubstr("Register.cmd"));
}

}  // namespace
}  // namespace velkor
