// tests/hosts/WindowCase.h: a window on the screen that is no screen, for tests to use.
#pragma once

#include <gmock/gmock.h>

#include <QTest>
#include <QWidget>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "control/YearPlan.h"
#include "hosts/yearplan/window/PlannerSession.h"
#include "hosts/yearplan/window/PlannerWindow.h"
#include "platform/headless/MemorySettings.h"
#include "tests/platform/desktop/CalendarText.h"
#include "tests/platform/desktop/FolderCase.h"
#include "view/YearGrid.h"

namespace velkor {

/// What the product keeps for its user lies elsewhere meanwhile.
class DataFolder {
 public:
  explicit DataFolder(const QString& folder) : before_(qgetenv("XDG_DATA_HOME")) {
    qputenv("XDG_DATA_HOME", folder.toUtf8());
  }
  ~DataFolder() {
    before_.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before_);
  }
  DataFolder(const DataFolder&) = delete;
  DataFolder& operator=(const DataFolder&) = delete;

 private:
  const QByteArray before_;
};

/// One window over calendars in a folder of the test's own.
class WindowCase : public FolderCase {
 protected:
  static constexpr int Year = 2026;
  /// Pairs of a day, as in 20260504, and a subject.
  using Days = std::vector<std::pair<const char*, const char*>>;

  static QByteArray CalendarOf(const Days& days) {
    QByteArray events;
    for (const auto& [day, subject] : days) {
      events += Event(QByteArray::number(events.size()),
                      QByteArray("DTSTART;VALUE=DATE:") + day +
                          "\r\nCATEGORIES:Leave\r\nSUMMARY:" + subject + "\r\n");
    }
    return velkor::CalendarOf(events);
  }
  /// As a program saves it that never shows half of a file.
  void Replace(const QByteArray& bytes) const {
    Write("new.ics", bytes);
    ASSERT_EQ(std::rename(Path("new.ics").c_str(), Path("team.ics").c_str()), 0);
  }
  void Open(velkor::PlannerWindow& window, const char* name = "team.ics") {
    window.resize(1200, 700);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    ASSERT_TRUE(window.OpenCalendar(Path(name), Year));
  }
  /// Opens a calendar of these days in the window; all of them are shown.
  void OpenWith(const Days& days) {
    Write("team.ics", CalendarOf(days));
    Open(window_);
    ASSERT_TRUE(Shows(days.size()));
  }

  static YearPlan& Plan(velkor::PlannerWindow& window) { return window.Session()->Plan(); }
  YearPlan& Plan() { return Plan(window_); }
  QWidget& Grid() { return *window_.findChild<QWidget*>("pic1"); }
  static bool Shows(velkor::PlannerWindow& window, std::size_t events) {
    return QTest::qWaitFor([&] { return Plan(window).Grid().Events().Count() == events; }, 15000);
  }
  bool Shows(std::size_t events) { return Shows(window_, events); }

  /// Clicks the bar of an event, while nothing is scrolled.
  void ClickBarOf(const char* subject, Qt::MouseButton button = Qt::LeftButton) {
    const QPoint bar = BarOf(subject);
    QTest::mouseMove(&Grid(), bar);
    QTest::mouseClick(&Grid(), button, {}, bar);
  }
  QPoint BarOf(const char* subject) {
    const YearGrid& grid = Plan().Grid();
    for (int y = 0; y < Grid().height(); ++y) {
      for (int x = 0; x < Grid().width(); x += 4) {
        const auto hit = grid.HitTestAt({x * TwipsPerPixel, y * TwipsPerPixel});
        const auto event = hit ? grid.EventAt(*hit) : std::nullopt;
        if (event && grid.Events()[*event].Subject == subject) return QPoint(x + 4, y + 2);
      }
    }
    ADD_FAILURE() << "No bar of " << subject;
    return {};
  }

  const DataFolder data_{File("data")};
  MemorySettings settings_;
  velkor::PlannerWindow window_{settings_};
};

}  // namespace velkor
