// calendar/mirror/ObjectEdits.cpp: an edit grows field by field on the object as it is shown.
#include "calendar/mirror/ObjectEdits.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>

#include "calendar/ics/write/IcsEditor.h"
#include "calendar/mirror/JsonFields.h"
#include "calendar/mirror/MergeEdit.h"
#include "calendar/mirror/MirrorNews.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

using Json = nlohmann::json;

constexpr const char* CategoryName = "category.json";

[[noreturn]] void FailToFind(const std::string& title) {
  throw Error(
      errors::CalendarFailed,
      "The appointment is no longer in the calendar " + title + "; another program has changed it.",
      "Calendar");
}

/// Far more than a user changes in one field before the network is back.
void Remember(std::vector<std::string>& texts, std::string text) {
  constexpr std::size_t Most = 100;
  if (std::find(texts.begin(), texts.end(), text) != texts.end()) return;
  if (texts.size() == Most) texts.erase(texts.begin());
  texts.push_back(std::move(text));
}

/// A creation of which the server has an object by now: ours, as it was sent, or somebody else's of
/// the same UID, with which every field is compared.
PendingEdit AsChange(PendingEdit edit, const std::string& name, const MirrorObject& base) {
  edit.kind = EditKind::Change;
  edit.offered = false;
  if (base.key.href.ends_with("/" + name + ".ics")) return edit;
  const auto mine = ReadObject(edit.after);
  for (const ItemField field : AllItemFields) {
    edit.fields.try_emplace(field, FieldEdit{mine ? mine->modified.value_or(0) : 0, {}});
  }
  return edit;
}

PendingEdit FreshEdit(const MirrorObject& base) {
  PendingEdit edit;
  edit.href = base.key.href;
  edit.etag = base.key.etag;
  edit.before = edit.after = base.bytes;
  return edit;
}

/// What another edit of an object goes on from: `after` is what is shown. None when nothing is.
std::optional<PendingEdit> EditToGoOn(Mirror& mirror, const std::string& name) {
  auto edit = TakeEdit(mirror, name);
  const auto base = mirror.Object(name);
  if (edit && edit->kind == EditKind::Delete) return std::nullopt;
  if (!base) return edit;
  if (!edit) return FreshEdit(*base);
  const std::uint64_t revision = edit->revision;
  auto rebased = Rebased(mirror, name, *std::move(edit), *base, 0);
  if (!rebased) rebased = FreshEdit(*base);
  rebased->revision = revision;
  return rebased;
}

/// Notes down that the user set these fields, before they are.
void NoteFields(PendingEdit& edit, const std::vector<ItemField>& fields, std::int64_t time) {
  const auto before = ReadObject(edit.before);
  const auto shown = ReadObject(edit.after);
  if (!before || !shown) return;
  if (edit.before != edit.after) Remember(edit.marks, shown->item.contentMark);
  for (const ItemField field : fields) {
    FieldEdit& made = edit.fields[field];
    made.time = time;
    if (!HasSame(field, *before, *shown)) Remember(made.passed, HashOf(field, *shown));
  }
}

bool MayHaveCategories(std::string_view bytes) {
  constexpr std::string_view Name = "CATEGORIES";
  return std::search(bytes.begin(), bytes.end(), Name.begin(), Name.end(),
                     [](char a, char b) { return Upper(a) == b; }) != bytes.end();
}

std::string WithCategory(const std::string& bytes, const CategoryEdit& change) {
  return ReplaceCategoryInIcs(bytes, "on the server", {change.from, change.to},
                              LocalTime(change.time));
}

void ReplaceCategory(Mirror& mirror, const std::string& name, const CategoryEdit& change) {
  const auto view = ViewOf(ReadEdit(mirror, name), mirror.Object(name));
  if (!view || !MayHaveCategories(*view) || WithCategory(*view, change) == *view) return;
  auto edit = EditToGoOn(mirror, name);
  if (!edit) return;
  std::string after = WithCategory(edit->after, change);
  const bool isSet = edit->fields.contains(ItemField::Categories);
  if (isSet) NoteFields(*edit, {ItemField::Categories}, change.time);
  edit->after = std::move(after);
  std::erase_if(edit->categories, [&](const CategoryEdit& made) {
    return made.from == change.from && made.to == change.to;
  });
  edit->categories.push_back(change);
  SaveEdit(mirror, name, *edit, Durability::Later);
}

}  // namespace

std::optional<PendingEdit> TakeEdit(Mirror& mirror, const std::string& name) {
  const auto lock = mirror.Files().Lock();
  auto edit = ReadEdit(mirror, name);
  if (edit || !IsObjectName(name)) return edit;
  if (const auto damaged = mirror.Files().Read("pending/" + name)) {
    KeepRefused(mirror, name, EditKind::Change, *damaged,
                "What waited to be sent could not be read from the disk.");
    DropEdit(mirror, name);
  }
  return std::nullopt;
}

