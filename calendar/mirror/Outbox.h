// calendar/mirror/Outbox.h: the edits of a mirror that wait for the server, and what becomes of
// them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "calendar/CalendarItem.h"
#include "calendar/mirror/Mirror.h"
#include "calendar/mirror/MirrorNews.h"
#include "calendar/mirror/PendingEdit.h"

namespace velkor {

/// What to send for one object.
struct Outgoing {
  std::string name = {};
  /// Which state of the edit this is.
  std::uint64_t revision = 0;
  EditKind kind = EditKind::Change;
  /// Create: the last part of the path that the new object gets in its collection, NAME.ics. Else
  /// where the object lies, as the server gave it.
  std::string href = {};
  /// For If-Match; empty for Create, which is sent with If-None-Match: *.
  std::string etag = {};
  /// The object to put; empty for Delete.
  std::string bytes = {};
};

/// An edit that waits for the user's answer; until then it is not sent, and shown as it was made.
struct MirrorQuestion {
  enum class Kind {
    /// Changed here, deleted on the server. Keeping mine puts it there again.
    DeletedThere,
    /// Deleted here, changed on the server. Keeping mine deletes it there, too.
    ChangedThere,
  };
  std::string id = {};
  Kind kind = Kind::DeletedThere;
  /// As it would be shown when the appointment stays.
  std::string subject = {};
  Date start = {};
};

/// Edits are made by MirrorWriter, sent by whoever talks to the server, and answered by the user;
/// each in a process of its own. There is one edit for each object, which grows as the user goes
/// on. Every step can be repeated after a kill: what was sent, but not noted as sent, is found on
/// the server and compared field by field. Throws as Mirror does.
class Outbox {
 public:
  /// The mirror outlives this.
  explicit Outbox(Mirror& mirror) : mirror_(mirror) {}

  /// The names of objects whose edits are to be sent, in the order in which they were made; without
  /// those that wait for an answer.
  std::vector<std::string> Waiting() const;

  /// The edit applied to the object as the mirror has it now: what to send. Fields that only one
  /// side changed are both kept; of a field that both changed the later value wins, and a note
  /// tells the other. None when the object already says all of it (the edit is then done with) or
  /// when it waits for an answer. An edit that cannot be applied any more is refused, as by Refuse.
  /// @param clockAhead  seconds that the server's clock is ahead of this machine's
  std::optional<Outgoing> Prepare(const std::string& name, std::int64_t clockAhead = 0);
  /// The server has taken it. What the user changed meanwhile goes on waiting.
  /// @param href   where the object lies now, as for Mirror::Put; of a deletion ignored
  /// @param bytes  the object as the server has it, or as it was sent
  void Sent(const Outgoing& sent, const std::string& href, const std::string& etag,
            std::string_view bytes);
  /// The server will never take it: kept under Refused, and gone from the calendar. An edit that
  /// the user changed meanwhile is left to be sent again.
  /// @param reason  a sentence for people
  void Refuse(const Outgoing& refused, const std::string& reason);

  std::vector<MirrorQuestion> Questions() const;
  /// A question that is answered already or that has become void is no fault.
  void Answer(const std::string& id, bool keepMine);

  /// By time.
  std::vector<MirrorNote> Notes() const { return NotesOf(mirror_); }
  /// Makes the value that gave way an edit of its own, and takes the note away. Throws Error
  /// (CalendarFailed) when the appointment is gone or cannot have it.
  /// @param now  local time of saving
  void TakeBack(const std::string& id, Date now);
  void Dismiss(const std::string& id) { DropNote(mirror_, id); }

  /// By time.
  std::vector<RefusedEdit> Refused() const { return RefusedOf(mirror_); }
  void MarkTold(const std::string& id) { MarkRefusedTold(mirror_, id); }
  /// Writes the appointment as it was to be into an iCalendar file of its own.
  /// @param path  replaced when it is there
  void ExportRefused(const std::string& id, const std::string& path) const;
  /// The user wants it no more.
  void DropRefused(const std::string& id) { DropRefusedEdit(mirror_, id); }

 private:
  Mirror& mirror_;
};

}  // namespace velkor
