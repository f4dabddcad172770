// tools/yearplan-pictures.cpp: takes the documentation's pictures of the window and of the print
// preview, and writes a script that has the try-out form draw the same year on Windows.
//   yearplan-pictures CALENDAR YEAR FOLDER
//   yearplan-pictures BITMAP PICTURE          writes a bitmap of the form as another kind of file.
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QThread>
#include <QTimer>
#include <cmath>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "categories/ColourList.h"
#include "control/YearPlan.h"
#include "hosts/yearplan/window/PlannerSession.h"
#include "hosts/yearplan/window/PlannerWindow.h"
#include "model/ColourRecord.h"
#include "platform/headless/MemorySettings.h"
#include "view/YearGrid.h"

namespace {

constexpr QSize WindowSize{1280, 800};
constexpr QSize PreviewSize{1100, 800};

void Pause(int milliseconds) {
  QElapsedTimer time;
  for (time.start(); time.elapsed() < milliseconds; QThread::msleep(10)) {
    QCoreApplication::processEvents();
  }
}

bool TakePicture(QWidget& widget, const QString& path) {
  Pause(500);
  if (widget.grab().save(path)) return true;
  std::cerr << "Cannot write " << path.toStdString() << '\n';
  return false;
}

/// The preview's window, which is modal, is closed again.
bool TakePreview(velkor::YearPlan& plan, const QString& path) {
  bool taken = false;
  QTimer::singleShot(500, qApp, [&] {
    auto* const preview = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!preview) return;
    preview->resize(PreviewSize);
    taken = TakePicture(*preview, path);
    preview->reject();
  });
  plan.Elements().Toolbar1.ClickButton(velkor::toolbar_keys::Print);
  return taken;
}

QString Quoted(const std::string& text) {
  return '"' + QString::fromStdString(text).replace('"', "\"\"") + '"';
}

QString DateOf(velkor::Date date) {
  const velkor::DateFields at = date.Fields();
  return QString("DateSerial(%1, %2, %3) + TimeSerial(%4, %5, %6)")
      .arg(at.year)
      .arg(at.month)
      .arg(at.day)
      .arg(at.hour)
      .arg(at.minute)
      .arg(at.second);
}

/// The colours of the year's categories as the calendar program keeps them.
QString ColourScript(const velkor::CategoryTable& categories) {
  namespace record = velkor::colour_record;
  std::vector<velkor::Category> all;
  for (int i = 1; i <= categories.Count(); ++i) all.push_back(categories.At(i));
  const QString body = Quoted(velkor::ColourListText(all)).replace("\r\n", "\" & vbCrLf & \"");
  const QString moment = DateOf(record::HiddenInstant());
  return QString("Add %1, %2, %2, \"\", %3\n")
      .arg(Quoted(record::SubjectOf("Default")), moment, body);
}

/// A weekly series becomes one, as the calendar program for tests knows no others.
QString AppointmentScript(const std::vector<const velkor::CalEvent*>& occurrences) {
  bool weekly = occurrences.size() > 1;
  for (std::size_t i = 1; i < occurrences.size(); ++i) {
    const double days = occurrences[i]->StartDate.Days() - occurrences[i - 1]->StartDate.Days();
    weekly = weekly && std::abs(days - 7) < 0.1;
  }
  QString lines;
  for (const velkor::CalEvent* event : occurrences) {
    const QString what = Quoted(event->Subject) + ", " + DateOf(event->StartDate) + ", " +
                         DateOf(event->EndDate) + ", ";
    const QString categories = Quoted(event->Categories);
    if (weekly) {
      return QString("Testing.AddRecurring %1%2, %3\n")
          .arg(what)
          .arg(occurrences.size())
          .arg(categories);
    }
    lines += "Add " + what + categories + ", \"\"\n";
  }
  return lines;
}

/// Argument 0 of the script is the bitmap.
bool WriteScript(const velkor::YearGrid& grid, const QString& path) {
  std::map<std::string, std::vector<const velkor::CalEvent*>> series;
  for (const velkor::CalEvent& event : grid.Events()) series[event.EventID].push_back(&event);
  QString script =
      "Dim Items, Testing\n"
      "Set Items = CreateObject(\"Outlook.Application\").GetNamespace(\"MAPI\")."
      "GetDefaultFolder(9).Items\n"
      "Set Testing = CreateObject(\"Outlook.Application\").Testing\n"
      "Sub Add(Subject, First, Last, Categories, Body)\n"
      "  With Items.Add\n"
      "    .Subject = Subject\n    .Start = First\n    .End = Last\n"
      "    .Categories = Categories\n    .Body = Body\n    .Save\n"
      "  End With\n"
      "End Sub\n";
  script += ColourScript(grid.Categories());
  for (const auto& [id, occurrences] : series) script += AppointmentScript(occurrences);
  script +=
      "Form.Place\nForm.Resize 1150, 800\n"
      "Form.YearPlan.AllEvents = True\nForm.YearPlan.DisplaySubject = True\n"
      "Form.Check Form.WaitFor(\"Downloading\", 15000), \"no refresh\"\n"
      "Form.Check Form.WaitFor(\"\", 15000), \"the refresh does not end\"\n"
      "Form.Wait 500\nForm.Draw Form.Argument(0)\n";
  QFile file(path);
  const QByteArray bytes = script.toUtf8();
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

int Run(const std::string& calendar, int year, const QString& folder) {
  velkor::MemorySettings settings;
  velkor::PlannerWindow window(settings);
  window.resize(WindowSize);
  window.show();
  if (!window.OpenCalendar(calendar, year)) return 1;
  velkor::YearPlan& plan = window.Session()->Plan();
  constexpr int Patience = 300;
  for (int i = 0; i < Patience && plan.Grid().Events().Count() == 0; ++i) Pause(100);
  const bool done = TakePicture(window, folder + "/window.png") &&
                    TakePreview(plan, folder + "/preview.png") &&
                    WriteScript(plan.Grid(), folder + "/windows.vbs");
  return done ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const QStringList words = QCoreApplication::arguments();
  if (words.size() == 4 && words[2].toInt() > 0) {
    return Run(words[1].toStdString(), words[2].toInt(), words[3]);
  }
  if (words.size() == 3) return QImage(words[1]).save(words[2]) ? 0 : 1;
  std::cerr << "yearplan-pictures CALENDAR YEAR FOLDER\nyearplan-pictures BITMAP PICTURE\n";
  return 2;
}
