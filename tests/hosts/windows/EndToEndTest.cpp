// tests/hosts/windows/EndToEndTest.cpp: the control in a form, its cache utility and a calendar
// program, each a process, as a script uses them.
#include "tests/hosts/windows/ScriptCase.h"
#include "tests/platform/windows/TestPrinter.h"

namespace velkor {
namespace {

using testing::HasSubstr;

class EndToEnd : public ScriptCase {
 protected:
  DWORD StandInId() { return ::GetProcessId(standIn_.Process()); }
  std::string Items() { return standIn_.Testing().Call("ListItems").ToText(); }

  StandIn standIn_;
};

/// Gives the appointment whose inspector is open another subject, as its user would.
void AnswerInspector(const wchar_t* title, const wchar_t* subject) {
  constexpr int SubjectEdit = 100;
  const HWND inspector = ::FindWindowW(L"#32770", title);
  if (inspector == nullptr || !::IsWindowVisible(inspector)) return;
  ::SendDlgItemMessageW(inspector, SubjectEdit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(subject));
  ::PostMessageW(inspector, WM_COMMAND, IDOK, 0);
}

TEST_F(EndToEnd, AYearIsSeenChangedFilteredExportedAndPrinted) {
  const TestPrinter printer("Velkor Plain");
  const ScriptRun run =
      RunScript("Year", {}, [] { AnswerInspector(L"Summer - Appointment", L"Autumn"); });
  EXPECT_EQ(run.code, 0U) << run.output;
  EXPECT_THAT(run.output, HasSubstr("Done"));
  ASSERT_EQ(run.utilities.size(), 1U);
  EXPECT_EQ((std::set{run.form, *run.utilities.begin(), StandInId()}).size(), 3U);
  std::printf("%s\n%s\n", run.output.c_str(), Items().c_str());
}

}  // namespace
}  // namespace velkor
