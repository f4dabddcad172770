// hosts/yearplan/window/SetCommands.h: what people do to the calendars on show, by menu, pane and
// drop.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hosts/yearplan/window/CalendarPane.h"
#include "hosts/yearplan/window/OpenSet.h"

class QWidget;

namespace velkor {

class MessageBoxes;

/// What the commands find around them; all of it outlives them.
struct SetSurroundings {
  QWidget& window;
  MessageBoxes& messages;
  /// Shows another calendar or set instead.
  std::function<void(const std::string& path)> open;
  /// The same for what is on show by another path: the year and the properties stay.
  std::function<void(const std::string& path)> become;
  /// The set on show is another, in the same file.
  std::function<void()> onChange;
};

/// Failures are told in message boxes.
class SetCommands {
 public:
  explicit SetCommands(SetSurroundings surroundings) : around_(std::move(surroundings)) {}

  /// Takes a calendar that is on show from now on. Throws as LoadSet does.
  void Follow(const std::string& calendar);
  /// Takes in what other windows did to the set; one that cannot be read stays as it was.
  void Reload();
  /// None while no calendar is on show.
  const OpenSet* Open() const { return open_ ? &*open_ : nullptr; }

  void NewSet();
  void AskForFiles();
  /// Adds to the set on show; without one, or with one calendar on show by itself, makes a set.
  void Add(const std::vector<SetSource>& sources);
  /// Opens a set or a single calendar, adds all else.
  void Drop(const std::string& set, const std::vector<SetSource>& sources);
  void AskForName();
  void Change(const std::function<void(CalendarSet&)>& edit);
  /// Changes one calendar of the set.
  void ChangeSource(const std::string& id, const std::function<void(SetSource&)>& edit);

  void ColourByCalendar(bool on);
  /// Those of the pane that are about the set alone.
  PaneCommands ForPane();

 private:
  void Guarded(const std::string& what, const std::function<void()>& steps);

  SetSurroundings around_;
  std::optional<OpenSet> open_;
};

}  // namespace velkor
