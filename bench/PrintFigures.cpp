// bench/PrintFigures.cpp: printing a full year to PDF over the bare calls that its pages make.
#include <QFile>
#include <QTemporaryDir>
#include <string>
#include <vector>

#include "bench/CallRecorder.h"
#include "bench/Comparison.h"
#include "bench/Figures.h"
#include "bench/SampleEvents.h"
#include "platform/desktop/PdfPrinter.h"
#include "platform/headless/FixedLocale.h"
#include "print/PrintDocument.h"

namespace velkor {
namespace {

constexpr std::size_t Appointments = 2000;
constexpr double PrintLimit = 1.5;

class PrintFixture {
 public:
  explicit PrintFixture(bool subjects) {
    options_.VisibleText = subjects;
    LayOut();
    const int count = static_cast<int>(document_.Plan().pages.size());
    for (int page = 1; page <= count; ++page) {
      document_.DrawPage(pages_.emplace_back(printer_.MeasuringSurface()), page);
    }
  }

  void LayOut() { document_.LayOut(options_, printer_.PageSize(), printer_.MeasuringSurface()); }
  void PrintYear() {
    LayOut();
    document_.Print(*printer_.Begin(JobName));
  }
  void PrintBare() {
    const auto job = printer_.Begin(JobName);
    for (std::size_t page = 0; page < pages_.size(); ++page) {
      if (page > 0) job->NewPage();
      pages_[page].Replay(job->Page());
    }
    job->EndDocument();
  }

  std::size_t CallCount() const {
    std::size_t count = 0;
    for (const CallRecorder& page : pages_) count += page.Count();
    return count;
  }
  qint64 FileSize() const { return QFile(QString::fromStdString(path_)).size(); }

 private:
  static constexpr const char* JobName = "Year 2026";

  QTemporaryDir folder_;
  const std::string path_ = folder_.filePath("year.pdf").toStdString();
  const YearGrid grid_ = FilledGrid(Appointments, Spread::Random);
  FixedLocale locale_;
  PdfPrinter printer_{path_};
  PrintDocument document_{grid_, Locale::LoadCalendarNames(locale_, locale_.locale)};
  PrintOptionSet options_;
  std::vector<CallRecorder> pages_;
};

RunFigure PrintFigure(bool subjects) {
  return [=](benchmark::State& state) {
    PrintFixture fixture(subjects);
    fixture.PrintYear();
    const qint64 size = fixture.FileSize();
    fixture.PrintBare();
    if (fixture.CallCount() < Appointments || fixture.FileSize() != size) {
      state.SkipWithError("the bare calls are not the pages");
      return;
    }
    Compare(
        state, PrintLimit, [&] { return SecondsOf([&] { fixture.PrintBare(); }); },
        [&] { return SecondsOf([&] { fixture.PrintYear(); }); });
  };
}

}  // namespace

void RegisterPrintFigures() {
  constexpr int Iterations = 15;
  const std::string over = " over the bare calls";
  RegisterFigure("print 2,000 appointments to PDF" + over, Iterations, PrintFigure(false));
  RegisterFigure("print 2,000 appointments with subjects to PDF" + over, Iterations,
                 PrintFigure(true));
}

}  // namespace velkor
