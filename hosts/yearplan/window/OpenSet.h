// hosts/yearplan/window/OpenSet.h: the calendars on show as a set, whichever file they were opened
// by.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "calendar/set/CalendarSet.h"

namespace velkor {

/// A set, or one calendar file, which counts as a set of it that no file holds. Functions throw as
/// those of CalendarSet.h do, and where the folder for private data cannot be used.
class OpenSet {
 public:
  /// @param calendar  what was opened, absolute: a set, else a calendar file
  explicit OpenSet(const std::string& calendar);

  const CalendarSet& Set() const { return set_; }
  /// What was opened.
  const std::string& Path() const { return calendar_; }
  /// One calendar file, no set.
  bool IsSingle() const { return set_.path.empty(); }
  /// No file of the user's own holds the set.
  bool IsUnsaved() const;
  /// For a title: the file's name, or those of the calendars.
  std::string Name() const;

  /// Takes in what other windows changed.
  void Reload();
  /// Changes the set in its file. A set without a file of the user's own gets another file with
  /// other calendars.
  /// @return what is to be open now, absolute
  std::string Change(const std::function<void(CalendarSet&)>& edit);
  /// Writes the set into a file of the user's choice.
  void SaveAs(const std::string& path) const;

 private:
  std::string calendar_;
  CalendarSet set_;
};

/// The colour of a calendar's bars and of its square: its own, else one of a few by its place in
/// the set.
Colour ColourOf(const CalendarSet& set, const SetSource& source);

/// For people: the name that it was given, else the one that it has itself, else that of its place.
std::string NameOf(const SetSource& source, const std::string& ownName = {});

}  // namespace velkor
