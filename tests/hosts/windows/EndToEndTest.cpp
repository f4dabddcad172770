// tests/hosts/windows/EndToEndTest.cpp: the control in a form, its cache utility and a calendar
// program, each a process, as a script uses them.
#include "model/CacheRecord.h"
#include "platform/windows/system/WindowsLocale.h"
#include "tests/hosts/windows/ScriptCase.h"
#include "tests/platform/windows/TestPrinter.h"

namespace velkor {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using testing::UnorderedElementsAre;

class EndToEnd : public ScriptCase {
 protected:
  DWORD StandInId() { return ::GetProcessId(standIn_.Process()); }
  std::string Items() { return standIn_.Testing().Call("ListItems").ToText(); }
  /// Of the one cache file that there is.
  std::vector<std::string> SubjectsInCache() const {
    std::vector<std::string> subjects;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
      if (entry.path().extension() != L".tmp") continue;
      const std::string bytes = Read(ToUtf8(entry.path().filename().wstring()));
      WindowsLocale locale;
      CacheRecordReader reader(bytes, locale);
      for (CalEvent event; reader.Next(event);) subjects.push_back(event.Subject);
      EXPECT_EQ(reader.Remaining(), 0U) << bytes;
    }
    return subjects;
  }
};

/// Gives the appointment whose inspector is open another subject, as its user would.
void AnswerInspector(const wchar_t* title, const wchar_t* subject) {
  constexpr int SubjectEdit = 100;
  const HWND inspector = ::FindWindowW(L"#32770", title);
  if (inspector == nullptr || !::IsWindowVisible(inspector)) return;
  ::SendDlgItemMessageW(inspector, SubjectEdit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(subject));
  ::PostMessageW(inspector, WM_COMMAND, IDOK, 0);
}

TEST_F(EndToEnd, ThousandsOfChangesAndHeldKeysNeitherStopTheFormNorPileUpMessages) {
  const ScriptRun run = RunScript("Many");
  EXPECT_EQ(run.code, 0U) << run.output;
  EXPECT_THAT(run.output, HasSubstr("Done"));
}

TEST_F(EndToEnd, AYearIsSeenChangedFilteredExportedAndPrinted) {
  const TestPrinter printer("Velkor Plain");
  const ScriptRun run =
      RunScript("Year", [] { AnswerInspector(L"Summer - Appointment", L"Autumn"); });
  EXPECT_EQ(run.code, 0U) << run.output;
  EXPECT_THAT(run.output, HasSubstr("Done"));
  EXPECT_THAT(run.output, HasSubstr("Delete this appointment Autumn?"));
  ASSERT_EQ(run.utilities.size(), 1U);
  EXPECT_EQ((std::set{run.form, *run.utilities.begin(), StandInId()}).size(), 3U);

  EXPECT_THAT(Items(), AllOf(HasSubstr("Anchor one|"), HasSubstr("|Holiday|"),
                             Not(HasSubstr("Autumn")), Not(HasSubstr("Arrives"))));
  EXPECT_THAT(Read("year.xml"),
              AllOf(HasSubstr("Holiday"), HasSubstr("Fair"), HasSubstr("Anchor one"),
                    HasSubstr("Anchor two"), Not(HasSubstr("Arrives"))));
  const std::string printed = Read("year.ps");
  EXPECT_THAT(printed, AllOf(StartsWith("%!PS"), EndsWith("%%EOF\n")));
  EXPECT_THAT(WordsOf(printed), AllOf(HasSubstr("JanFebMar"), HasSubstr("Anchor")));
  EXPECT_THAT(SubjectsInCache(), UnorderedElementsAre("Anchor one", "Anchor two"));
}

TEST_F(EndToEnd, TheSampleScriptOfTheFormRunsAsItIs) {
  const std::string script = ToUtf8(std::filesystem::absolute(TRY_OUT_SCRIPT).wstring());
  const ScriptRun run = Run("\"" + script + "\"");
  EXPECT_EQ(run.code, 0U) << run.output;
  EXPECT_THAT(run.output, AllOf(HasSubstr("Status: Downloading"), HasSubstr("Changed: TitleName"),
                                HasSubstr("The year is drawn in"), Not(HasSubstr("No year")),
                                Not(HasSubstr("Messages met"))));
}

}  // namespace
}  // namespace velkor
