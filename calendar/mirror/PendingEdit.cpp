// calendar/mirror/PendingEdit.cpp: one line of JSON, the object before, the object after.
#include "calendar/mirror/PendingEdit.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>

#include "calendar/ics/file/ShortHash.h"
#include "calendar/mirror/JsonFields.h"

namespace velkor {
namespace {

using Json = nlohmann::json;

constexpr std::size_t LongestHeader = std::size_t{1} << 20;

constexpr const char* KindNames[] = {"create", "change", "delete"};
constexpr const char* FieldNames[] = {"subject", "categories", "location",
                                      "body",    "times",      "reminder"};

std::string PathOfEdit(const std::string& name) {
  return "pending/" + name;
}

template <std::size_t Count>
std::optional<std::size_t> PlaceOf(const char* const (&names)[Count], const std::string& name) {
  const auto found = std::find(std::begin(names), std::end(names), name);
  if (found == std::end(names)) return std::nullopt;
  return static_cast<std::size_t>(found - std::begin(names));
}

std::vector<std::string> TextsIn(const Json& json, const char* name) {
  std::vector<std::string> texts;
  const auto list = json.find(name);
  if (list == json.end() || !list->is_array()) return texts;
  for (const Json& text : *list) {
    if (text.is_string()) texts.push_back(text.get<std::string>());
  }
  return texts;
}

/// Within what can be added to another without harm.
std::int64_t TimeIn(const Json& json) {
  constexpr std::int64_t Farthest = std::int64_t{1} << 40;
  return std::clamp(NumberIn(json, "time"), -Farthest, Farthest);
}

Json HeaderOf(const PendingEdit& edit) {
  Json fields = Json::object();
  for (const auto& [field, made] : edit.fields) {
    fields[FieldNames[static_cast<std::size_t>(field)]] = {{"time", made.time},
                                                           {"passed", made.passed}};
  }
  Json categories = Json::array();
  for (const CategoryEdit& made : edit.categories) {
    categories.push_back({{"from", made.from}, {"to", made.to}, {"time", made.time}});
  }
  return {{"kind", KindNames[static_cast<std::size_t>(edit.kind)]},
          {"revision", edit.revision},
          {"first", edit.first},
          {"href", edit.href},
          {"etag", edit.etag},
          {"offered", edit.offered},
          {"fields", fields},
          {"categories", categories},
          {"marks", edit.marks},
          {"before", edit.before.size()},
          {"after", edit.after.size()}};
}

void ReadFields(const Json& json, PendingEdit& edit) {
  if (const auto fields = json.find("fields"); fields != json.end() && fields->is_object()) {
    for (const auto& [name, made] : fields->items()) {
      const auto field = PlaceOf(FieldNames, name);
      if (!field) continue;
      edit.fields[static_cast<ItemField>(*field)] = {TimeIn(made), TextsIn(made, "passed")};
    }
  }
  const auto categories = json.find("categories");
  if (categories == json.end() || !categories->is_array()) return;
  for (const Json& made : *categories) {
    edit.categories.push_back({TextIn(made, "from"), TextIn(made, "to"), TimeIn(made)});
  }
}

struct EditHeader {
  /// Without the two objects.
  PendingEdit edit;
  /// Where they begin, and their sizes.
  std::size_t begin = 0;
  std::uint64_t before = 0;
  std::uint64_t after = 0;
};

/// None for bytes that do not begin with the line of an edit.
std::optional<EditHeader> DecodeHeader(std::string_view bytes) {
  const std::size_t end = bytes.substr(0, LongestHeader).find('\n');
  if (end == std::string_view::npos) return std::nullopt;
  const Json json = Json::parse(bytes.substr(0, end), nullptr, false);
  const auto kind = PlaceOf(KindNames, TextIn(json, "kind"));
  if (!kind) return std::nullopt;
  EditHeader header{{},
                    end + 1,
                    static_cast<std::uint64_t>(NumberIn(json, "before", -1)),
                    static_cast<std::uint64_t>(NumberIn(json, "after", -1))};
  PendingEdit& edit = header.edit;
  edit.kind = static_cast<EditKind>(*kind);
  edit.revision = static_cast<std::uint64_t>(NumberIn(json, "revision"));
  edit.first = static_cast<std::uint64_t>(NumberIn(json, "first"));
  edit.href = TextIn(json, "href");
  edit.etag = TextIn(json, "etag");
  edit.offered = FlagIn(json, "offered");
  edit.marks = TextsIn(json, "marks");
  ReadFields(json, edit);
  return header;
}

}  // namespace

std::string EncodeEdit(const PendingEdit& edit) {
  return TextOf(HeaderOf(edit)).append("\n").append(edit.before).append(edit.after);
}

std::optional<PendingEdit> DecodeEdit(std::string_view bytes) {
  auto header = DecodeHeader(bytes);
  if (!header) return std::nullopt;
  const std::string_view body = bytes.substr(header->begin);
  if (header->before > body.size() || body.size() - header->before != header->after) {
    return std::nullopt;
  }
  header->edit.before = body.substr(0, header->before);
  header->edit.after = body.substr(header->before);
  return std::move(header->edit);
}

std::string MarkOfObject(std::string_view bytes) {
  const auto appointment = ReadObject(bytes);
  return appointment ? appointment->item.contentMark : ShortHash(bytes);
}

std::optional<PendingEdit> ReadEdit(const Mirror& mirror, const std::string& name) {
  if (!IsObjectName(name)) return std::nullopt;
  const auto bytes = mirror.Files().Read(PathOfEdit(name));
  return bytes ? DecodeEdit(*bytes) : std::nullopt;
}

std::optional<PendingEdit> ReadEditHeader(const Mirror& mirror, const std::string& name) {
  if (!IsObjectName(name)) return std::nullopt;
  for (const std::size_t most : {std::size_t{4} << 10, LongestHeader}) {
    const auto bytes = mirror.Files().Read(PathOfEdit(name), most);
    auto header = bytes ? DecodeHeader(*bytes) : std::nullopt;
    if (header) return std::move(header->edit);
  }
  return std::nullopt;
}

void SaveEdit(Mirror& mirror, const std::string& name, PendingEdit& edit, Durability when) {
  const auto now = std::chrono::duration_cast<std::chrono::nanoseconds>(
      std::chrono::system_clock::now().time_since_epoch());
  edit.revision = std::max(edit.revision + 1, static_cast<std::uint64_t>(now.count()));
  if (edit.first == 0) edit.first = edit.revision;
  mirror.Files().Write(PathOfEdit(name), EncodeEdit(edit), when);
}

void DropEdit(Mirror& mirror, const std::string& name) {
  mirror.Files().Remove(PathOfEdit(name));
}

}  // namespace velkor
