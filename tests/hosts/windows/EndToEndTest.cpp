// tests/hosts/windows/EndToEndTest.cpp: the control in a form, its cache utility and a calendar
// program, each a process, as a script uses them.
#include "model/CacheRecord.h"
#include "platform/windows/drawing/DibSection.h"
#include "platform/windows/outlook/AutomationOutlook.h"
#include "platform/windows/system/WindowsLocale.h"
#include "platform/windows/system/WindowsSystem.h"
#include "tests/hosts/windows/BareContainer.h"
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

/// How many pixels of the days have a colour as the system draws an object; the legend stands
/// beside them.
int PixelsIn(IUnknown* object, Colour colour) {
  const DibSection picture(900, 480);
  const RECT bounds{0, 0, 900, 480};
  EXPECT_EQ(::OleDraw(object, DVASPECT_CONTENT, picture.Dc(), &bounds), S_OK);
  int count = 0;
  for (int y = 0; y < 480; ++y) {
    for (int x = 0; x < 600; ++x) count += picture.At(x, y) == colour ? 1 : 0;
  }
  return count;
}

TEST_F(EndToEnd, ADocumentThatIsNotInUseShowsTheYearThatItHad) {
  DialogOwner owner;
  {
    AutomationOutlook outlook(owner);
    const auto item = outlook.GetNamespace("MAPI")->GetDefaultFolder(9)->Items()->Add("");
    const int year = WindowsClock().Now().Fields().year;
    item->SetCategories("Unused 03");
    item->SetStart(Date::FromYmd(year, 6, 1));
    item->SetEnd(Date::FromYmd(year, 6, 11));
    item->Save();
  }
  const Colour third = Colour::FromRgb(0xD9, 0x19, 0x0D);
  CLSID id{};
  ComPtr<ILockBytes> bytes;
  ComPtr<IStorage> storage;
  ComPtr<IOleObject> object;
  ASSERT_EQ(::CLSIDFromProgID(L"OutlookVelkor.YearPlan", &id), S_OK);
  ASSERT_EQ(::CreateILockBytesOnHGlobal(nullptr, TRUE, &bytes), S_OK);
  ASSERT_EQ(::StgCreateDocfileOnILockBytes(
                bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, &storage),
            S_OK);
  ASSERT_EQ(::OleCreate(id, __uuidof(IOleObject), OLERENDER_DRAW, nullptr, nullptr, storage.Get(),
                        reinterpret_cast<void**>(object.GetAddressOf())),
            S_OK);
  const ComPtr<BareContainer> container(new BareContainer(std::move(object)));
  ASSERT_EQ(container->Do(OLEIVERB_SHOW), S_OK);
  EXPECT_TRUE(PumpUntil([&] { return PixelsIn(container->control.Get(), third) > 0; }, 60'000));
  const int seen = PixelsIn(container->control.Get(), third);
  ComPtr<IPersistStorage> stored;
  ASSERT_EQ(container->control.As(&stored), S_OK);
  ASSERT_EQ(::OleSave(stored.Get(), storage.Get(), TRUE), S_OK);
  stored.Reset();
  container->Close();

  ASSERT_EQ(::OleLoad(storage.Get(), __uuidof(IOleObject), nullptr,
                      reinterpret_cast<void**>(object.GetAddressOf())),
            S_OK);
  EXPECT_NEAR(PixelsIn(object.Get(), third), seen, seen / 2);
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
