// tests/print/frmPrintFaultsTest.cpp: the preview over a printer and a settings store that fail.
#include <gtest/gtest.h>

#include "print/PaperNames.h"
#include "print/frmPrint.h"
#include "print/frmPrintOptions.h"
#include "tests/model/RefreshDoubles.h"
#include "tests/view/SampleGrid.h"

namespace velkor {
namespace {

/// Throws at the calls from one to another, counted from 1.
struct Faults {
  int first = 0;
  int last = 0;
  int calls = 0;
  std::size_t thrown = 0;
  void Count() {
    if (++calls < first || calls > last) return;
    ++thrown;
    throw Error(errors::DeviceInputOutput, "Broken");
  }
};

struct FaultyPrinter : Printer {
  struct Job : PrintJob {
    Job(Faults& f, std::unique_ptr<PrintJob> j) : faults(f), job(std::move(j)) {}
    Surface& Page() override { return Counted()->Page(); }
    void NewPage() override { Counted()->NewPage(); }
    void EndDocument() override { Counted()->EndDocument(); }
    PrintJob* Counted() { return faults.Count(), job.get(); }
    Faults& faults;
    std::unique_ptr<PrintJob> job;
  };
  FaultyPrinter(Faults& f, RecordingPrinter& p) : faults(f), printer(p) {}
  std::vector<std::string> Devices() override { return printer.Devices(); }
  PrinterSettings Current() override { return Counted().Current(); }
  void SelectDevice(const std::string& device) override { Counted().SelectDevice(device); }
  void Apply(const PrinterSettings& settings) override { Counted().Apply(settings); }
  Extent PageSize() override { return Counted().PageSize(); }
  Surface& MeasuringSurface() override { return Counted().MeasuringSurface(); }
  std::unique_ptr<OffscreenPicture> PagePicture() override { return Counted().PagePicture(); }
  bool ShowDialog(PrinterSettings& settings) override { return Counted().ShowDialog(settings); }
  std::unique_ptr<PrintJob> Begin(const std::string& name) override {
    return std::make_unique<Job>(faults, Counted().Begin(name));
  }
  RecordingPrinter& Counted() { return faults.Count(), printer; }
  Faults& faults;
  RecordingPrinter& printer;
};

struct FaultySettings : MemorySettings {
  explicit FaultySettings(Faults& f) : faults(f) {}
  void Save(std::string_view application, std::string_view section, std::string_view key,
            std::string_view value) override {
    faults.Count();
    MemorySettings::Save(application, section, key, value);
  }
  Faults& faults;
};

struct CountedMessages : MessageBoxes {
  MessageAnswer answer = MessageAnswer::Ok;
  std::vector<std::string> texts;
  MessageAnswer Show(const Message& message) override {
    texts.push_back(message.text);
    return answer;
  }
};

/// Accepts the options as they are.
struct AcceptedForms : Forms {
  void ShowModal(Form& form) override {
    form.Open();
    dynamic_cast<frmPrintOptions&>(form).cmdOK.Click();
    form.Unload();
  }
};

/// A preview of three pages over seams that fail for a while.
struct Session {
  Session(int first, int last) : faults{.first = first, .last = last} {
    seams.printer.devices.push_back({.device = "Plotter"});
    seams.printer.answers = {
        {.device = "Plotter", .paperSize = device_mode::PaperLetter, .duplex = 1}};
    settings.MemorySettings::Save("Year Planner", "Printing", "Band Height", "500");
  }
  void Click(std::string_view key) { form.tbPreview.ClickButton(key); }
  void UseEverything() {
    if (!form.Load()) return;
    form.Open();
    form.Form_Resize({15000, 11000}, {});
    for (const std::string_view key :
         {preview_keys::Next, preview_keys::Zoom, preview_keys::Print, preview_keys::PrintSetup,
          preview_keys::Next, preview_keys::Print, preview_keys::PageSetup, preview_keys::Back}) {
      Click(key);
      ExpectPrintedAsShown();
    }
  }
  void ExpectPrintedAsShown() {
    if (seams.printer.documents.size() == printed) return;
    const RecordingPrinter::Document& last = *seams.printer.documents.back();
    printed = seams.printer.documents.size();
    if (!last.ended || !form.picTemp) return;
    const auto page = static_cast<std::size_t>(form.txtStatus.Caption()[5] - '1');
    const auto& shown = static_cast<RecordingSurface&>(form.picTemp->Drawing());
    ASSERT_LT(page, last.pages.size());
    EXPECT_EQ(shown.Log(), last.pages[page]->Log());
    EXPECT_NE(form.txtStatus.Caption().find(OrientationName(last.settings.orientation)),
              std::string::npos);
  }

  Faults faults;
  HeadlessSeams seams;
  NoOutlook outlook;
  FaultyPrinter printer{faults, seams.printer};
  FaultySettings settings{faults};
  CountedMessages messages;
  AcceptedForms forms;
  YearGrid grid = SampleGrid({SampleEvent("a", At(2006, 1, 3), At(2006, 2, 9), "Holiday")});
  Platform platform{seams.cacheUtilities,
                    seams.clock,
                    seams.dialogs,
                    seams.environment,
                    seams.files,
                    forms,
                    seams.inputs,
                    seams.locale,
                    messages,
                    outlook,
                    printer,
                    seams.progress,
                    seams.registry,
                    seams.scrollBars,
                    settings,
                    seams.shell};
  frmPrint form{grid, {}, {.titleName = "Team", .displaySubject = true}, platform};
  std::size_t printed = 0;
};

TEST(frmPrintFaults, EveryFailureIsToldOnceAndThePreviewWorksOn) {
  Session sound(0, 0);
  sound.UseEverything();
  ASSERT_TRUE(sound.messages.texts.empty());
  ASSERT_EQ(sound.seams.printer.documents.size(), 2U);
  for (int i = 0; i < 3 * sound.faults.calls; ++i) {
    Session session(1 + i / 3, 1 + i / 3 + i % 3);
    SCOPED_TRACE(std::to_string(session.faults.first) + " to " +
                 std::to_string(session.faults.last));
    session.UseEverything();
    session.faults.last = 0;
    EXPECT_EQ(session.messages.texts.size(), session.faults.thrown)
        << testing::PrintToString(session.messages.texts);
    EXPECT_EQ(session.seams.shell.waitPointers, 0);
    if (!session.form.IsOpen()) continue;
    session.form.Form_Resize({9000, 9000}, {});
    session.Click(preview_keys::Next);
    EXPECT_EQ(session.form.txtStatus.Caption().substr(0, 7), "Page 2 ");
    session.Click(preview_keys::Print);
    EXPECT_TRUE(session.seams.printer.documents.back()->ended);
    session.ExpectPrintedAsShown();
    EXPECT_EQ(session.messages.texts.size(), session.faults.thrown);
  }
}

}  // namespace
}  // namespace velkor
