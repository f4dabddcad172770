// tests/print/frmPrintTest.cpp: the preview from its opening to the printed document.
#include "print/frmPrint.h"

#include <gmock/gmock.h>

#include "print/PageView.h"
#include "print/frmPrintOptions.h"
#include "tests/model/RefreshDoubles.h"
#include "tests/view/SampleGrid.h"

namespace velkor {
namespace {

using testing::ElementsAre;

constexpr Extent Window{15000, 11000};
const std::string MonthMessage = "Events for January will not all fit onto the page";

class frmPrintTest : public testing::Test {
 protected:
  frmPrintTest() { seams_.printer.devices.push_back({.device = "Plotter", .driver = "p"}); }

  void Store(const std::string& key, const std::string& value) {
    seams_.settings.Save("Year Planner", "Printing", key, value);
  }
  std::string Stored(const std::string& key) {
    return seams_.settings.Get("Year Planner", "Printing", key, "nothing");
  }
  /// Opens the preview as a face does.
  void Show() {
    ASSERT_TRUE(form_.Load());
    form_.Open();
    form_.Form_Resize(Window, {});
  }
  void Click(std::string_view key) { form_.tbPreview.ClickButton(key); }
  bool IsEnabled(std::string_view key) { return form_.tbPreview.Button(key)->enabled; }
  void Wheel(double notches) {
    seams_.scrollBars.Turn("picParent", ScrollBarSide::Vertical, notches);
  }
  std::string Status() { return form_.txtStatus.Caption(); }
  std::vector<std::string> PageLog() {
    return static_cast<RecordingSurface&>(form_.picTemp->Drawing()).Log();
  }
  void ExpectOptions(const std::string& bandHeight, bool accept) {
    forms_.Expect("frmPrintOptions", [=](Form& shown) {
      auto& options = dynamic_cast<frmPrintOptions&>(shown);
      options.txtMinBandW.SetText(bandHeight);
      (accept ? options.cmdOK : options.cmdCancel).Click();
    });
  }

  HeadlessSeams seams_;
  NoOutlook outlook_;
  ScriptedForms forms_{[](const std::string& what) { ADD_FAILURE() << what; }};
  ScriptedMessageBoxes messages_{[](const std::string& what) { ADD_FAILURE() << what; }};
  YearGrid grid_ = SampleGrid({SampleEvent("a", At(2006, 1, 3), At(2006, 2, 9), "Holiday")});
  Platform platform_ = On(messages_);
  frmPrint form_{grid_, {}, {.titleName = "Team", .displaySubject = true}, platform_};

