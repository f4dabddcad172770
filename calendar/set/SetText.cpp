// calendar/set/SetText.cpp: fields of the JSON, their kinds, and those that are kept unknown.
#include "calendar/set/SetText.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "values/ColourText.h"
#include "values/Error.h"

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;

/// The version of the file's form that this program writes; it reads no later one.
constexpr std::int64_t Version = 1;
constexpr const char* VersionField = "yearplan";
constexpr const char* ColoursField = "colours";
constexpr const char* DefaultField = "default";
constexpr const char* CalendarsField = "calendars";
constexpr const char* IdField = "id";
constexpr const char* UserField = "user";
constexpr const char* NameField = "name";
constexpr const char* ColourField = "colour";
constexpr const char* ShownField = "shown";
constexpr const char* BackgroundField = "background";

/// The field that says of which kind a calendar is, and where.
constexpr std::array<std::pair<const char*, SourceKind>, 3> Kinds{{
    {"file", SourceKind::File},
    {"address", SourceKind::Address},
    {"server", SourceKind::Server},
}};

[[noreturn]] void Fail(const std::string& path, const std::string& why) {
  throw Error(errors::CalendarFailed, "The set of calendars " + path + " cannot be read: " + why,
              "Calendar");
}

/// "line 3, column 7" of the byte at a place, counted from 1.
std::string LineAt(std::string_view bytes, std::size_t place) {
  const std::string_view before = bytes.substr(0, place > 0 ? place - 1 : 0);
  const auto line = std::count(before.begin(), before.end(), '\n') + 1;
  const std::size_t column = before.size() - (before.rfind('\n') + 1) + 1;
  return "line " + std::to_string(line) + ", column " + std::to_string(column);
}

Json ParseJson(std::string_view bytes, const std::string& path) {
  // What is nested deeper is nobody's set, and would take the stack when it is written.
  constexpr int Deepest = 32;
  const auto watch = [&](int depth, Json::parse_event_t, const Json&) {
    if (depth > Deepest) Fail(path, "its JSON is nested too deeply.");
    return true;
  };
  try {
    return Json::parse(bytes, watch);
  } catch (const Json::parse_error& error) {
    Fail(path, "it is no valid JSON at " + LineAt(bytes, error.byte) + ".");
  } catch (const Json::out_of_range&) {
    Fail(path, "a number in it is too large.");
  }
}

/// Takes the fields of one JSON object; those that nobody took are left.
class Fields {
 public:
  /// @param where  goes before a field's name in messages
  Fields(Json object, std::string where, const std::string& path)
      : object_(std::move(object)), where_(std::move(where)), path_(path) {
    if (!object_.is_object()) {
      Fail(path_, (where_.empty() ? "it" : where_) + " is no object in braces.");
    }
  }

  bool Has(const char* name) const { return object_.contains(name); }
  /// Null for a field that is not there.
  Json Take(const char* name) {
    const auto found = object_.find(name);
    if (found == object_.end()) return nullptr;
    Json value = std::move(*found);
    object_.erase(found);
    return value;
  }
  std::string Text(const char* name) {
    const Json value = Take(name);
    if (value.is_null()) return {};
    if (!value.is_string()) Refuse(name, "is no text in quotes");
    return value.get<std::string>();
  }
  bool Truth(const char* name, bool fallback) {
    const Json value = Take(name);
    if (value.is_null()) return fallback;
    if (!value.is_boolean()) Refuse(name, "is neither true nor false");
    return value.get<bool>();
  }
  std::string Rest() const { return object_.empty() ? std::string() : object_.dump(); }
  [[noreturn]] void Refuse(const char* name, const std::string& why) const {
    Fail(path_, "the field " + where_ + (where_.empty() ? "" : ".") + name + " " + why + ".");
  }

 private:
  Json object_;
  std::string where_;
  const std::string& path_;
};

std::string FolderOf(const std::string& path) {
  return QFileInfo(QString::fromStdString(path)).absolutePath().toStdString();
}

std::string AbsoluteFrom(const std::string& folder, const std::string& path) {
  const QDir from(QString::fromStdString(folder));
  return QDir::cleanPath(from.absoluteFilePath(QString::fromStdString(path))).toStdString();
}

/// From the folder where the path lies at or below it, else absolute.
std::string RelativeFrom(const std::string& folder, const std::string& path) {
  const std::string start = folder.ends_with('/') ? folder : folder + "/";
  return path.starts_with(start) ? path.substr(start.size()) : path;
}

bool IsId(const std::string& text) {
  return text.size() == 8 && std::all_of(text.begin(), text.end(), [](char c) {
           return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
         });
}

