// calendar/mirror/MergeEdit.h: an edit made again to what the object is by now.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/mirror/PendingEdit.h"

namespace velkor {

/// A field that was changed here and there.
struct FieldConflict {
  ItemField field = ItemField::Subject;
  /// Ours is the later one, which counts.
  bool mineKept = false;
};

struct MergedEdit {
  /// The object with the edit.
  std::string bytes = {};
  /// The fields that it still changes.
  std::vector<ItemField> applied = {};
  std::vector<FieldConflict> conflicts = {};
};

/// Makes a change, or a creation that the server has by now, again to an object: a field that only
/// one side changed is theirs or ours; of one that both changed the later value counts, the time of
/// our edit against the time of theirs. A field that the object cannot take any more, as a time of
/// what recurs by now, stays theirs and counts as such a conflict. The same answer for the same
/// arguments. Throws Error (CalendarFailed) for texts that hold no appointment.
/// @param base        the object as the server has it
/// @param clockAhead  seconds to add to the times of our edits
MergedEdit MergeEdit(const PendingEdit& edit, const std::string& base, std::int64_t clockAhead);

/// An object as people see it, the edit made; none for one that is deleted or was never there. A
/// change of an object that is gone is still seen, until the user has answered.
std::optional<std::string> ViewOf(const std::optional<PendingEdit>& edit,
                                  const std::optional<MirrorObject>& base);

/// The object as every server takes it: an appointment without length ends a second later, and is
/// marked so that it reads as the moment that it is. Strict servers refuse an end that is not after
/// the start (RFC 5545 section 3.8.2.2).
std::string AsServersTakeIt(std::string bytes);

/// A hash of a field's value.
std::string HashOf(ItemField field, const ObjectAppointment& appointment);

}  // namespace velkor
