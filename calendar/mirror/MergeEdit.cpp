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

class Merger {
 public:
  Merger(const PendingEdit& edit, const std::string& base, std::int64_t clockAhead)
      : edit_(edit),
        clockAhead_(clockAhead),
        before_(Expected(edit.before)),
        mine_(Expected(edit.after)),
        theirs_(Expected(base)),
        merged_{base, {}, {}} {}

  MergedEdit Merged() {
    for (const CategoryEdit& made : edit_.categories) {
      merged_.bytes = ReplaceCategoryInIcs(merged_.bytes, ObjectName, {made.from, made.to},
                                           LocalTime(made.time));
    }
    for (const auto& [field, made] : edit_.fields) Decide(field, made);
    if (wanted_.empty()) return std::move(merged_);
    Make();
    merged_.bytes = AsServersTakeIt(std::move(merged_.bytes));
    return std::move(merged_);
  }

 private:
  void Decide(ItemField field, const FieldEdit& made) {
    if (HasSame(field, mine_, theirs_)) return;
    const auto& passed = made.passed;
    const bool isTheirs =
        !HasSame(field, before_, theirs_) &&
        std::find(passed.begin(), passed.end(), HashOf(field, theirs_)) == passed.end();
    const std::int64_t time = made.time + clockAhead_;
    const bool mineKept = !theirs_.modified || time >= *theirs_.modified;
    if (isTheirs) merged_.conflicts.push_back({field, mineKept});
    if (isTheirs && !mineKept) return;
    wanted_.push_back(field);
    latest_ = std::max(latest_, time);
  }

  /// All fields at once, else those that can be made by themselves.
  void Make() {
    try {
      merged_.bytes = With(wanted_);
      merged_.applied = wanted_;
      return;
    } catch (const Error&) {
      // One of them cannot be made any more.
    }
    for (const ItemField field : wanted_) {
      try {
        merged_.bytes = With({field});
        merged_.applied.push_back(field);
      } catch (const Error&) {
        std::erase_if(merged_.conflicts,
                      [&](const FieldConflict& one) { return one.field == field; });
        merged_.conflicts.push_back({field, false});
      }
    }
  }

  /// The object with these fields as ours has them.
  std::string With(const std::vector<ItemField>& fields) const {
    ItemChange change;
    for (const ItemField field : fields) SetField(change, field, mine_);
    CalendarItem after = mine_.item;
    after.entryId = theirs_.item.entryId;
    after.lastModified = LocalTime(std::max(latest_, theirs_.modified.value_or(latest_)));
    return ChangeInIcs(merged_.bytes, ObjectName, after, change).bytes;
  }

  const PendingEdit& edit_;
  std::int64_t clockAhead_;
  ObjectAppointment before_;
  ObjectAppointment mine_;
  ObjectAppointment theirs_;
  MergedEdit merged_;
  /// The fields that are ours in the end, and when the last of them was set.
  std::vector<ItemField> wanted_;
  std::int64_t latest_ = 0;
};

}  // namespace

std::string HashOf(ItemField field, const ObjectAppointment& appointment) {
  const std::string words = field == ItemField::Times
                                ? std::to_string(appointment.item.start.Seconds()) + "-" +
                                      std::to_string(appointment.item.end.Seconds())
                                : WordsOf(field, appointment);
  return ShortHash(words);
}

MergedEdit MergeEdit(const PendingEdit& edit, const std::string& base, std::int64_t clockAhead) {
  return Merger(edit, base, clockAhead).Merged();
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
