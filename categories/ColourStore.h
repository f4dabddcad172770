// categories/ColourStore.h: keeps a planner's category colours in a hidden appointment.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "categories/ColourList.h"
#include "model/CategoryTable.h"
#include "values/Error.h"

namespace velkor {

class LocaleApi;
class MessageBoxes;
class OutlookFolder;

/// What fetching did to the stored items.
enum class ColourRecordChange { Created, Migrated, Deleted };

struct FetchedColours {
  /// Those of the record, or the default ones where there was none. After a fault what was read
  /// before it: perhaps nothing, perhaps all.
  std::vector<Category> categories;
  /// What went wrong; the user was told.
  std::optional<Error> fault;
  /// In the order in which it was done.
  std::vector<ColourRecordChange> done;
};

/// The colour records of the calendar folder on show, so that everyone who sees the calendar sees
/// the same colours. Each planner title has a record of its own. Errors of the calendar end in a
/// message; nothing is tried twice. The last of two planners that save wins.
class ColourStore {
 public:
  /// Opens the folder on show; may throw Error.
  using OpenFolder = std::function<std::unique_ptr<OutlookFolder>()>;

  /// Locale and messages outlive this.
  ColourStore(OpenFolder openFolder, LocaleApi& locale, MessageBoxes& messages)
      : openFolder_(std::move(openFolder)), locale_(locale), messages_(messages) {}

  /// Reads the record of a planner title. One in the older form becomes the title's own; one
  /// without a list to speak of is deleted; where there is none then, one with the default
  /// categories is made. A list with a line that cannot be read is left as it is.
  FetchedColours Fetch(std::string_view titleName);

  /// The calendar while our other programs cannot save into it, and what it listed before.
  struct HeldCalendar {
    /// Null where a calendar cannot be held; nothing was read then.
    std::shared_ptr<const void> hold;
    /// None where the title has no record yet.
    std::optional<ListedCategories> record;
  };
  /// For a change of what others may be changing too. Throws what the calendar throws.
  HeldCalendar Hold(std::string_view titleName);

  /// The folder on show; throws what opening it throws.
  std::unique_ptr<OutlookFolder> Folder() { return openFolder_(); }

  /// Writes the record of a planner title, made when it is missing.
  /// @param categories  their names hold no "|" and no line break
  /// @return whether it was saved
  bool Save(std::string_view titleName, const std::vector<Category>& categories);

  /// The category lines of the records of all titles, record after record, from element 1 on;
  /// element 0 is empty. Empty when there are none; after an error, which was told, what was read
  /// before it.
  std::vector<std::string> CollectAllLists();

 private:
  void FetchInto(FetchedColours& colours, std::string_view titleName);

  OpenFolder openFolder_;
  LocaleApi& locale_;
  MessageBoxes& messages_;
};

}  // namespace velkor
