// bench/gap/main.cpp: how long the window does not answer while a server's calendar is fetched for
// the first time: tells the longest gap of its event loop, pointer moves and drags included.
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "control/YearPlan.h"
#include "hosts/yearplan/window/PlannerSession.h"
#include "hosts/yearplan/window/PlannerWindow.h"
#include "platform/headless/MemorySettings.h"
#include "tests/calendar/dav/FakeCalendar.h"
#include "view/YearGrid.h"

namespace {

constexpr int DaysOfYear = 365;
constexpr int LongestMinutes = 30;

/// Appointments all over 2026.
std::string ObjectAt(int index) {
  const QDate day = QDate(2026, 1, 1).addDays(index % DaysOfYear);
  QString bytes = QString::fromStdString(
      velkor::Appointment("uid-" + std::to_string(index), "Appointment " + std::to_string(index)));
  return bytes.replace("20260105", day.toString("yyyyMMdd")).toStdString();
}

/// Measures how late each turn of the event loop comes that is due at once, and what it begins.
class Loop {
 public:
  explicit Loop(QWidget& grid) : grid_(grid) {
    clock_.start();
    QObject::connect(&timer_, &QTimer::timeout, [this] { Turn(); });
    timer_.start(1);
  }

  qint64 TakeLongest() { return std::exchange(longest_, 0); }

 private:
  void Turn() {
    const qint64 gap = clock_.restart();
    longest_ = std::max(longest_, gap);
    // A drag over the days, begun anew now and then.
    const QPointF at(40 + turn_ * 7 % std::max(1, grid_.width() - 80),
                     40 + turn_ * 3 % std::max(1, grid_.height() - 80));
    const int phase = turn_++ % 100;
    const auto type = phase == 0    ? QEvent::MouseButtonPress
                      : phase == 50 ? QEvent::MouseButtonRelease
                                    : QEvent::MouseMove;
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, grid_.mapToGlobal(at), button,
                      phase < 50 ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&grid_, &event);
  }

  QWidget& grid_;
  QElapsedTimer clock_;
  QTimer timer_;
  qint64 longest_ = 0;
  int turn_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const int count = argc > 1 ? std::atoi(argv[1]) : 50'000;
  const QTemporaryDir folder;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  for (const char* name : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"}) {
    qputenv(name, folder.filePath(name).toLocal8Bit());
  }
  QApplication application(argc, argv);

  velkor::FakeCalendar calendar;
  for (int i = 0; i < count; ++i) {
    calendar.Put("/c/" + std::to_string(i) + ".ics", ObjectAt(i));
  }
  velkor::ScriptedServer server(calendar.Script());
  const QString set = folder.filePath("a.yearplan");
  QFile file(set);
  if (!file.open(QIODevice::WriteOnly)) return 1;
  file.write(QByteArray(R"({"yearplan": 1, "calendars": [{"id": "0000000a", "server": ")") +
             QByteArray::fromStdString(server.Url("/c/")) + "\"}]}\n");
  file.close();

  velkor::MemorySettings settings;
  velkor::PlannerWindow window(settings);
  window.resize(1400, 900);
  window.show();
  QElapsedTimer whole;
  whole.start();
  if (!window.OpenCalendar(set.toStdString(), 2026)) return 1;
  const auto shown = [&] {
    return static_cast<int>(window.Session()->Plan().Grid().Events().Count());
  };
  // A press on a bar drags instead of opening the appointment in a dialog.
  window.Session()->Plan().Elements().mnuSelectionAlways.Click();
  Loop loop(*window.findChild<QWidget*>("pic1"));
  qint64 longest = 0;
  while (shown() < count && whole.elapsed() < LongestMinutes * 60'000) {
    QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    longest = std::max(longest, loop.TakeLongest());
  }
  std::printf("%d of %d objects shown after %.1f s and %zu requests; longest gap %lld ms\n",
              shown(), count, static_cast<double>(whole.elapsed()) / 1000, server.Requests().size(),
              static_cast<long long>(longest));
  return shown() == count ? 0 : 1;
}
