// calendar/mirror/MirrorWriter.cpp: saves as edits that wait.
#include "calendar/mirror/MirrorWriter.h"

#include <QUuid>
#include <algorithm>
#include <utility>
#include <vector>

#include "calendar/ics/read/IcsLines.h"
#include "calendar/ics/read/IcsPlainText.h"
#include "calendar/ics/write/IcsComponentEdit.h"
#include "calendar/ics/write/IcsEditor.h"
#include "calendar/mirror/MergeEdit.h"
#include "calendar/mirror/ObjectEdits.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr const char* EmptyCalendar =
    "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//OutlookVelkor//Year Planner//EN\r\n"
    "END:VCALENDAR\r\n";

[[noreturn]] void Fail(const std::string& what) {
  throw Error(errors::CalendarFailed, what, "Calendar");
}

std::string FreshUid() {
  return QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
}

/// An object has to have a UID (RFC 4791 section 4.1).
std::string WithUid(const std::string& bytes, const std::string& title) {
  const IcsLimits limits;
  Diagnostics ignored(title, 1);
  const IcsPlainText plain(bytes, title);
  const IcsDocument document(plain.Text(), title, limits, ignored);
  const IcsAppointment* main = MainOf(document);
  if (!main) return bytes;
  const IcsComponent& component = *document.Events()[main->main].component;
  IcsComponentEdit edit(document.Bytes(), component, limits);
  edit.Set("UID", "", FreshUid());
  std::string text(document.Bytes());
  text.replace(component.begin, component.end - component.begin, edit.Text());
  return plain.WithText(std::move(text));
}

/// True for two objects whose appointments have the same lines, in whatever order and folding.
bool HasSameLines(std::string_view a, std::string_view b) {
  const auto linesOf = [](std::string_view bytes) {
    std::vector<std::string> all;
    IcsLines lines(bytes, 0, bytes.size(), 1, IcsLimits{}.lineLength);
    for (IcsLine line; lines.Next(line);) {
      if (!line.text.starts_with("PRODID")) all.emplace_back(line.text);
    }
    std::sort(all.begin(), all.end());
    return all;
  };
  return linesOf(a) == linesOf(b);
}

/// The edit by which an object is there that was not, or not any more.
PendingEdit TakeOver(const std::optional<PendingEdit>& deletion,
                     const std::optional<MirrorObject>& base, const std::string& bytes,
                     std::int64_t time) {
  PendingEdit edit = deletion.value_or(PendingEdit{});
  edit.kind = base ? EditKind::Change : EditKind::Create;
  edit.before = base ? base->bytes : bytes;
  edit.after = bytes;
  if (!base) return edit;
  edit.href = base->key.href;
  edit.etag = base->key.etag;
  const auto before = ReadObject(edit.before);
  const auto after = ReadObject(bytes);
  for (const ItemField field : AllItemFields) {
    if (before && after && !HasSame(field, *before, *after)) edit.fields[field] = {time, {}};
  }
  return edit;
}

}  // namespace

void MirrorWriter::ExpectWritable() const {
  if (mirror_.State().readOnly) {
    throw Error(errors::PermissionDenied,
                "The calendar " + title_ + " can only be read; its server lets you change nothing.",
                "Calendar");
  }
}

void MirrorWriter::ExpectOwnObject(const std::string& entryId) {
  constexpr std::size_t OfAnObject = 32;
  if (entryId.size() > OfAnObject) {
    Fail(
        "This is one of several appointments that the server keeps as one; it can be changed only "
        "by the program that made it.");
  }
}

CalendarItem MirrorWriter::WriteNew(const CalendarItem& item, bool reminder) {
  ExpectWritable();
  const std::string uid = FreshUid();
  IcsEdit made = AddToIcs(EmptyCalendar, title_, item, reminder, uid);
  PendingEdit edit;
  edit.kind = EditKind::Create;
  edit.before = edit.after = AsServersTakeIt(std::move(made.bytes));
  SaveEdit(mirror_, made.item.entryId, edit);
  return std::move(made.item);
}

CalendarItem MirrorWriter::WriteChange(const CalendarItem& after, const ItemChange& change) {
  ExpectWritable();
  ExpectOwnObject(after.entryId);
  CalendarItem saved = ChangeObject(mirror_, after.entryId, after, change, title_);
  saved.occurrences = after.occurrences;
  saved.changed = after.changed;
  return saved;
}

void MirrorWriter::WriteDeletion(const CalendarItem& item) {
  ExpectWritable();
  ExpectOwnObject(item.entryId);
  DeleteObject(mirror_, item.entryId, title_);
}

void MirrorWriter::WriteCategory(std::string_view from, std::string_view to, Date now) {
  ExpectWritable();
  ReplaceCategoryInObjects(mirror_, {std::string(from), std::string(to), UnixTime(now)});
}

std::shared_ptr<const void> MirrorWriter::Hold() {
  auto lock = mirror_.Files().Lock();
  FinishCategory(mirror_);
  return lock;
}

CalendarItem MirrorWriter::TakeWhole(std::string_view bytes, Date now) {
  ExpectWritable();
  std::string object(bytes);
  auto taken = ReadObject(object);
  if (taken && taken->uid.empty()) {
    object = WithUid(object, title_);
    taken = ReadObject(object);
  }
  if (!taken) Fail("What is to be moved into the calendar " + title_ + " is no appointment.");
  object = AsServersTakeIt(std::move(object));
  const std::string name = EntryIdOfUid(taken->uid);

  const auto lock = mirror_.Files().Lock();
  const auto there = TakeEdit(mirror_, name);
  const auto base = mirror_.Object(name);
  const auto view = ViewOf(there, base);
  taken->item.entryId = name;
  if (view && HasSameLines(*view, object)) return std::move(taken->item);
  if (view) {
    Fail("The calendar " + title_ + " has the appointment \"" + taken->item.fields.subject +
         "\" already.");
  }
  PendingEdit edit = TakeOver(there, base, object, UnixTime(now));
  SaveEdit(mirror_, name, edit);
  return std::move(taken->item);
}

std::string MirrorWriter::WholeOf(const std::string& entryId) const {
  ExpectOwnObject(entryId);
  auto view = ViewOf(ReadEdit(mirror_, entryId), mirror_.Object(entryId));
  if (!view) Fail("The appointment is no longer in the calendar " + title_ + ".");
  return std::move(*view);
}

}  // namespace velkor
