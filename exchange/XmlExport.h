// exchange/XmlExport.h: categories and appointments into an XML file.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"

namespace velkor {

/// Told when a file was saved.
inline constexpr std::string_view ExportSaved = "Velkor Data saved";

class CategoryFilter;
class EventCollection;
class XmlDocument;
class YearSource;
struct CalEvent;

/// What an export takes.
struct ExportChoice {
  /// View years from 100 to 9999, both included, when appointments are taken; those of which there
  /// is nothing give none.
  int firstYear = 0;
  int lastYear = 0;
  bool categoriesOnly = false;
  /// Of the namespace's address.
  std::string host = "velkor.example";
};

enum class ExportOutcome {
  Saved,
  /// The file could not be opened or written, which was told; an older file of that name stays.
  NotSaved,
  /// The user ended it while appointments were read; nothing was written.
  Cancelled,
};

/// Every appointment of the years that has a category on show and passes the filter is written, in
/// the order of each year's events, one that stands in two years twice.
class XmlExport {
 public:
  /// All of them outlive this.
  XmlExport(YearSource& source, const Platform& platform) : source_(source), platform_(platform) {}

  /// Asks what to take and where to, then writes. Each of the dialogs can be cancelled, without a
  /// message. A failure is told; it throws no Error.
  void Run();

  /// Takes the appointments, then replaces the file and tells of it. What is written stands beside
  /// it until it is whole: whatever stops this, the older file or the new one is there.
  /// Throws Error when an appointment or a year cannot be read, and when the older file cannot be
  /// replaced (PermissionDenied).
  /// @param fileName  UTF-8, with its folder
  ExportOutcome Write(const std::string& fileName, const ExportChoice& choice);

 private:
  /// @return false when the user ended it
  bool AddYears(const ExportChoice& choice, XmlDocument& document);
  /// Tells `step` now and then how much of the year is done; a false answer ends it.
  /// @return false when it did
  bool AddYear(const EventCollection& events, const CategoryFilter& filter,
               const std::function<bool(int doneOfYear)>& step, XmlDocument& document);
  void AddAppointment(const CalEvent& event, XmlDocument& document);
  /// @return false when the file could not be opened or written, which was told
  bool Save(const std::string& fileName, const std::vector<std::string>& pieces);

  YearSource& source_;
  const Platform platform_;
};

}  // namespace velkor
