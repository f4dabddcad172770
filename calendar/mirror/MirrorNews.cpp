// calendar/mirror/MirrorNews.cpp: a file for each note, and two for each refused edit.
#include "calendar/mirror/MirrorNews.h"

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>
#include <utility>

#include "calendar/ics/file/ShortHash.h"
#include "calendar/mirror/JsonFields.h"
#include "values/Error.h"

namespace velkor {
namespace {

using Json = nlohmann::json;

/// In the order of ItemField.
constexpr const char* FieldWords[] = {"subject", "categories", "place", "text", "time", "reminder"};

std::int64_t Now() {
  return std::chrono::duration_cast<std::chrono::seconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

std::string PathOfNote(const std::string& id) {
  return "notes/" + id;
}

std::string PathOfRefused(const std::string& id, std::string_view extension) {
  return ("refused/" + id).append(extension);
}

[[noreturn]] void FailToFind(const std::string& what) {
  throw Error(errors::CalendarFailed, what + " is no longer kept.", "Calendar");
}

template <typename One>
void SortByTime(std::vector<One>& all) {
  std::stable_sort(all.begin(), all.end(),
                   [](const One& a, const One& b) { return a.time < b.time; });
}

std::optional<WholeNote> ReadNote(const Mirror& mirror, const std::string& id) {
  const auto bytes = IsObjectName(id) ? mirror.Files().Read(PathOfNote(id)) : std::nullopt;
  const std::size_t end = bytes ? bytes->find('\n') : std::string::npos;
  if (end == std::string::npos) return std::nullopt;
  const Json json = Json::parse(bytes->substr(0, end), nullptr, false);
  const auto field = std::find(std::begin(FieldWords), std::end(FieldWords), TextIn(json, "field"));
  if (field == std::end(FieldWords)) return std::nullopt;
  WholeNote whole;
  whole.note = {id,
                TextIn(json, "entryId"),
                TextIn(json, "subject"),
                *field,
                TextIn(json, "kept"),
                TextIn(json, "other"),
                FlagIn(json, "mineKept"),
                NumberIn(json, "time")};
  whole.field = AllItemFields[field - std::begin(FieldWords)];
  whole.object = bytes->substr(end + 1);
  return whole;
}

void WriteRefused(Mirror& mirror, const RefusedEdit& refused) {
  const Json json{{"kind", static_cast<int>(refused.kind)},
                  {"subject", refused.subject},
                  {"start", refused.start.Seconds()},
                  {"reason", refused.reason},
                  {"time", refused.time},
                  {"told", refused.told}};
  mirror.Files().Write(PathOfRefused(refused.id, ".json"), TextOf(json, 2) + "\n", Durability::Now);
}

}  // namespace

void KeepNote(Mirror& mirror, const std::string& name, const PendingEdit& edit,
              const std::string& base, const FieldConflict& conflict) {
  const auto mine = ReadObject(edit.after);
  const auto theirs = ReadObject(base);
  if (!mine || !theirs) return;
  const std::string field = FieldWords[static_cast<std::size_t>(conflict.field)];
  const std::string ours = WordsOf(conflict.field, *mine);
  const std::string other = WordsOf(conflict.field, *theirs);
  const std::string id =
      ShortHash(name + field + std::to_string(edit.revision) + ShortHash(ours) + ShortHash(other));
  const Json json{{"entryId", name},
                  {"subject", theirs->item.fields.subject},
                  {"field", field},
                  {"kept", conflict.mineKept ? ours : other},
                  {"other", conflict.mineKept ? other : ours},
                  {"mineKept", conflict.mineKept},
                  {"time", Now()}};
  mirror.Files().Write(PathOfNote(id),
                       TextOf(json).append("\n").append(conflict.mineKept ? base : edit.after),
                       Durability::Now);
}

std::vector<MirrorNote> NotesOf(const Mirror& mirror) {
  std::vector<MirrorNote> notes;
  for (const std::string& id : mirror.Files().Names("notes")) {
    if (auto whole = ReadNote(mirror, id)) notes.push_back(std::move(whole->note));
  }
  SortByTime(notes);
  return notes;
}

WholeNote NoteOf(const Mirror& mirror, const std::string& id) {
  auto whole = ReadNote(mirror, id);
  if (!whole) FailToFind("The other value");
  return std::move(*whole);
}

void DropNote(Mirror& mirror, const std::string& id) {
  if (IsObjectName(id)) mirror.Files().Remove(PathOfNote(id));
}

void KeepRefused(Mirror& mirror, const std::string& name, EditKind kind, std::string_view object,
                 const std::string& reason) {
  RefusedEdit refused;
  refused.id = ShortHash(name + std::to_string(static_cast<int>(kind)) + ShortHash(object));
  refused.kind = kind;
  refused.reason = reason;
  refused.time = Now();
  if (const auto appointment = ReadObject(object)) {
    refused.subject = appointment->item.fields.subject;
    refused.start = appointment->item.start;
  }
  mirror.Files().Write(PathOfRefused(refused.id, ".ics"), object, Durability::Now);
  WriteRefused(mirror, refused);
}

std::vector<RefusedEdit> RefusedOf(const Mirror& mirror) {
  constexpr std::string_view Extension = ".json";
  std::vector<RefusedEdit> all;
  for (const std::string& name : mirror.Files().Names("refused")) {
    if (!name.ends_with(Extension)) continue;
    const auto text = mirror.Files().Read("refused/" + name);
    const Json json = text ? Json::parse(*text, nullptr, false) : Json();
    RefusedEdit refused;
    refused.id = name.substr(0, name.size() - Extension.size());
    refused.kind = static_cast<EditKind>(std::clamp<std::int64_t>(NumberIn(json, "kind"), 0, 2));
    refused.subject = TextIn(json, "subject");
    if (const Date start = Date::FromSeconds(NumberIn(json, "start")); start.IsValid()) {
      refused.start = start;
    }
    refused.reason = TextIn(json, "reason");
    refused.time = NumberIn(json, "time");
    refused.told = FlagIn(json, "told");
    all.push_back(std::move(refused));
  }
  SortByTime(all);
  return all;
}

void MarkRefusedTold(Mirror& mirror, const std::string& id) {
  const auto lock = mirror.Files().Lock();
  for (RefusedEdit& refused : RefusedOf(mirror)) {
    if (refused.id != id || refused.told) continue;
    refused.told = true;
    WriteRefused(mirror, refused);
  }
}

std::string ObjectOfRefused(const Mirror& mirror, const std::string& id) {
  auto object = IsObjectName(id) ? mirror.Files().Read(PathOfRefused(id, ".ics")) : std::nullopt;
  if (!object) FailToFind("The appointment");
  return std::move(*object);
}

void DropRefusedEdit(Mirror& mirror, const std::string& id) {
  if (!IsObjectName(id)) return;
  mirror.Files().Remove(PathOfRefused(id, ".json"));
  mirror.Files().Remove(PathOfRefused(id, ".ics"));
}

}  // namespace velkor