 private:
  Platform On(MessageBoxes& messages) {
    const Platform all = seams_.On(outlook_, messages);
    return {all.cacheUtilities, all.clock,      all.dialogs,  all.environment,
            all.files,          forms_,         all.inputs,   all.locale,
            all.messages,       all.outlook,    all.printer,  all.progress,
            all.registry,       all.scrollBars, all.settings, all.shell};
  }
};

TEST_F(frmPrintTest, OpensInLandscapeOnThePrintersPaperUnlessOthersWereStored) {
  const struct {
    std::string paper, orientation, status;
  } cases[] = {{"", "", "Page 1 of 1  Landscape A4, 210 x 297 mm"},
               {"none", "upright", "Page 1 of 1  Landscape A4, 210 x 297 mm"},
               {"1", "1", "Page 1 of 1  Portrait Letter, 8 1/2 x 11 in."},
               {"42", "2", "Page 1 of 1  Landscape Letter, 8 1/2 x 11 in."}};
  for (const auto& stored : cases) {
    seams_.printer.devices[0].orientation = device_mode::Portrait;
    if (!stored.paper.empty()) Store("PaperSize", stored.paper);
    if (!stored.paper.empty()) Store("Orientation", stored.orientation);
    Show();
    EXPECT_EQ(Status(), stored.status);
    EXPECT_FALSE(IsEnabled(preview_keys::Back) || IsEnabled(preview_keys::Next));
  }
}

TEST_F(frmPrintTest, EveryPageIsPrintedAsItIsShown) {
  Store("Band Height", "500");
  Store("TeamHeader", "Our year");
  Show();
  EXPECT_EQ(Status(), "Page 1 of 4  Landscape A4, 210 x 297 mm");
  std::vector<std::vector<std::string>> shown{PageLog()};
  while (IsEnabled(preview_keys::Next)) {
    Click(preview_keys::Next);
    shown.push_back(PageLog());
  }
  EXPECT_EQ(Status(), "Page 4 of 4  Landscape A4, 210 x 297 mm");
  Click(preview_keys::Print);
  ASSERT_EQ(seams_.printer.documents.size(), 1U);
  const RecordingPrinter::Document& printed = *seams_.printer.documents[0];
  EXPECT_TRUE(printed.ended);
  EXPECT_EQ(printed.name, "Year 2006");
  ASSERT_EQ(printed.pages.size(), shown.size());
  for (std::size_t page = 0; page < shown.size(); ++page) {
    EXPECT_EQ(printed.pages[page]->Log(), shown[page]);
  }
  EXPECT_EQ(seams_.shell.waitPointers, 0);
}

TEST_F(frmPrintTest, WhatIsOnShowIsPrintedWhateverChangesInTheYearMeanwhile) {
  Show();
  const std::vector<std::string> shown = PageLog();
  SetEvents(grid_, {});
  Click(preview_keys::Print);
  EXPECT_EQ(seams_.printer.documents[0]->pages[0]->Log(), shown);
  form_.OptionsChanged();
  EXPECT_NE(PageLog(), shown);
}

TEST_F(frmPrintTest, ADocumentThatFailsOrIsCancelledIsGivenUpAndThePreviewGoesOn) {
  Store("Band Height", "500");
  Show();
  seams_.printer.failingPage = 2;
  messages_.Expect("Error printing 57 The paper is jammed");
  Click(preview_keys::Print);
  EXPECT_FALSE(seams_.printer.documents[0]->ended);
  EXPECT_EQ(seams_.shell.waitPointers, 0);
  seams_.printer.cancelsDocuments = true;
  Click(preview_keys::Print);
  EXPECT_EQ(seams_.printer.documents.size(), 1U);
  EXPECT_TRUE(form_.IsOpen() && IsEnabled(preview_keys::Next));
}

TEST_F(frmPrintTest, PagesAreTurnedByButtonsKeysAndWheelAndNotBeyondTheEnds) {
  Store("Band Height", "500");
  Show();
  const auto turned = [&](const std::function<void()>& way) {
    way();
    return Status().substr(5, 1) + (IsEnabled(preview_keys::Back) ? "<" : "") +
           (IsEnabled(preview_keys::Next) ? ">" : "");
  };
  EXPECT_EQ(turned([&] { Click(preview_keys::Back); }), "1>");
  EXPECT_EQ(turned([&] { form_.pic1.onKeyDown(Key::PageDown); }), "2<>");
  EXPECT_EQ(turned([&] { Wheel(-1); }), "3<");
  EXPECT_EQ(turned([&] { form_.pic1.onKeyDown(Key::PageDown); }), "3<");
  EXPECT_EQ(turned([&] { form_.pic1.onKeyDown(Key::PageUp); }), "2<>");
  EXPECT_EQ(turned([&] { form_.Form_Resize({9000, 9000}, {}); }), "2<>");
}

TEST_F(frmPrintTest, AFailedLayoutLeadsToTheOptionsUntilItFits) {
  Store("Band Height", "9000");
  messages_.Expect(MonthMessage, MessageAnswer::Ok);
  ExpectOptions("100", true);
  messages_.Expect(MonthMessage, MessageAnswer::Ok);
  ExpectOptions("2.5", true);
  Show();
  EXPECT_EQ(messages_.Shown()[0].title, "Print");
  EXPECT_EQ(messages_.Shown()[0].buttons, MessageButtons::OkCancel);
  EXPECT_EQ(messages_.Shown()[0].icon, MessageIcon::Information);
  EXPECT_TRUE(form_.IsOpen());
  EXPECT_EQ(Status().substr(0, 11), "Page 1 of 1");
}

TEST_F(frmPrintTest, AFailedLayoutShowsNoPagePrintsNoneAndClosesOnCancel) {
  Show();
  Store("Left Margin", "9000");
  Store("Right Margin", "9000");
  seams_.printer.answers = {seams_.printer.Current()};
  messages_.Expect("leave no room for the days across", MessageAnswer::Ok);
  ExpectOptions("2.5", false);
  Click(preview_keys::PrintSetup);
  EXPECT_TRUE(form_.IsOpen());
  EXPECT_EQ(form_.picTemp, nullptr);
  EXPECT_EQ(Status(), "");
  messages_.Expect("leave no room for the days across", MessageAnswer::Cancel);
  Click(preview_keys::Print);
  EXPECT_FALSE(form_.IsOpen());
  EXPECT_TRUE(seams_.printer.documents.empty());
}

TEST_F(frmPrintTest, OpensWithDefaultsWhenAStoredSettingIsNoNumber) {
  Store("Top Margin", "wide");
  messages_.Expect("Error loading the print options 13 ");
  Show();
  EXPECT_EQ(Status(), "Page 1 of 1  Landscape A4, 210 x 297 mm");
  EXPECT_EQ(Stored("Top Margin"), "wide");
}

TEST_F(frmPrintTest, WithoutAPrinterItDoesNotOpen) {
  seams_.printer.Disappear();
  messages_.Expect("Error setting up the printer 68 There is no printer");
  EXPECT_FALSE(form_.Load());
}

TEST_F(frmPrintTest, APrinterThatIsGoneIsToldAndAnotherOneCanBeChosen) {
  seams_.printer.SelectDevice("Plotter");
  Show();
  seams_.printer.devices.pop_back();
  messages_.Expect("Error printing 68 ");
  Click(preview_keys::Print);
  messages_.Expect("Error laying out the pages 68 ");
  form_.Form_Resize({9000, 9000}, {});
  EXPECT_NE(form_.picTemp, nullptr);
  seams_.printer.answers = {seams_.printer.devices[0]};
  Click(preview_keys::PrintSetup);
  Click(preview_keys::Print);
  EXPECT_EQ(seams_.printer.documents.back()->settings.device, "Recorder");
  EXPECT_TRUE(seams_.printer.documents.back()->ended);
  EXPECT_EQ(seams_.printer.shown[0].orientation, device_mode::Landscape);
}

TEST_F(frmPrintTest, OpensOnAnotherPrinterWhenTheCurrentOneIsGone) {
  seams_.printer.SelectDevice("Plotter");
  seams_.printer.devices.pop_back();
  messages_.Expect("Error setting up the printer 68 ");
  Show();
  EXPECT_EQ(seams_.printer.Current().device, "Recorder");
}

TEST_F(frmPrintTest, PrinterSetupTakesTheChosenPrinterAndRemembersPaperAndOrientation) {
  Show();
  const PrinterSettings before = seams_.printer.Current();
  Click(preview_keys::PrintSetup);
  EXPECT_THAT(seams_.printer.shown, ElementsAre(before));
  EXPECT_EQ(seams_.printer.Current(), before);
  EXPECT_EQ(Stored("PaperSize"), "nothing");

  seams_.printer.answers = {{.device = "PLOTTER",
                             .driver = {},
                             .port = {},
                             .orientation = device_mode::Portrait,
                             .copies = 3,
                             .paperSize = device_mode::PaperLetter,
                             .duplex = device_mode::DuplexVertical}};
  Click(preview_keys::PrintSetup);
  const PrinterSettings after = seams_.printer.Current();
  EXPECT_EQ(after.device, "Plotter");
  EXPECT_EQ(after.copies, 3);
  EXPECT_EQ(after.duplex, device_mode::DuplexVertical);
  EXPECT_EQ(Stored("PaperSize") + Stored("Orientation"), "11");
  EXPECT_EQ(Status(), "Page 1 of 1  Portrait Letter, 8 1/2 x 11 in.");

  seams_.settings.readOnly = true;
  seams_.printer.answers = {{.orientation = device_mode::Landscape}};
  messages_.Expect("Error saving the printer settings 5 ");
  Click(preview_keys::PrintSetup);
  EXPECT_EQ(Status(), "Page 1 of 1  Landscape A4, 210 x 297 mm");
}

TEST_F(frmPrintTest, ZoomShowsThePageInItsOwnSizeAndScrollsIt) {
  Show();
  auto& bars = *seams_.scrollBars.windows["picParent"];
  EXPECT_FALSE(bars[ScrollBarSide::Vertical].visible);
  EXPECT_FALSE(form_.pic1.onKeyDown(Key::Down));
  Click(preview_keys::Zoom);
  EXPECT_TRUE(form_.tbPreview.Button(preview_keys::Zoom)->checked);
  EXPECT_TRUE(bars[ScrollBarSide::Vertical].visible && bars[ScrollBarSide::Horizontal].visible);
  EXPECT_EQ(bars[ScrollBarSide::Vertical].info.max, 11906 + 600);
  EXPECT_EQ(bars[ScrollBarSide::Horizontal].info.max, 16838 + 600);
  EXPECT_EQ(bars[ScrollBarSide::Horizontal].info.page, 15000 - 255);
  form_.pic1.onKeyDown(Key::Down);
  EXPECT_EQ(form_.pic1.Bounds().top, -300);
  Wheel(-1);
  EXPECT_EQ(form_.pic1.Bounds().top, -1200);
  seams_.scrollBars.Drag("picParent", ScrollBarSide::Vertical, 500);
  EXPECT_EQ(form_.pic1.Bounds().top, -500);
  for (int i = 0; i < 100; ++i) form_.pic1.onKeyDown(Key::Right);
  // The desk's right edge meets the viewport's.
  EXPECT_NEAR(form_.pic1.Bounds().right, 15000 - 255, 1);
  RecordingSurface screen;
  form_.pic1.onPaint(screen, {0, 0, 300, 300});
  EXPECT_THAT(screen.Calls("picture"), ElementsAre("picture 300 300 17138 12206"));
  Click(preview_keys::Zoom);
  EXPECT_FALSE(form_.tbPreview.Button(preview_keys::Zoom)->checked);
  EXPECT_FALSE(bars[ScrollBarSide::Vertical].visible);
  EXPECT_EQ(form_.pic1.Bounds().top, 0);
}

TEST(PageView, APageFillsOneDirectionAndIsCentredInTheOther) {
  EXPECT_EQ(FittedPage({2000, 1000}, {4600, 3600}), (Rect{300, 800, 4300, 2800}));
  EXPECT_EQ(FittedPage({1000, 2000}, {4600, 3600}), (Rect{1550, 300, 3050, 3300}));
  EXPECT_EQ(FittedPage({1000, 2000}, {600, 3600}), Rect{});
}

}  // namespace
}  // namespace velkor
