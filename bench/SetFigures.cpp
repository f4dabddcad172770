// bench/SetFigures.cpp: thirty calendars of a hundred events as one, over one calendar of three
// thousand.
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <string>

#include "bench/Comparison.h"
#include "bench/Figures.h"
#include "bench/SampleEvents.h"
#include "calendar/set/SetCalendar.h"
#include "model/CacheFile.h"
#include "platform/desktop/DesktopFiles.h"
#include "platform/desktop/QtSurface.h"
#include "platform/headless/FixedLocale.h"
#include "platform/posix/WorkerProcess.h"
#include "view/GridPainter.h"

namespace velkor {
namespace {

constexpr int Calendars = 30;
constexpr int EventsEach = 100;
constexpr double Limit = 1.3;
constexpr int Rounds = 21;

/// Processor time of a call and of the workers that it waits for.
double SecondsWithWorkers(const std::function<void()>& work) {
  const auto seconds = [] {
    double all = 0;
    for (const int who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
      rusage usage{};
      getrusage(who, &usage);
      for (const timeval& time : {usage.ru_utime, usage.ru_stime}) {
        all += static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
      }
    }
    return all;
  };
  const double begin = seconds();
  work();
  return seconds() - begin;
}

std::string EventText(const CalEvent& event) {
  const auto date = [](Date day) {
    const DateFields fields = day.Fields();
    return std::to_string((fields.year * 100 + fields.month) * 100 + fields.day);
  };
  return "BEGIN:VEVENT\r\nUID:" + event.EventID +
         "\r\nDTSTART;VALUE=DATE:" + date(event.StartDate) +
         "\r\nDTEND;VALUE=DATE:" + date(event.EndDate.AddDays(1)) + "\r\nSUMMARY:" + event.Subject +
         "\r\nEND:VEVENT\r\n";
}

void Write(const std::string& path, const std::string& events) {
  QFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::WriteOnly)) return;
  const std::string text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + events + "END:VCALENDAR\r\n";
  file.write(text.data(), static_cast<qint64>(text.size()));
}

/// The same events in one file and in many, and the caches of both.
class Sample {
 public:
  Sample() {
    qputenv("XDG_CACHE_HOME", (folder_.path() + "/cache").toUtf8());
    QDir(folder_.path()).mkpath("cache");
    const std::vector<CalEvent> events = SampleEvents(Calendars * EventsEach, Spread::Random);
    CalendarSet set;
    set.path = many_;
    std::string all;
    for (int i = 0; i < Calendars; ++i) {
      std::string own;
      for (int j = 0; j < EventsEach; ++j) own += EventText(events.at(i + j * Calendars));
      const std::string path = Path("c" + std::to_string(i) + ".ics");
      Write(path, own);
      all += own;
      AddSource(set, {.location = path});
    }
    Write(one_, all);
    SaveSet(set);
  }
  Sample(const Sample&) = delete;
  Sample& operator=(const Sample&) = delete;

  const std::string& One() const { return one_; }
  const std::string& Many() const { return many_; }

  static double SecondsToStart(const std::string& calendar) {
    return SecondsWithWorkers([&] {
      const SetCalendar opened(calendar, {Date::FromYmd(2026, 1, 1), Date::FromYmd(2026, 12, 31)});
      benchmark::DoNotOptimize(&opened);
    });
  }
  double SecondsToRefresh(const std::string& calendar) const {
    return SecondsWithWorkers([&] {
      WorkerProcess worker({"year", "2026", "1", CacheOf(calendar), CacheOf(calendar) + ".work",
                            FolderIdOf(calendar), calendar},
                           {});
      worker.Wait();
    });
  }
  YearGrid GridOf(const std::string& calendar) const {
    YearGrid grid = SampleGrid(true);
    DesktopFiles files;
    FixedLocale locale;
    EventCollection events;
    CacheFile(files, locale).Load(CacheOf(calendar), grid.Fields(), events);
    grid.SetEvents(std::move(events));
    grid.Resize({1900 * TwipsPerPixel, 1000 * TwipsPerPixel}, 0, {});
    return grid;
  }

 private:
  std::string Path(const std::string& name) const {
    return folder_.filePath(QString::fromStdString(name)).toStdString();
  }
  static std::string CacheOf(const std::string& calendar) { return calendar + ".tmp"; }

  QTemporaryDir folder_;
  std::string one_ = Path("one.ics");
  std::string many_ = Path("many.yearplan");
};

double SecondsToDraw(const YearGrid& grid, Surface& surface, const Rect& size) {
  return SecondsOf([&] {
    GridPainter(surface, grid, Font{}, size).Draw({Date::FromYmd(2026, 7, 1), {}, {}});
  });
}

void Redraw(const Sample& sample, benchmark::State& state) {
  const YearGrid one = sample.GridOf(sample.One());
  const YearGrid many = sample.GridOf(sample.Many());
  const auto expected = static_cast<std::size_t>(Calendars) * EventsEach;
  if (one.Events().Count() != expected || many.Events().Count() != expected) {
    state.SkipWithError("a refresh has lost events");
    return;
  }
  const Rect size{0, 0, 1900 * TwipsPerPixel, 1000 * TwipsPerPixel};
  QImage image(1900, 1000, QImage::Format_RGB32);
  QPainter painter(&image);
  QtSurface surface(painter);
  Compare(
      state, Limit, [&] { return SecondsToDraw(one, surface, size); },
      [&] { return SecondsToDraw(many, surface, size); });
}

}  // namespace

void RegisterSetFigures() {
  const auto sample = std::make_shared<Sample>();
  const std::string over = " of 30 calendars of 100 events over one of 3,000";
  RegisterFigure("start" + over, Rounds, [sample](benchmark::State& state) {
    Compare(
        state, Limit, [&] { return Sample::SecondsToStart(sample->One()); },
        [&] { return Sample::SecondsToStart(sample->Many()); });
  });
  RegisterFigure("refresh" + over, Rounds, [sample](benchmark::State& state) {
    Compare(
        state, Limit, [&] { return sample->SecondsToRefresh(sample->One()); },
        [&] { return sample->SecondsToRefresh(sample->Many()); });
  });
  RegisterFigure("redraw" + over, Rounds,
                 [sample](benchmark::State& state) { Redraw(*sample, state); });
}

}  // namespace velkor
