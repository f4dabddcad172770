// hosts/yearplan/main.cpp: the yearplan program.
#include <QApplication>
#include <QLocale>
#include <QTimer>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "hosts/yearplan/GivenCalendars.h"
#include "hosts/yearplan/commands/CommandLine.h"
#include "hosts/yearplan/commands/Commands.h"
#include "hosts/yearplan/window/PlannerApplication.h"
#include "hosts/yearplan/window/PlannerWindow.h"
#include "platform/desktop/DesktopSettings.h"
#include "values/Error.h"

namespace {

using velkor::Command;
using velkor::CommandLine;

constexpr int Done = 0;
constexpr int Failed = 1;
constexpr int WrongUsage = 2;

/// The toolkit's remarks about its surroundings are nothing that a user of a terminal can mend.
void KeepErrors(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtCriticalMsg || type == QtFatalMsg) std::cerr << text.toStdString() << '\n';
}

/// Pictures need fonts but no screen. A window takes the display that answers first; a user's own
/// choice of platform stands.
void ChoosePlatform(bool window) {
  if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) return;
  QByteArray platforms = "offscreen";
  if (window && !qEnvironmentVariableIsEmpty("DISPLAY")) platforms.prepend("xcb;");
  if (window && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) platforms.prepend("wayland;");
  qputenv("QT_QPA_PLATFORM", platforms);
}

bool HasDisplay() {
  const QString platform = QGuiApplication::platformName();
  return platform != "offscreen" && platform != "minimal";
}

int RunWindow(const CommandLine& line) {
  if (!line.pictureOption.empty()) {
    throw velkor::UsageError("--" + line.pictureOption +
                             " is for pictures (yearplan render ...); a window has its settings");
  }
  velkor::DesktopSettings settings;
  velkor::PlannerWindow window(settings);
  window.show();
  const std::string calendar = line.calendar.empty() ? window.LastCalendar() : line.calendar;
  // Whatever goes wrong is told in front of the window.
  QTimer::singleShot(0, &window, [&] {
    if (calendar.empty()) {
      window.AskForCalendar();
    } else {
      window.OpenCalendar(calendar, line.year);
    }
  });
  return QApplication::exec();
}

int Run(CommandLine line) {
  if (line.calendar.empty() && !line.calendars.empty()) {
    line.calendar = velkor::CalendarOf(line.calendars, line.account);
  }
  if (line.command == Command::Open && HasDisplay()) return RunWindow(line);
  if (line.command == Command::Open && line.calendar.empty()) {
    throw velkor::UsageError("A calendar file is missing, and there is no display to ask on");
  }
  const int code = velkor::RunCommand(line, std::cout, std::cerr);
  std::cout.flush();
  if (std::cout) return code;
  std::cerr << "yearplan: the output could not be written\n";
  return Failed;
}

}  // namespace

int main(int argc, char** argv) {
  qInstallMessageHandler(KeepErrors);
  try {
    const CommandLine line =
        velkor::ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    const bool window = line.command == Command::Open;
    ChoosePlatform(window);
    std::unique_ptr<QGuiApplication> application;
    if (window) {
      application = std::make_unique<velkor::PlannerApplication>(argc, argv);
      // Dates look alike everywhere: those of the control are in English where no locale is set.
      if (QLocale().language() == QLocale::C) QLocale::setDefault(QLocale::English);
    } else {
      application = std::make_unique<QGuiApplication>(argc, argv);
    }
    return Run(line);
  } catch (const velkor::UsageError& error) {
    std::cerr << "yearplan: " << error.what() << " (see yearplan --help).\n";
    return WrongUsage;
  } catch (const velkor::Error& error) {
    std::cerr << "yearplan: " << error.Description() << '\n';
  } catch (const std::exception& error) {
    std::cerr << "yearplan: " << error.what() << '\n';
  }
  return Failed;
}
