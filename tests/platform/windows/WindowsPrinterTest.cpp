// tests/platform/windows/WindowsPrinterTest.cpp: a real printer set up, printed on and lost.
#include "platform/windows/drawing/WindowsPrinter.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "platform/OffscreenPicture.h"
#include "platform/windows/drawing/WindowsPages.h"
#include "platform/windows/system/DialogOwner.h"
#include "platform/windows/system/WindowsFiles.h"
#include "platform/windows/system/WindowsSystem.h"
#include "print/PrintDocument.h"
#include "print/PrinterSetup.h"
#include "tests/platform/windows/DriveDialog.h"
#include "tests/platform/windows/HeldHandles.h"
#include "tests/platform/windows/TestPrinter.h"
#include "tests/support/ErrorOf.h"
#include "tests/view/SampleGrid.h"

namespace velkor {
namespace {

using testing::AllOf;
using testing::HasSubstr;

constexpr Colour Green = Colour::FromRgb(0, 128, 0);
/// Items of the print dialog (dlgs.h): edt3, cmb4.
constexpr int CopiesEdit = 0x0482;
constexpr int PrinterList = 0x0473;

std::size_t CountOf(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string_view::npos; ++at) ++count;
  return count;
}

class WindowsPrinterTest : public testing::Test {
 protected:
  ~WindowsPrinterTest() override { WindowsFiles().Delete(output_); }

  /// With letters that the code page lacks.
  const std::string output_ = WindowsEnvironment().Variable("TMP") + "\\velkor-日ą-" +
                              std::to_string(::GetCurrentProcessId());
  TestPrinter made_{"Velkor Plain"};
  DialogOwner owner_;
  WindowsPrinter printer_{owner_};

