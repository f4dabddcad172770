// calendar/mirror/MergeEdit.cpp: field by field, by the editor of calendar files.
#include "calendar/mirror/MergeEdit.h"

#include <algorithm>

#include "calendar/ics/file/ShortHash.h"
#include "calendar/ics/read/IcsPlainText.h"
#include "calendar/ics/write/IcsComponentEdit.h"
#include "calendar/ics/write/IcsEditor.h"
#include "calendar/ics/write/IcsText.h"
#include "values/Error.h"

namespace velkor {
namespace {

const std::string ObjectName = "on the server";
constexpr const char* MomentMark = "X-VELKOR-MOMENT";

bool IsMoment(const IcsEvent& event) {
  if (event.start.isDate) return false;
  if (event.end) return event.end->Local() == event.start.Local();
  return !event.duration || (event.duration->days == 0 && event.duration->seconds == 0);
}

ObjectAppointment Expected(std::string_view bytes) {
  auto appointment = ReadObject(bytes);
  if (!appointment) {
    throw Error(errors::CalendarFailed,
                "The object of this appointment on the server is no longer one.", "Calendar");
  }
  return std::move(*appointment);
}

/// The object with these fields as ours has them.
std::string WithFields(const std::string& bytes, const std::vector<ItemField>& fields,
                       const ObjectAppointment& mine, const ObjectAppointment& theirs,
                       std::int64_t time) {
  ItemChange change;
  for (const ItemField field : fields) SetField(change, field, mine);
  CalendarItem after = mine.item;
  after.entryId = theirs.item.entryId;
  after.lastModified = LocalTime(std::max(time, theirs.modified.value_or(time)));
  return ChangeInIcs(bytes, ObjectName, after, change).bytes;
}

}  // namespace

std::string HashOf(ItemField field, const ObjectAppointment& appointment) {
  const std::string words = field == ItemField::Times
                                ? std::to_string(appointment.item.start.Seconds()) + "-" +
                                      std::to_string(appointment.item.end.Seconds())
                                : WordsOf(field, appointment);
  return ShortHash(words);
}

MergedEdit MergeEdit(const PendingEdit& edit, const std::string& base, std::int64_t clockAhead) {
  const ObjectAppointment before = Expected(edit.before);
  const ObjectAppointment mine = Expected(edit.after);
  const ObjectAppointment theirs = Expected(base);
  MergedEdit merged{base, {}, {}};
  for (const CategoryEdit& made : edit.categories) {
    merged.bytes =
        ReplaceCategoryInIcs(merged.bytes, ObjectName, {made.from, made.to}, LocalTime(made.time));
  }
  std::int64_t latest = 0;
  std::vector<ItemField> wanted;
  for (const auto& [field, made] : edit.fields) {
    if (HasSame(field, mine, theirs)) continue;
    const auto& passed = made.passed;
    const bool isTheirs =
        !HasSame(field, before, theirs) &&
        std::find(passed.begin(), passed.end(), HashOf(field, theirs)) == passed.end();
    const std::int64_t time = made.time + clockAhead;
    const bool mineKept = !theirs.modified || time >= *theirs.modified;
    if (isTheirs) merged.conflicts.push_back({field, mineKept});
    if (isTheirs && !mineKept) continue;
    wanted.push_back(field);
    latest = std::max(latest, time);
  }
  if (wanted.empty()) return merged;
  try {
    merged.bytes = WithFields(merged.bytes, wanted, mine, theirs, latest);
    merged.applied = wanted;
  } catch (const Error&) {
    for (const ItemField field : wanted) {
      try {
        merged.bytes = WithFields(merged.bytes, {field}, mine, theirs, latest);
        merged.applied.push_back(field);
      } catch (const Error&) {
        std::erase_if(merged.conflicts,
                      [&](const FieldConflict& one) { return one.field == field; });
        merged.conflicts.push_back({field, false});
      }
    }
  }
  merged.bytes = AsServersTakeIt(std::move(merged.bytes));
  return merged;
}

std::optional<std::string> ViewOf(const std::optional<PendingEdit>& edit,
                                  const std::optional<MirrorObject>& base) {
  if (!edit) return base ? std::optional(base->bytes) : std::nullopt;
  if (edit->kind == EditKind::Delete) return std::nullopt;
  if (!base || base->bytes == edit->before) return edit->after;
  try {
    return MergeEdit(*edit, base->bytes, 0).bytes;
  } catch (const Error&) {
    return edit->after;
  }
}

std::string AsServersTakeIt(std::string bytes) {
  const IcsLimits limits;
  Diagnostics ignored({}, 1);
  const IcsPlainText plain(bytes, ObjectName);
  const IcsDocument document(plain.Text(), ObjectName, limits, ignored);
  std::string text(document.Bytes());
  bool changed = false;
  // From the last one on: those before it stay where they are.
  for (std::size_t i = document.Events().size(); i-- > 0;) {
    const IcsEvent& event = document.Events()[i];
    IcsComponentEdit edit(document.Bytes(), *event.component, limits);
    const bool isMarked = edit.Has(MomentMark) && (edit.Has("DTEND") || edit.Has("DURATION"));
    if (isMarked || !IsMoment(event)) continue;
    const bool isUtc = event.start.zone == &document.UtcZone();
    edit.Remove("DURATION");
    edit.Set("DTEND", edit.ParametersWithout("DTSTART", {}),
             TimeValue(event.start.wall + 1, isUtc));
    edit.Set(MomentMark, "", "TRUE");
    text.replace(event.component->begin, event.component->end - event.component->begin,
                 edit.Text());
    changed = true;
  }
  return changed ? plain.WithText(std::move(text)) : bytes;
}

}  // namespace velkor