std::optional<PendingEdit> Rebased(Mirror& mirror, const std::string& name, PendingEdit edit,
                                   const MirrorObject& base, std::int64_t clockAhead) {
  const auto lock = mirror.Files().Lock();
  if (edit.kind == EditKind::Create) edit = AsChange(std::move(edit), name, base);
  edit.href = base.key.href;
  edit.etag = base.key.etag;
  if (edit.before == base.bytes) return edit;
  MergedEdit merged = MergeEdit(edit, base.bytes, clockAhead);
  for (const FieldConflict& conflict : merged.conflicts) {
    KeepNote(mirror, name, edit, base.bytes, conflict);
  }
  if (merged.bytes == base.bytes) return std::nullopt;
  std::erase_if(edit.fields, [&](const auto& made) {
    return std::find(merged.applied.begin(), merged.applied.end(), made.first) ==
           merged.applied.end();
  });
  edit.before = base.bytes;
  edit.after = std::move(merged.bytes);
  return edit;
}

CalendarItem ChangeObject(Mirror& mirror, const std::string& name, const CalendarItem& after,
                          const ItemChange& change, const std::string& title) {
  const auto lock = mirror.Files().Lock();
  FinishCategory(mirror);
  auto edit = EditToGoOn(mirror, name);
  const auto shown = edit ? ReadObject(edit->after) : std::nullopt;
  if (!shown) FailToFind(title);
  CalendarItem wanted = after;
  wanted.entryId = shown->item.entryId;
  IcsEdit made = ChangeInIcs(edit->after, title, wanted, change);
  NoteFields(*edit, FieldsOf(change), UnixTime(after.lastModified));
  edit->after = AsServersTakeIt(std::move(made.bytes));
  SaveEdit(mirror, name, *edit);
  made.item.entryId = name;
  return std::move(made.item);
}

void DeleteObject(Mirror& mirror, const std::string& name, const std::string& title) {
  const auto lock = mirror.Files().Lock();
  FinishCategory(mirror);
  const auto edit = TakeEdit(mirror, name);
  const auto base = mirror.Object(name);
  const auto view = ViewOf(edit, base);
  if (!view) FailToFind(title);
  // What no server has is gone with the edit, unless it was perhaps sent.
  const bool wasOffered = edit && edit->kind == EditKind::Create && edit->offered;
  if (!base && !wasOffered) {
    DropEdit(mirror, name);
    return;
  }
  PendingEdit deletion = edit.value_or(PendingEdit{});
  deletion.kind = EditKind::Delete;
  deletion.offered = !base;
  deletion.fields.clear();
  deletion.categories.clear();
  if (edit) {
    Remember(deletion.marks, MarkOfObject(edit->before));
    Remember(deletion.marks, MarkOfObject(edit->after));
  }
  deletion.before = deletion.after = *view;
  if (base) {
    deletion.href = base->key.href;
    deletion.etag = base->key.etag;
    deletion.before = base->bytes;
    Remember(deletion.marks, MarkOfObject(base->bytes));
  }
  Remember(deletion.marks, MarkOfObject(*view));
  SaveEdit(mirror, name, deletion);
}

void ReplaceCategoryInObjects(Mirror& mirror, const CategoryEdit& change) {
  const auto lock = mirror.Files().Lock();
  FinishCategory(mirror);
  bool isThere = false;
  // What cannot be written is told before anything is.
  for (const std::string& name : NamesOfObjects(mirror)) {
    const auto view = ViewOf(ReadEdit(mirror, name), mirror.Object(name));
    if (!view || !MayHaveCategories(*view) || !ReadObject(*view)) continue;
    isThere = WithCategory(*view, change) != *view || isThere;
  }
  if (!isThere) return;
  const Json json{{"from", change.from}, {"to", change.to}, {"time", change.time}};
  mirror.Files().Write(CategoryName, TextOf(json) + "\n", Durability::Now);
  FinishCategory(mirror);
}

void FinishCategory(Mirror& mirror) {
  if (!mirror.Files().SizeOf(CategoryName)) return;
  const auto lock = mirror.Files().Lock();
  const auto text = mirror.Files().Read(CategoryName);
  const Json json = text ? Json::parse(*text, nullptr, false) : Json();
  const CategoryEdit change{TextIn(json, "from"), TextIn(json, "to"), NumberIn(json, "time")};
  if (!change.from.empty()) {
    for (const std::string& name : NamesOfObjects(mirror)) {
      try {
        ReplaceCategory(mirror, name, change);
      } catch (const Error& error) {
        // What others changed meanwhile so that it cannot be written stays as it is.
        if (error.Number() != errors::CalendarFailed) throw;
      }
    }
    mirror.Files().Synchronise();
  }
  mirror.Files().Remove(CategoryName);
}

void FinishCategoryIfPossible(Mirror& mirror) {
  try {
    FinishCategory(mirror);
  } catch (const Error&) {
    // The disk is full, or another program saves for too long.
  }
}

std::vector<std::string> NamesOfObjects(const Mirror& mirror) {
  const std::vector<std::string> waiting = mirror.Files().Names("pending");
  const std::vector<std::string> there = mirror.Files().Names("objects");
  std::vector<std::string> all;
  std::set_union(waiting.begin(), waiting.end(), there.begin(), there.end(),
                 std::back_inserter(all));
  std::erase_if(all, [](const std::string& name) { return !IsObjectName(name); });
  return all;
}

}  // namespace velkor
