// calendar/mirror/Outbox.cpp: what each edit needs next: sending, an answer, or nothing more.
#include "calendar/mirror/Outbox.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "calendar/mirror/MergeEdit.h"
#include "calendar/mirror/ObjectEdits.h"
#include "values/Error.h"

namespace velkor {
namespace {

using Kind = MirrorQuestion::Kind;

/// What the user is to be asked before an edit is sent; none for nothing. A damaged object is no
/// deleted one.
/// @param edit  its header is enough
std::optional<Kind> QuestionOf(const Mirror& mirror, const std::string& name,
                               const PendingEdit& edit) {
  if (edit.kind == EditKind::Create) return std::nullopt;
  const auto base = mirror.Key(name);
  if (edit.kind == EditKind::Change) {
    const bool isThere = base || mirror.IsDamaged(name);
    return isThere ? std::nullopt : std::optional(Kind::DeletedThere);
  }
  if (!base || base->etag == edit.etag) return std::nullopt;
  const auto object = mirror.Object(name);
  const auto& marks = edit.marks;
  const bool isKnown =
      !object || std::find(marks.begin(), marks.end(), MarkOfObject(object->bytes)) != marks.end();
  return isKnown ? std::nullopt : std::optional(Kind::ChangedThere);
}

/// True when a change has come back to what it began with.
bool SaysNothing(const PendingEdit& edit) {
  if (edit.before == edit.after) return true;
  const auto before = ReadObject(edit.before);
  const auto after = ReadObject(edit.after);
  if (!before || !after || !edit.categories.empty() || edit.fields.empty()) return false;
  return std::all_of(edit.fields.begin(), edit.fields.end(),
                     [&](const auto& made) { return HasSame(made.first, *before, *after); });
}

Outgoing Creation(const std::string& name, const PendingEdit& edit) {
  return {name, edit.revision, EditKind::Create, name + ".ics", {}, edit.after};
}

/// A creation is marked before it is sent for the first time: once it may be on the server, taking
/// it back means deleting it there.
Outgoing OfferedCreation(Mirror& mirror, const std::string& name, PendingEdit& edit) {
  if (!edit.offered) {
    edit.offered = true;
    SaveEdit(mirror, name, edit);
  }
  return Creation(name, edit);
}

std::optional<Outgoing> PreparedDeletion(Mirror& mirror, const std::string& name,
                                         const PendingEdit& edit,
                                         const std::optional<MirrorObject>& base) {
  if (base) {
    return Outgoing{name, edit.revision, EditKind::Delete, base->key.href, base->key.etag, {}};
  }
  // Where it was perhaps sent, it is sent for certain and then deleted, so that nobody else's
  // object is.
  if (edit.offered) return Creation(name, edit);
  DropEdit(mirror, name);
  return std::nullopt;
}

std::optional<Outgoing> PreparedChange(Mirror& mirror, const std::string& name,
                                       const PendingEdit& edit, const MirrorObject& base,
                                       std::int64_t clockAhead) {
  auto rebased = Rebased(mirror, name, edit, base, clockAhead);
  if (!rebased || SaysNothing(*rebased)) {
    DropEdit(mirror, name);
    return std::nullopt;
  }
  if (rebased->before != edit.before || rebased->etag != edit.etag || rebased->kind != edit.kind) {
    SaveEdit(mirror, name, *rebased);
  }
  return Outgoing{name,          rebased->revision, EditKind::Change,
                  rebased->href, rebased->etag,     rebased->after};
}

/// What remains of an edit that went on while it was sent; none for nothing.
std::optional<PendingEdit> RestOf(Mirror& mirror, const std::string& name, PendingEdit edit,
                                  const Outgoing& sent, const MirrorObject& base) {
  edit.kind = EditKind::Change;
  edit.offered = false;
  edit.before = sent.bytes;
  return Rebased(mirror, name, std::move(edit), base, 0);
}

}  // namespace

std::vector<std::string> Outbox::Waiting() const {
  FinishCategoryIfPossible(mirror_);
  std::vector<std::pair<std::uint64_t, std::string>> waiting;
  for (const std::string& name : mirror_.Files().Names("pending")) {
    const auto edit = ReadEditHeader(mirror_, name);
    const bool asks = edit && QuestionOf(mirror_, name, *edit);
    if (IsObjectName(name) && !asks) waiting.emplace_back(edit ? edit->first : 0, name);
  }
  std::sort(waiting.begin(), waiting.end());
  std::vector<std::string> names;
  for (auto& [first, name] : waiting) names.push_back(std::move(name));
  return names;
}

std::optional<Outgoing> Outbox::Prepare(const std::string& name, std::int64_t clockAhead) {
  const auto lock = mirror_.Files().Lock();
  FinishCategory(mirror_);
  auto edit = TakeEdit(mirror_, name);
  // A damaged object is no deleted one; the next synchronisation fetches it.
  if (!edit || mirror_.IsDamaged(name)) return std::nullopt;
  const auto base = mirror_.Object(name);
  if (QuestionOf(mirror_, name, *edit)) return std::nullopt;
  if (edit->kind == EditKind::Delete) return PreparedDeletion(mirror_, name, *edit, base);
  if (!base) return OfferedCreation(mirror_, name, *edit);
  try {
    return PreparedChange(mirror_, name, *edit, *base, clockAhead);
  } catch (const Error& error) {
    if (error.Number() != errors::CalendarFailed) throw;
    KeepRefused(mirror_, name, edit->kind, edit->after, error.Description());
    DropEdit(mirror_, name);
    return std::nullopt;
  }
}

void Outbox::Sent(const Outgoing& sent, const std::string& href, const std::string& etag,
                  std::string_view bytes) {
  const auto lock = mirror_.Files().Lock();
  if (sent.kind == EditKind::Delete) {
    mirror_.Remove(sent.href);
    auto edit = TakeEdit(mirror_, sent.name);
    if (edit && edit->revision != sent.revision && edit->kind == EditKind::Change) {
      // The user took it back meanwhile.
      edit->kind = EditKind::Create;
      edit->before = edit->after;
      edit->fields.clear();
      SaveEdit(mirror_, sent.name, *edit);
    } else if (edit && edit->revision == sent.revision) {
      DropEdit(mirror_, sent.name);
    }
    return;
  }
  const MirrorObject base{mirror_.Put(href, etag, bytes, Durability::Now), std::string(bytes)};
  auto edit = TakeEdit(mirror_, sent.name);
  if (!edit) return;
  if (edit->kind == EditKind::Delete) {
    edit->offered = false;
    edit->href = href;
    edit->etag = etag;
    edit->before = base.bytes;
    edit->marks.push_back(MarkOfObject(bytes));
    SaveEdit(mirror_, sent.name, *edit);
    return;
  }
  const bool isDone = edit->revision == sent.revision;
  auto rest = isDone ? std::nullopt : RestOf(mirror_, sent.name, *std::move(edit), sent, base);
  if (rest) SaveEdit(mirror_, base.key.name, *rest);
  if (!rest || base.key.name != sent.name) DropEdit(mirror_, sent.name);
}

void Outbox::Refuse(const Outgoing& refused, const std::string& reason) {
  const auto lock = mirror_.Files().Lock();
  const auto edit = TakeEdit(mirror_, refused.name);
  if (!edit || edit->revision != refused.revision) return;
  // Of a deletion: the appointment that stays. What was to be created only to be deleted is no
  // loss.
  const bool isLoss = edit->kind != EditKind::Delete || refused.kind == EditKind::Delete;
  if (isLoss) {
    KeepRefused(mirror_, refused.name, edit->kind,
                edit->kind == EditKind::Delete ? edit->before : edit->after, reason);
  }
  DropEdit(mirror_, refused.name);
}

std::vector<MirrorQuestion> Outbox::Questions() const {
  std::vector<MirrorQuestion> questions;
  for (const std::string& name : mirror_.Files().Names("pending")) {
    const auto header = ReadEditHeader(mirror_, name);
    const auto kind = header ? QuestionOf(mirror_, name, *header) : std::nullopt;
    if (!kind) continue;
    const auto base = mirror_.Object(name);
    const auto edit = ReadEdit(mirror_, name);
    const auto shown = ReadObject(base ? base->bytes : edit ? edit->after : "");
    questions.push_back(
        {name, *kind, shown ? shown->item.fields.subject : "", shown ? shown->item.start : Date()});
  }
  return questions;
}

void Outbox::Answer(const std::string& id, bool keepMine) {
  const auto lock = mirror_.Files().Lock();
  auto edit = TakeEdit(mirror_, id);
  const auto base = mirror_.Object(id);
  if (!edit || !QuestionOf(mirror_, id, *edit)) return;
  if (!keepMine) {
    DropEdit(mirror_, id);
    return;
  }
  if (base) {
    edit->etag = base->key.etag;
    edit->before = base->bytes;
    edit->marks.push_back(MarkOfObject(base->bytes));
  } else {
    edit->kind = EditKind::Create;
    edit->before = edit->after;
    edit->fields.clear();
    edit->categories.clear();
  }
  SaveEdit(mirror_, id, *edit);
}

void Outbox::TakeBack(const std::string& id, Date now) {
  const auto lock = mirror_.Files().Lock();
  const WholeNote note = NoteOf(mirror_, id);
  auto other = ReadObject(note.object);
  if (!other) {
    throw Error(errors::CalendarFailed, "The other value cannot be read any more.", "Calendar");
  }
  ItemChange change;
  SetField(change, note.field, *other);
  other->item.lastModified = now;
  ChangeObject(mirror_, note.note.entryId, other->item, change, mirror_.State().displayName);
  DropNote(mirror_, id);
}

void Outbox::ExportRefused(const std::string& id, const std::string& path) const {
  const std::filesystem::path target = std::filesystem::absolute(path);
  MirrorFolder(target.parent_path(), std::chrono::seconds(3))
      .Write(target.filename(), ObjectOfRefused(mirror_, id), Durability::Now);
}

}  // namespace velkor
