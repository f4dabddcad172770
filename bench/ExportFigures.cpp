// bench/ExportFigures.cpp: the XML export over fetching what it takes and writing as many bytes.
#include <QTemporaryDir>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "bench/AllocationMeter.h"
#include "bench/Comparison.h"
#include "bench/Figures.h"
#include "bench/SampleEvents.h"
#include "exchange/XmlExport.h"
#include "platform/Outlook.h"
#include "platform/desktop/DesktopFiles.h"
#include "platform/headless/HeadlessSeams.h"
#include "tools/GivenYears.h"

namespace velkor {
namespace {

constexpr std::size_t Appointments = 100'000;
constexpr int Year = 2026;
constexpr double TimeLimit = 2;
constexpr double PeakLimit = 3;
constexpr int Iterations = 15;

/// Takes every message as read.
class NoMessages : public MessageBoxes {
 public:
  MessageAnswer Show(const Message&) override { return MessageAnswer::Ok; }
};

/// Up to about 300 characters in several lines.
std::string BodyOf(std::size_t index, std::string_view line) {
  std::string body;
  for (std::size_t lines = index % 6; lines > 0; --lines) body.append(line).append("\r\n");
  return body;
}

/// A calendar in memory, and the events of its year; the file goes to a disk.
class ExportFixture {
 public:
  /// @param accentsInOneOf  so many bodies for each that has characters beyond ASCII
  explicit ExportFixture(std::size_t accentsInOneOf) {
    source_.categories = SampleCategories();
    std::vector<CalEvent> events = SampleEvents(Appointments, Spread::Random);
    for (std::size_t i = 0; i < events.size(); ++i) {
      events[i].CatIndex = source_.categories.CatIndexOf(events[i].Categories, ", ", false);
      const bool accents = i / 6 % accentsInOneOf == 0;
      source_.AddItem(events[i].EventID,
                      BodyOf(i, accents ? "Bitte die Unterlagen der Prüfung bis Mittwoch schicken"
                                        : "Please bring the figures of the last quarter with you."),
                      accents ? "Besprechungsraum Zürich" : "Meeting room 12");
    }
    source_.years[Year] = EventCollection(std::move(events));
  }
  ExportFixture(const ExportFixture&) = delete;
  ExportFixture& operator=(const ExportFixture&) = delete;

  void Export() {
    XmlExport(source_, platform_).Write(fileName_, {.firstYear = Year, .lastYear = Year});
  }
  double SecondsOfExport() {
    return SecondsOf([&] { Export(); });
  }
  /// What every export has to do.
  double SecondsOfFetchingAndWriting(std::string_view bytes) {
    return SecondsOf([&] {
      const auto events = source_.EventsOf(Year, {});
      for (const CalEvent& event : *events) {
        const auto item = source_.ItemOf(event.EventID);
        benchmark::DoNotOptimize(item->Body());
        benchmark::DoNotOptimize(item->Location());
      }
      files_.Delete(fileName_);
      const auto file = files_.OpenForWriting(fileName_);
      file->Write(bytes);
      file->Flush();
    });
  }
  std::string Bytes() {
    Export();
    return files_.Read(fileName_).value_or(std::string());
  }

 private:
  QTemporaryDir folder_;
  const std::string fileName_ = folder_.filePath("export.xml").toStdString();
  GivenYears source_;
  HeadlessSeams seams_;
  DesktopFiles files_;
  NoMessages messages_;
  const Platform platform_ = WithFiles();

  Platform WithFiles() {
    const Platform headless = seams_.On(source_.Outlook(), messages_);
    return {headless.cacheUtilities,
            headless.clock,
            headless.dialogs,
            headless.environment,
            files_,
            headless.forms,
            headless.inputs,
            headless.locale,
            headless.messages,
            headless.outlook,
            headless.printer,
            headless.progress,
            headless.registry,
            headless.scrollBars,
            headless.settings,
            headless.shell};
  }
};

RunFigure TimeOfExport(std::size_t accentsInOneOf) {
  return [=](benchmark::State& state) {
    ExportFixture fixture(accentsInOneOf);
    const std::string bytes = fixture.Bytes();
    if (bytes.size() < Appointments * 400) {
      state.SkipWithError("not all appointments were exported");
      return;
    }
    Compare(
        state, TimeLimit, [&] { return fixture.SecondsOfFetchingAndWriting(bytes); },
        [&] { return fixture.SecondsOfExport(); });
  };
}

/// The copy of the year's events that the export reads counts too.
void PeakOfExport(benchmark::State& state) {
  ExportFixture fixture(4);
  std::size_t peak = 0;
  for (auto iteration : state) {
    static_cast<void>(iteration);
    peak = AllocationMeter::PeakOf([&] { fixture.Export(); });
    state.SetIterationTime(0);
  }
  LeaveFigure(state, static_cast<double>(peak) / static_cast<double>(fixture.Bytes().size()),
              PeakLimit);
}

}  // namespace

void RegisterExportFigures() {
  RegisterFigure("export 100,000 appointments over fetching and writing them", Iterations,
                 TimeOfExport(4));
  RegisterFigure("export 100,000 appointments, with accents in all bodies", Iterations,
                 TimeOfExport(1));
  RegisterFigure("peak memory of an export over the document", 1, PeakOfExport);
}

}  // namespace velkor
