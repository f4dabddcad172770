// tests/platform/headless/RecordingPrinterTest.cpp: recorded documents, and printers that fail.
#include "platform/headless/RecordingPrinter.h"

#include <gmock/gmock.h>

#include "support/values/Error.h"

namespace velkor {
namespace {

using testing::ElementsAre;

long NumberOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Error& error) {
    return error.Number();
  }
  return 0;
}

TEST(RecordingPrinter, KeepsPagesAndTurnsTheSheetAndLeavesWhatItLacks) {
  RecordingPrinter printer;
  printer.Apply({.device = {}, .driver = {}, .port = {}, .orientation = 2, .paperSize = 1});
  EXPECT_EQ(printer.PageSize().width, 15840);
  printer.Apply({.device = {},
                 .driver = {},
                 .port = {},
                 .orientation = 0,
                 .copies = 0,
                 .paperSize = 256,
                 .duplex = 9});
  EXPECT_EQ(printer.Current().orientation, device_mode::Landscape);
  EXPECT_EQ(printer.Current().copies, 1);
  EXPECT_EQ(printer.Current().paperSize, device_mode::PaperLetter);
  EXPECT_EQ(printer.Current().duplex, device_mode::DuplexSimplex);
  const auto job = printer.Begin("Year 2026");
  job->Page().Fill({0, 0, 15, 15}, colours::Black);
  job->NewPage();
  EXPECT_FALSE(printer.documents[0]->ended);
  job->EndDocument();
  EXPECT_TRUE(printer.documents[0]->ended);
  EXPECT_EQ(printer.documents[0]->name, "Year 2026");
  ASSERT_EQ(printer.documents[0]->pages.size(), 2U);
  EXPECT_THAT(printer.documents[0]->pages[0]->Log(), ElementsAre("fill 0 0 15 15 #000000"));
}

TEST(RecordingPrinter, FailsAsScripted) {
  RecordingPrinter printer;
  EXPECT_EQ(NumberOf([&] { printer.SelectDevice("absent"); }), errors::DeviceUnavailable);
  printer.failingPage = 2;
  const auto job = printer.Begin("a");
  EXPECT_EQ(NumberOf([&] { job->NewPage(); }), errors::DeviceInputOutput);
  printer.Disappear();
  PrinterSettings settings;
  EXPECT_TRUE(printer.Devices().empty());
  for (const std::function<void()>& call : std::initializer_list<std::function<void()>>{
           [&] { job->EndDocument(); }, [&] { printer.Current(); }, [&] { printer.PageSize(); },
           [&] { printer.ShowDialog(settings); }, [&] { printer.Begin("b"); }}) {
    EXPECT_EQ(NumberOf(call), errors::DeviceUnavailable);
  }
  EXPECT_FALSE(printer.documents[0]->ended);
}

}  // namespace
}  // namespace velkor
