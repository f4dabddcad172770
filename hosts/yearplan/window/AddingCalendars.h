// hosts/yearplan/window/AddingCalendars.h: the dialogs that add addresses and server calendars, and
// the network behind them.
#pragma once

#include <string>
#include <vector>

#include "calendar/set/CalendarSet.h"

class QWidget;

namespace velkor {

class Passwords;
class Settings;

/// What the dialogs find around them.
struct AddingSurroundings {
  QWidget* window = nullptr;
  Settings& settings;
  Passwords& passwords;
  std::string dataFolder;
  /// The program vkrSync; empty for the one beside this program.
  std::string program = {};
};

/// Each shows its dialog until it is closed; the network works beside it. Empty after Cancel.
std::vector<SetSource> AskForAddress(const AddingSurroundings& around);
std::vector<SetSource> AskForServerCalendars(const AddingSurroundings& around);

}  // namespace velkor
