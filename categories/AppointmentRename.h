// categories/AppointmentRename.h: gives the appointments of a calendar another name for a category.
#pragma once

#include <string>
#include <string_view>

#include "platform/Platform.h"

namespace velkor {

class OutlookFolder;

struct CategoryRename {
  std::string from;
  std::string to;
  /// What joins the names of a Categories text.
  std::string separator;
};

/// Whether a Categories text can name this category.
bool CanBeCarried(std::string_view category, std::string_view separator);

/// Puts the new name in place of the old one in all items of a folder, one item after the other
/// unless the calendar program can do them at once, and shows how far it is. Each item has the old
/// name or the new one, whenever it ends. Throws what the calendar throws.
/// @return false when the user stopped it
bool RenameInAppointments(const CategoryRename& rename, OutlookFolder& folder,
                          const Platform& platform);

}  // namespace velkor
