// tests/hosts/windows/TryOutTest.cpp: the try-out form as scripts and those who start them see it.
#include "tests/hosts/windows/ScriptCase.h"

namespace velkor {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

using TryOut = ScriptCase;

TEST_F(TryOut, ErrorsAndFailedChecksEndWithOneAndSayWhereAndWhat) {
  struct Case {
    const char* text;
    const char* ending;
    const char* told;
  };
  for (const Case& wrong :
       {Case{"Form.Print 1\nDim x\nx = Missing.Member\n", ".vbs", "text.vbs(3): "},
        {"If True\nForm.Print 1\n", ".vbs", "text.vbs(1): "},
        {"Form.Check 1 = 2, \"one is not two\"\nForm.Print \"on\"", ".vbs",
         "failed: one is not two"},
        {"var x = 1;\nForm.Nothing();\n", ".js", "text.js(2): "},
        {"Form.Expect \"a\", \"jump 3\"", ".vbs", "\"jump 3\" is no step"},
        {"Form.Expect \"Never\", \"press OK\", 10", ".vbs", "\"Never\" never came"},
        {"Form.Draw", ".vbs", "There is no year planner in the form"},
        {"Form.Restore \"no-such-file\"", ".vbs", "no-such-file: no properties were saved"},
        {"echo", ".bat", "a script ends in .vbs or .js"}}) {
    const ScriptRun run = RunText(wrong.text, wrong.ending);
    EXPECT_EQ(run.code, 1U) << wrong.text;
    EXPECT_THAT(run.output, HasSubstr(wrong.told)) << wrong.text;
  }
  EXPECT_THAT(Run("nowhere.vbs", {}).output, HasSubstr("nowhere.vbs: there is no such file"));
  EXPECT_EQ(Run("--bogus", {}).code, 2U);
}

TEST_F(TryOut, WithoutARegisteredControlItSaysHowToRegisterOne) {
  EXPECT_EQ(control_.Call("DllUnregisterServer"), S_OK);
  const ScriptRun run = RunText("Form.Place");
  EXPECT_EQ(run.code, 1U);
  EXPECT_THAT(run.output, AllOf(HasSubstr("not registered"), HasSubstr("Register.cmd")));
}

TEST_F(TryOut, PropertiesComeBackFromTheirFileAndBrokenOnesLeaveThePlannerUsable) {
  const ScriptRun run = RunScript("Properties");
  EXPECT_EQ(run.code, 0U) << run.output;
  EXPECT_THAT(run.output, HasSubstr("(Step:1)")) << "there is no calendar program";
}

TEST_F(TryOut, TheSampleScriptRunsAsItIs) {
  StandIn standIn;
  const ScriptRun run = RunText(WindowsFiles().Read(TRY_OUT_SCRIPT).value_or("Missing"));
  EXPECT_EQ(run.code, 0U) << run.output;
  EXPECT_THAT(run.output, AllOf(HasSubstr("Status: Downloading"), HasSubstr("Changed: TitleName"),
                                HasSubstr("Drawn, "), Not(HasSubstr("Error "))));
  EXPECT_EQ(Read("TryOut.bmp").substr(0, 2), "BM");
}

}  // namespace
}  // namespace velkor