void ReadLocation(Fields& fields, SetSource& source, const std::string& folder) {
  int given = 0;
  for (const auto& [name, kind] : Kinds) {
    if (!fields.Has(name)) continue;
    ++given;
    source.kind = kind;
    source.location = fields.Text(name);
    if (source.location.empty()) fields.Refuse(name, "is empty");
  }
  if (given != 1) fields.Refuse("file", "(or address, or server) is needed, just one of them");
  if (source.kind == SourceKind::File) source.location = AbsoluteFrom(folder, source.location);
}

SetSource ReadSource(Fields fields, const std::string& folder) {
  SetSource source;
  source.id = fields.Text(IdField);
  if (!source.id.empty() && !IsId(source.id)) {
    fields.Refuse(IdField, "is not 8 hexadecimal digits in lower case");
  }
  ReadLocation(fields, source, folder);
  source.user = fields.Text(UserField);
  source.name = fields.Text(NameField);
  const std::string colour = fields.Text(ColourField);
  if (!colour.empty()) {
    source.colour = colour.front() == '#' ? ColourOfHex(colour.substr(1)) : std::nullopt;
    if (!source.colour) fields.Refuse(ColourField, "is no colour as in \"#3366CC\"");
  }
  source.shown = fields.Truth(ShownField, true);
  source.background = fields.Truth(BackgroundField, false);
  source.more = fields.Rest();
  return source;
}

void ReadSources(const Json& list, const std::string& path, CalendarSet& set) {
  const std::string folder = FolderOf(path);
  std::set<std::string> ids;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const std::string where = std::string(CalendarsField) + "[" + std::to_string(i) + "]";
    SetSource source = ReadSource(Fields(list[i], where, path), folder);
    if (!source.id.empty() && !ids.insert(source.id).second) {
      Fail(path, "the field " + where + "." + IdField + " is that of another calendar, too.");
    }
    set.sources.push_back(std::move(source));
  }
  GiveMissingIds(set);
}

BarColours ReadColours(Fields& fields) {
  const std::string text = fields.Text(ColoursField);
  if (text.empty() || text == "category") return BarColours::Category;
  if (text != "calendar") fields.Refuse(ColoursField, "is neither \"category\" nor \"calendar\"");
  return BarColours::Calendar;
}

void CheckVersion(Fields& fields, const std::string& path) {
  const Json version = fields.Take(VersionField);
  if (!version.is_number_integer() || version < 1) {
    fields.Refuse(VersionField, "is not the number of the form, as in \"yearplan\": 1");
  }
  if (version > Version) Fail(path, "a later version of this program made it.");
}

void AddMore(Json& object, const std::string& more) {
  if (more.empty()) return;
  object.update(Json::parse(more));
}

Json JsonOf(const SetSource& source, const std::string& folder) {
  Json object;
  object[IdField] = source.id;
  for (const auto& [name, kind] : Kinds) {
    if (kind != source.kind) continue;
    const bool isFile = kind == SourceKind::File;
    object[name] = isFile ? RelativeFrom(folder, source.location) : source.location;
  }
  if (!source.user.empty()) object[UserField] = source.user;
  if (!source.name.empty()) object[NameField] = source.name;
  if (source.colour) object[ColourField] = "#" + ToHex(*source.colour);
  if (!source.shown) object[ShownField] = false;
  if (source.background) object[BackgroundField] = true;
  AddMore(object, source.more);
  return object;
}

}  // namespace

CalendarSet ParseSet(std::string_view bytes, const std::string& path) {
  constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(ByteOrderMark)) bytes.remove_prefix(ByteOrderMark.size());
  Fields fields(ParseJson(bytes, path), "", path);
  CheckVersion(fields, path);
  CalendarSet set;
  set.path = path;
  set.barColours = ReadColours(fields);
  set.defaultSource = fields.Text(DefaultField);
  const Json list = fields.Take(CalendarsField);
  if (!list.is_null() && !list.is_array()) fields.Refuse(CalendarsField, "is no list in brackets");
  ReadSources(list, path, set);
  set.more = fields.Rest();
  return set;
}

std::string SetText(const CalendarSet& set) {
  const std::string folder = FolderOf(set.path);
  Json object;
  object[VersionField] = Version;
  object[ColoursField] = set.barColours == BarColours::Calendar ? "calendar" : "category";
  if (!set.defaultSource.empty()) object[DefaultField] = set.defaultSource;
  object[CalendarsField] = Json::array();
  for (const SetSource& source : set.sources) {
    object[CalendarsField].push_back(JsonOf(source, folder));
  }
  AddMore(object, set.more);
  try {
    return object.dump(2) + "\n";
  } catch (const Json::type_error&) {
    throw Error(errors::BadFileName,
                "The set of calendars " + set.path +
                    " could not be saved: a name or path in it is not written in UTF-8.",
                "Calendar");
  }
}

}  // namespace velkor
