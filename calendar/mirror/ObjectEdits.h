// calendar/mirror/ObjectEdits.h: edits as they are made and brought up to date.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "calendar/CalendarItem.h"
#include "calendar/mirror/Mirror.h"
#include "calendar/mirror/PendingEdit.h"

namespace velkor {

/// All take the mirror's lock for themselves and throw as Mirror does, or Error (CalendarFailed)
/// for what cannot be done; nothing has changed then.

/// What waits for an object. One whose file is damaged is put among the refused edits.
std::optional<PendingEdit> TakeEdit(Mirror& mirror, const std::string& name);

/// The edit on the object as the server has it by now, with a note for each field that both sides
/// changed. Not yet saved. None when the object says all of it already.
/// @param edit  of a change or a creation
std::optional<PendingEdit> Rebased(Mirror& mirror, const std::string& name, PendingEdit edit,
                                   const MirrorObject& base, std::int64_t clockAhead);

/// Changes what is shown of an object and has it wait to be sent.
/// @param after  the appointment with the change made and its time of saving
/// @param title  of the calendar, for messages
/// @return the item as it is now, known by the name of the object
CalendarItem ChangeObject(Mirror& mirror, const std::string& name, const CalendarItem& after,
                          const ItemChange& change, const std::string& title);

/// Takes an object out of what is shown and has that wait to be sent.
void DeleteObject(Mirror& mirror, const std::string& name, const std::string& title);

/// Puts a category in another's place in all objects, in one step: what a kill leaves undone is
/// done by FinishCategory.
void ReplaceCategoryInObjects(Mirror& mirror, const CategoryEdit& change);
void FinishCategory(Mirror& mirror);
/// For those who only look: what the disk does not take now is left for the next save, which tells.
void FinishCategoryIfPossible(Mirror& mirror);

/// The names of all objects that there are or that wait to be created, ascending.
std::vector<std::string> NamesOfObjects(const Mirror& mirror);

}  // namespace velkor