  PrinterSettings With(int orientation, int copies, int paper, int duplex) {
    PrinterSettings settings = printer_.Current();
    settings.orientation = orientation;
    settings.copies = copies;
    settings.paperSize = paper;
    settings.duplex = duplex;
    return settings;
  }
};

TEST(WindowsPrinter, WithoutAnyPrinterEveryMemberSaysSo) {
  DialogOwner owner;
  WindowsPrinter printer(owner);
  if (!printer.Devices().empty()) GTEST_SKIP() << "this machine has printers";
  PrinterSettings settings;
  for (const std::function<void()>& act : std::initializer_list<std::function<void()>>{
           [&] { printer.Current(); }, [&] { printer.Apply({}); }, [&] { printer.PageSize(); },
           [&] { printer.MeasuringSurface(); }, [&] { printer.PagePicture(); },
           [&] { printer.ShowDialog(settings); }, [&] { SetUpPrinter(printer, settings); },
           [&] { printer.Begin("a"); }}) {
    const Error error = ErrorOf(act);
    EXPECT_EQ(error.Number(), errors::DeviceUnavailable);
    EXPECT_EQ(error.Description(), "There is no printer");
  }
  EXPECT_THAT(ErrorOf([&] { printer.SelectDevice("Gone"); }).Description(), HasSubstr("Gone"));
  EXPECT_FALSE(owner.IsBusy());
}

TEST_F(WindowsPrinterTest, PrintsTheDisplayedYearPageByPageWithItsWords) {
  const YearGrid grid = SampleGrid({SampleEvent("a", At(2006, 1, 3), At(2006, 2, 9), "Leave"),
                                    SampleEvent("b", At(2006, 7, 3), At(2006, 7, 4))});
  PrintDocument document(grid, {});
  PrintOptionSet options;
  options.VisibleText = true;
  options.MinBandHeight = 450;
  printer_.Apply(With(device_mode::Landscape, 2, device_mode::PaperLetter, 1));
  document.LayOut(options, printer_.PageSize(), printer_.MeasuringSurface());
  ASSERT_GT(document.PageCount(), 1);
  printer_.SetOutputFile(output_);
  document.Print(*printer_.Begin(document.Name()));

  const std::string printed = WindowsFiles().Read(output_).value_or("");
  const auto pages = static_cast<std::size_t>(document.PageCount());
  EXPECT_EQ(CountOf(printed, "%%Page: "), pages);
  EXPECT_EQ(CountOf(printed, "\nshowpage"), pages);
  EXPECT_THAT(printed, AllOf(HasSubstr("%%Title: Year 2006"), HasSubstr("%%EOF"),
                             HasSubstr("/PageSize[612 792]"), HasSubstr("copies=2")));
  const std::string first = WordsOf(printed.substr(0, printed.find("%%Page: 2")));
  EXPECT_THAT(first, AllOf(HasSubstr("Subject"), HasSubstr("Leave"), HasSubstr("Page")));
}

TEST_F(WindowsPrinterTest, DocumentThatIsGivenUpLeavesNoFile) {
  printer_.SetOutputFile(output_);
  {
    const auto job = printer_.Begin("a");
    job->Page().Fill({0, 0, 3000, 3000}, Green);
    job->NewPage();
  }
  EXPECT_EQ(WindowsFiles().Read(output_).value_or(""), "");
}

TEST_F(WindowsPrinterTest, TakesWhatTheDriverCanDoAndLeavesTheRest) {
  using namespace device_mode;
  struct Case {
    PrinterSettings asked;
    PrinterSettings kept;
    Extent page;
  };
  // Margins as the printer's description has them: 18 and 36 points.
  const Extent letter{576 * 20, 720 * 20};
  for (const Case& each :
       {Case{With(Portrait, 1, PaperA4, 1), With(Portrait, 1, PaperA4, 1), {559 * 20, 770 * 20}},
        Case{With(Landscape, 3, PaperLetter, DuplexHorizontal),
             With(Landscape, 3, PaperLetter, DuplexHorizontal),
             {letter.height, letter.width}},
        Case{With(7, 0, 8, 9),
             With(Landscape, 3, PaperLetter, DuplexHorizontal),
             {letter.height, letter.width}},
        Case{With(Portrait, -1, 1 << 20, 0), With(Portrait, 3, PaperLetter, DuplexHorizontal),
             letter}}) {
    printer_.Apply(each.asked);
    EXPECT_EQ(printer_.Current(), each.kept) << each.asked.paperSize;
    EXPECT_NEAR(printer_.PageSize().width, each.page.width, 3) << each.asked.paperSize;
    EXPECT_NEAR(printer_.PageSize().height, each.page.height, 3) << each.asked.paperSize;
  }
  EXPECT_EQ(printer_.Current().driver, "Velkor Plain Printer");
  EXPECT_EQ(printer_.Current().port, "FILE:");
}

TEST_F(WindowsPrinterTest, DialogShowsTheSettingsAndHandsOnWhatTheUserChose) {
  printer_.Apply(With(device_mode::Landscape, 2, device_mode::PaperLetter, 1));
  const PrinterSettings before = printer_.Current();
  {
    const DriveDialog drive([] { Answer(WaitForWindow({}), IDOK); });
    EXPECT_TRUE(SetUpPrinter(printer_, before));
    EXPECT_EQ(printer_.Current(), before);
  }
  TestPrinter other("Velkor Second");
  std::wstring shown;
  const auto choose = [&](int button) {
    const HWND dialog = WaitForWindow({});
    shown = TextOf(dialog, CopiesEdit);
    const HWND list = ::GetDlgItem(dialog, PrinterList);
    ::SendMessageW(list, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                   reinterpret_cast<LPARAM>(L"Velkor Second"));
    ::SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(PrinterList, CBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(list));
    SetText(dialog, CopiesEdit, L"4");
    Answer(dialog, button);
  };
  {
    const DriveDialog drive([&] { choose(IDCANCEL); });
    EXPECT_FALSE(SetUpPrinter(printer_, before));
  }
  EXPECT_EQ(shown, L"2");
  EXPECT_EQ(printer_.Current(), before);
  {
    const DriveDialog drive([&] { choose(IDOK); });
    EXPECT_TRUE(SetUpPrinter(printer_, before));
  }
  EXPECT_EQ(printer_.Current().device, "Velkor Second");
  EXPECT_EQ(printer_.Current().copies, 4);
  EXPECT_FALSE(owner_.IsBusy());
}

TEST_F(WindowsPrinterTest, PrinterThatIsGoneIsNamedAndAnotherOneCanBeChosen) {
  const PrinterSettings known = printer_.Current();
  TestPrinter other("Velkor Second");
  made_.Remove();
  for (const std::function<void()>& act : std::initializer_list<std::function<void()>>{
           [&] { printer_.Begin("a"); }, [&] { printer_.Current(); },
           [&] { printer_.Apply(known); }, [&] { printer_.PageSize(); },
           [&] { printer_.MeasuringSurface(); }}) {
    const Error error = ErrorOf(act);
    EXPECT_EQ(error.Number(), errors::DeviceUnavailable);
    EXPECT_THAT(error.Description(), HasSubstr("Velkor Plain"));
  }
  const DriveDialog drive([] { Answer(WaitForWindow({}), IDOK); });
  EXPECT_TRUE(SetUpPrinter(printer_, known));
  EXPECT_EQ(printer_.Current().device, "Velkor Second");
}

TEST_F(WindowsPrinterTest, PortThatIsAFileAsksForItsName) {
  constexpr int NameEdit = 201;
  {
    const DriveDialog drive([] { Answer(WaitForWindow({}), IDCANCEL); });
    EXPECT_EQ(printer_.Begin("a"), nullptr);
  }
  EXPECT_FALSE(owner_.IsBusy());
  const DriveDialog drive([&] {
    const HWND dialog = WaitForWindow({});
    SetText(dialog, NameEdit, ToWide(output_));
    Answer(dialog, IDOK);
  });
  const auto job = printer_.Begin("a");
  ASSERT_NE(job, nullptr);
  job->EndDocument();
  EXPECT_THAT(WindowsFiles().Read(output_).value_or(""), testing::EndsWith("%%EOF\n"));
}

TEST_F(WindowsPrinterTest, PictureHasEverythingWhereThePrinterPutsIt) {
  const auto picture = printer_.PagePicture();
  const PixelSize pixel = printer_.MeasuringSurface().Pixel();
  // 600 dots to the inch are too many for a whole page.
  EXPECT_FLOAT_EQ(picture->Drawing().Pixel().width, 2 * pixel.width);
  const Extent page = printer_.PageSize();
  picture->Drawing().Fill({page.width / 2, page.height / 2, page.width, page.height}, Green);

  const DibSection shown(100, 100);
  GdiSurface surface(shown.Dc());
  const auto copy = [&] {
    surface.Fill({0, 0, 1500, 1500}, colours::Black);
    const ViewScope view(surface, {150, 150, 1350, 1350}, {150, 150});
    picture->CopyTo(surface, {0, 0, 900, 1500});
  };
  copy();
  EXPECT_EQ(shown.At(9, 9), colours::Black);
  EXPECT_EQ(shown.At(10, 10), colours::White);
  EXPECT_EQ(shown.At(38, 58), colours::White);
  EXPECT_EQ(shown.At(41, 61), Green);
  EXPECT_EQ(shown.At(69, 89), Green);
  EXPECT_EQ(shown.At(70, 89), colours::Black);
  EXPECT_EQ(shown.At(69, 90), colours::Black) << "outside of the view";
  // A line of one pixel is pale, but there.
  picture->Drawing().Fill({0, 1000, page.width, 1000 + 2 * double{pixel.height}}, colours::Black);
  copy();
  int ink = 0;
  for (int y = 10; y < 30; ++y) ink += shown.At(20, y) != colours::White ? 1 : 0;
  EXPECT_GE(ink, 1);
  EXPECT_LE(ink, 2);
}

TEST_F(WindowsPrinterTest, NothingGrowsOverRepeatedUse) {
  printer_.SetOutputFile(output_);
  const auto use = [&] {
    WindowsPrinter fresh(owner_);
    fresh.Apply(With(device_mode::Landscape, 1, device_mode::PaperA4, 1));
    fresh.MeasuringSurface().Measure("Year", {"Arial", 6});
    fresh.PagePicture()->Drawing().Fill({0, 0, 3000, 3000}, Green);
    printer_.Begin("printed")->EndDocument();
  };
  const auto nextPrinter = [&] {
    std::string name = made_.Name();
    HANDLE printer = nullptr;
    ::OpenPrinterA(name.data(), &printer, nullptr);
    const PrinterHandle opened(printer);
    return printer;
  };
  // Outside of what is counted: Wine keeps the file of a job that is given up (AbortPrinter).
  printer_.Begin("given up")->Page().Measure("Year", {"Arial", 6});
  use();
  const HeldHandles before;
  const HANDLE printerBefore = nextPrinter();
  for (int i = 0; i < 10; ++i) use();
  ExpectNoMoreThan(before);
  EXPECT_LE(nextPrinter(), printerBefore);
}

TEST(WindowsPagePicture, NeedsAtMost64MegabytesWhateverThePageAndThePrinter) {
  for (const Extent page : {Extent{11906, 16838}, Extent{47679, 67408}, Extent{1e9, 20},
                            Extent{0, -5}, Extent{5e5, 5e5}}) {
    for (const float dots : {72.0F, 600.0F, 2400.0F}) {
      const PixelSize printer{1440 / dots, 1440 / dots};
      WindowsPagePicture picture(page, printer);
      const PixelSize pixel = picture.Drawing().Pixel();
      const double pixels = std::fmin(page.width, 1e6) / double{pixel.width} *
                            std::fmin(page.height, 1e6) / double{pixel.height};
      EXPECT_LE(pixels, (1 << 24) + 1e5) << page.width << " at " << dots;
      const double times = double{pixel.width} / double{printer.width};
      EXPECT_NEAR(times, std::round(times), 1e-4);
      EXPECT_GE(times, 1);
    }
  }
}

}  // namespace
}  // namespace velkor
