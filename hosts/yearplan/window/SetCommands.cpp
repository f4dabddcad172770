// hosts/yearplan/window/SetCommands.cpp: changes of a set, and the files that people choose for it.
#include "hosts/yearplan/window/SetCommands.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "platform/MessageBoxes.h"
#include "platform/desktop/DesktopSystem.h"
#include "platform/desktop/QtText.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr const char* SetFilter = "Sets of calendars (*.yearplan)";

}  // namespace

void SetCommands::Guarded(const std::string& what, const std::function<void()>& steps) {
  try {
    steps();
  } catch (const Error& error) {
    around_.messages.Show({.text = what + "\n\n" + error.Description(),
                           .title = {},
                           .icon = MessageIcon::Exclamation});
  }
}

void SetCommands::Follow(const std::string& calendar) {
  open_.emplace(calendar);
}

void SetCommands::Reload() {
  try {
    if (open_) open_->Reload();
  } catch (const Error&) {
    // The calendar itself tells of it.
  }
}

void SetCommands::NewSet() {
  Guarded("The new set could not be made.",
          [&] { around_.open(SetOf({}, PrivateDataFolder()).path); });
}

void SetCommands::AskForFiles() {
  const QStringList paths =
      QFileDialog::getOpenFileNames(&around_.window, QObject::tr("Add Calendar Files"), {},
                                    QObject::tr("Calendars (*.ics);;All files (*)"));
  std::vector<SetSource> sources;
  for (const QString& path : paths) {
    sources.push_back({.kind = SourceKind::File, .location = path.toStdString()});
  }
  Add(sources);
}

void SetCommands::Add(const std::vector<SetSource>& sources) {
  if (sources.empty()) return;
  if (open_) {
    Change([&](CalendarSet& set) {
      for (const SetSource& source : sources) AddSource(set, source);
    });
    return;
  }
  Guarded("The calendars could not be added.",
          [&] { around_.open(SetOf(sources, PrivateDataFolder()).path); });
}

void SetCommands::Drop(const std::string& set, const std::vector<SetSource>& sources) {
  const bool single = !open_ || open_->IsSingle();
  if (!set.empty()) {
    around_.open(set);
  } else if (single && sources.size() == 1 && sources.front().kind == SourceKind::File) {
    around_.open(sources.front().location);
  } else if (single) {
    Guarded("The calendars could not be opened.",
            [&] { around_.open(SetOf(sources, PrivateDataFolder()).path); });
  } else {
    Add(sources);
  }
}

void SetCommands::AskForName() {
  if (!open_) return;
  QString path = QFileDialog::getSaveFileName(&around_.window, QObject::tr("Save Set As"), {},
                                              QObject::tr(SetFilter));
  if (path.isEmpty()) return;
  if (!IsSetPath(path.toStdString())) path += ".yearplan";
  Guarded("The set could not be saved.", [&] {
    open_->SaveAs(QFileInfo(path).absoluteFilePath().toStdString());
    around_.become(path.toStdString());
  });
}

void SetCommands::Change(const std::function<void(CalendarSet&)>& edit) {
  if (!open_) return;
  Guarded("The set could not be changed.", [&] {
    const std::string before = open_->Path();
    const std::string path = open_->Change(edit);
    if (path != before) return around_.become(path);
    open_->Reload();
    around_.onChange();
  });
}

void SetCommands::ChangeSource(const std::string& id, const std::function<void(SetSource&)>& edit) {
  Change([&](CalendarSet& set) {
    // The only calendar of no set has no identifier yet.
    SetSource* const source = id.empty() ? &set.sources.front() : FindSource(set, id);
    if (source) edit(*source);
  });
}

void SetCommands::ColourByCalendar(bool on) {
  Change([on](CalendarSet& set) {
    set.barColours = on ? BarColours::Calendar : BarColours::Category;
  });
}

PaneCommands SetCommands::ForPane() {
  PaneCommands commands;
  commands.show = [this](const std::string& id, bool shown) {
    ChangeSource(id, [shown](SetSource& source) { source.shown = shown; });
  };
  commands.rename = [this](const std::string& id, const std::string& name) {
    ChangeSource(id, [&](SetSource& source) { source.name = name; });
  };
  commands.recolour = [this](const std::string& id, Colour colour) {
    ChangeSource(id, [colour](SetSource& source) { source.colour = colour; });
  };
  commands.makeDefault = [this](const std::string& id) {
    Change([&](CalendarSet& set) { set.defaultSource = id.empty() ? set.sources.front().id : id; });
  };
  commands.markDaysOff = [this](const std::string& id, bool daysOff) {
    ChangeSource(id, [daysOff](SetSource& source) { source.background = daysOff; });
  };
  commands.remove = [this](const std::string& id) {
    Change([&](CalendarSet& set) {
      if (id.empty()) return set.sources.clear();
      std::erase_if(set.sources, [&](const SetSource& source) { return source.id == id; });
    });
  };
  return commands;
}

}  // namespace velkor
