// categories/AppointmentRename.cpp: finds the appointments that carry a category, and saves them.
#include "categories/AppointmentRename.h"

#include <optional>
#include <vector>

#include "model/AppointmentOf.h"
#include "platform/Outlook.h"
#include "platform/Progress.h"
#include "values/Error.h"
#include "values/NameList.h"
#include "values/Text.h"

namespace velkor {
namespace {

/// Identifiers of the appointments that carry a category: a calendar program lends out few items at
/// a time, and may give them another order when one is saved. None when the user stopped.
std::optional<std::vector<std::string>> CarriersOf(const CategoryRename& rename,
                                                   OutlookFolder& folder,
                                                   ProgressReport& progress) {
  std::vector<std::string> carriers;
  const auto items = folder.Items();
  for (auto item = items->GetFirst(); item; item = items->GetNext()) {
    if (!progress.Step(0, 1, "Looking for appointments with " + rename.from)) return std::nullopt;
    const auto appointment = AppointmentOf(std::move(item));
    if (appointment && HasName(appointment->Categories(), rename.separator, rename.from)) {
      carriers.push_back(appointment->EntryID());
    }
  }
  return carriers;
}

}  // namespace

bool CanBeCarried(std::string_view category, std::string_view separator) {
  return !category.empty() && Trim(category) == category &&
         category.find(Trim(separator)) == std::string_view::npos;
}

bool RenameInAppointments(const CategoryRename& rename, OutlookFolder& folder,
                          const Platform& platform) {
  const auto progress = platform.progress.Begin("Rename Category");
  if (!progress->Step(0, 1, "Renaming " + rename.from)) return false;
  if (folder.ReplaceCategory(rename.from, rename.to)) return true;
  const auto carriers = CarriersOf(rename, folder, *progress);
  if (!carriers) return false;
  const auto session = platform.outlook.GetNamespace("MAPI");
  if (!session) throw Error(errors::CalendarFailed, "There is no session");
  const std::string store = folder.StoreID();
  const int count = static_cast<int>(carriers->size());
  for (int done = 0; done < count; ++done) {
    const auto item = session->GetItemFromID((*carriers)[static_cast<std::size_t>(done)], store);
    if (!progress->Step(done, count, item->Subject())) return false;
    item->SetCategories(
        WithNameReplaced(item->Categories(), rename.separator, rename.from, rename.to));
    item->Save();
  }
  return true;
}

}  // namespace velkor
