// calendar/mirror/MirrorNews.h: what the user is to be told of a mirror's edits, kept on the disk.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "calendar/CalendarItem.h"
#include "calendar/mirror/MergeEdit.h"
#include "calendar/mirror/Mirror.h"

namespace velkor {

/// One field that was changed here and by somebody else; the later value was kept.
struct MirrorNote {
  std::string id = {};
  /// The identifier of the appointment in this calendar.
  std::string entryId = {};
  std::string subject = {};
  /// For people: "subject", "categories", "place", "text", "time", "reminder".
  std::string field = {};
  /// The value that is kept and the one that gave way, for people.
  std::string kept = {};
  std::string other = {};
  /// True when the value that is kept is the user's own.
  bool mineKept = false;
  /// Seconds since 1970.
  std::int64_t time = 0;
};

/// A note with what it takes to have the other value again.
struct WholeNote {
  MirrorNote note = {};
  ItemField field = ItemField::Subject;
  /// An object that has the value which gave way.
  std::string object = {};
};

/// An edit that the server refused for good. It is shown no more.
struct RefusedEdit {
  std::string id = {};
  EditKind kind = EditKind::Change;
  std::string subject = {};
  Date start = {};
  std::string reason = {};
  /// Seconds since 1970.
  std::int64_t time = 0;
  /// The user has been told.
  bool told = false;
};

/// Keeps a note of a field that an edit and the object `base` both changed. The same note twice is
/// one. Throws as Mirror does, like all here.
void KeepNote(Mirror& mirror, const std::string& name, const PendingEdit& edit,
              const std::string& base, const FieldConflict& conflict);
/// By time.
std::vector<MirrorNote> NotesOf(const Mirror& mirror);
/// Throws Error (CalendarFailed) when there is none with this identifier.
WholeNote NoteOf(const Mirror& mirror, const std::string& id);
void DropNote(Mirror& mirror, const std::string& id);

/// Keeps an edit that was refused. The same edit twice is one.
/// @param object  the appointment as it was to be, or is still there; any bytes
void KeepRefused(Mirror& mirror, const std::string& name, EditKind kind, std::string_view object,
                 const std::string& reason);
/// By time.
std::vector<RefusedEdit> RefusedOf(const Mirror& mirror);
void MarkRefusedTold(Mirror& mirror, const std::string& id);
/// Throws Error (CalendarFailed) when there is none with this identifier.
std::string ObjectOfRefused(const Mirror& mirror, const std::string& id);
void DropRefusedEdit(Mirror& mirror, const std::string& id);

}  // namespace velkor
