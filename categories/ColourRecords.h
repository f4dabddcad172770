// categories/ColourRecords.h: finds the hidden appointments that hold category colours.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Outlook.h"

namespace velkor {

class LocaleApi;

/// A record that was found, with its list; `item` is null when there is none.
struct FoundRecord {
  std::unique_ptr<OutlookItem> item;
  /// In the older form, which names no planner title.
  bool legacy = false;
  /// The header first.
  std::vector<std::string> lines;

  /// False for a record without a list to speak of: its own with not one category, the older form
  /// with fewer than two.
  bool IsWorthKeeping() const;
};

/// The colour records of one calendar folder; reads them and changes nothing. Members throw what
/// the calendar throws.
class ColourRecords {
 public:
  /// Both outlive this.
  ColourRecords(OutlookFolder& folder, LocaleApi& locale) : folder_(folder), locale_(locale) {}

  /// The item with a subject; null when there is none.
  std::unique_ptr<OutlookItem> FindItem(std::string_view subject);

  /// The record of a planner title, else one in the older form.
  FoundRecord Find(std::string_view titleName);

  /// The colour list of a planner title, split into lines with the header first; none when Find
  /// gives no record that is worth keeping.
  std::optional<std::vector<std::string>> FindList(std::string_view titleName);

  /// Appends the category lines of the records of all titles, a line break before each.
  void AppendAllLines(std::string& text);

 private:
  OutlookFolder& folder_;
  LocaleApi& locale_;
};

}  // namespace velkor
