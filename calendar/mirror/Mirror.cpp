// calendar/mirror/Mirror.cpp: objects after a line of JSON, their names, and the state.
#include "calendar/mirror/Mirror.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "calendar/ics/file/ShortHash.h"
#include "calendar/ics/read/IcsAppointments.h"
#include "calendar/mirror/JsonFields.h"
#include "calendar/mirror/ObjectText.h"
#include "values/Text.h"

namespace velkor {
namespace {

using Json = nlohmann::json;

constexpr const char* StateName = "state.json";
/// Longer than any server's names.
constexpr std::size_t LongestHeader = std::size_t{64} << 10;

std::string PathOfObject(const std::string& name) {
  return "objects/" + name;
}

}  // namespace

bool IsObjectName(std::string_view name) {
  constexpr std::size_t Longest = 100;
  return !name.empty() && name.size() <= Longest &&
         std::all_of(name.begin(), name.end(),
                     [](char c) { return IsDigit(c) || (c >= 'a' && c <= 'f') || c == '-'; });
}

struct Mirror::Header {
  std::string href;
  std::string etag;
  /// Of the object itself, and where it begins in the file.
  std::uint64_t size = 0;
  std::size_t begin = 0;
};

MirrorState Mirror::State() const {
  constexpr std::size_t Longest = std::size_t{1} << 20;
  const auto text = files_.Read(StateName, Longest);
  const Json json = text ? Json::parse(*text, nullptr, false) : Json();
  MirrorState state;
  state.displayName = TextIn(json, "name");
  state.colour = TextIn(json, "colour");
  state.readOnly = FlagIn(json, "readOnly");
  state.syncToken = TextIn(json, "syncToken");
  state.ctag = TextIn(json, "ctag");
  state.synchronised = NumberIn(json, "synchronised");
  state.trouble = TextIn(json, "trouble");
  state.offline = FlagIn(json, "offline");
  return state;
}

void Mirror::SetState(const MirrorState& state) {
  const MirrorState before = State();
  if (state == before) return;
  if (state.syncToken != before.syncToken || state.ctag != before.ctag) files_.Synchronise();
  const Json json{{"name", state.displayName},  {"colour", state.colour},
                  {"readOnly", state.readOnly}, {"syncToken", state.syncToken},
                  {"ctag", state.ctag},         {"synchronised", state.synchronised},
                  {"trouble", state.trouble},   {"offline", state.offline}};
  files_.Write(StateName, TextOf(json, 2) + "\n", Durability::Now);
}

void Mirror::ForgetToken() {
  const auto lock = files_.Lock();
  MirrorState state = State();
  state.syncToken.clear();
  state.ctag.clear();
  SetState(state);
}

/// None for bytes that do not begin with a header.
std::optional<Mirror::Header> Mirror::ReadHeader(std::string_view bytes) {
  const std::size_t end = bytes.find('\n');
  if (end == std::string_view::npos) return std::nullopt;
  const Json json = Json::parse(bytes.substr(0, end), nullptr, false);
  const std::int64_t size = NumberIn(json, "size", -1);
  Header header{TextIn(json, "href"), TextIn(json, "etag"), static_cast<std::uint64_t>(size),
                end + 1};
  if (header.href.empty() || size < 0) return std::nullopt;
  return header;
}

std::optional<Mirror::Header> Mirror::HeaderOf(const std::string& name) const {
  constexpr std::size_t Usual = 1024;
  const std::string path = PathOfObject(name);
  auto bytes = files_.Read(path, Usual);
  if (bytes && bytes->size() == Usual && bytes->find('\n') == std::string::npos) {
    bytes = files_.Read(path, LongestHeader);
  }
  const auto header = bytes ? ReadHeader(*bytes) : std::nullopt;
  const auto size = header ? files_.SizeOf(path) : std::nullopt;
  return size && *size == header->begin + header->size ? header : std::nullopt;
}

std::vector<ObjectKey> Mirror::Objects() {
  std::vector<ObjectKey> keys;
  bool areWhole = true;
  for (std::string& name : files_.Names("objects")) {
    if (!IsObjectName(name)) continue;
    if (auto header = HeaderOf(name)) {
      keys.push_back({std::move(name), std::move(header->href), std::move(header->etag)});
    } else {
      areWhole = areWhole && !IsDamaged(name);
    }
  }
  if (!areWhole) ForgetToken();
  return keys;
}

std::optional<MirrorObject> Mirror::Object(const std::string& name) const {
  auto bytes = IsObjectName(name) ? files_.Read(PathOfObject(name)) : std::nullopt;
  auto header = bytes ? ReadHeader(*bytes) : std::nullopt;
  if (!header || bytes->size() != header->begin + header->size) return std::nullopt;
  bytes->erase(0, header->begin);
  return MirrorObject{{name, std::move(header->href), std::move(header->etag)}, std::move(*bytes)};
}

std::optional<ObjectKey> Mirror::Key(const std::string& name) const {
  auto header = IsObjectName(name) ? HeaderOf(name) : std::nullopt;
  if (!header) return std::nullopt;
  return ObjectKey{name, std::move(header->href), std::move(header->etag)};
}

bool Mirror::IsDamaged(const std::string& name) const {
  return IsObjectName(name) && files_.SizeOf(PathOfObject(name)) && !HeaderOf(name);
}

std::unordered_map<std::string, std::string>& Mirror::Index() {
  if (!index_) {
    index_.emplace();
    for (ObjectKey& key : Objects()) index_->emplace(std::move(key.href), std::move(key.name));
  }
  return *index_;
}

/// @param bytes  of the object that lies there
std::string Mirror::NameFor(const std::string& href, std::string_view bytes) {
  const auto isFree = [&](const std::string& name) {
    const auto header = HeaderOf(name);
    return !header || header->href == href;
  };
  const auto known = Index().find(href);
  if (known != Index().end() && isFree(known->second)) return known->second;
  const std::string uid = UidOfObject(bytes);
  if (!uid.empty()) {
    if (std::string name = EntryIdOfUid(uid); isFree(name)) return name;
  }
  return ShortHash(href);
}

ObjectKey Mirror::Put(const std::string& href, const std::string& etag, std::string_view bytes,
                      Durability when) {
  const auto lock = files_.Lock();
  ObjectKey key{NameFor(href, bytes), href, etag};
  std::string text = TextOf(Json{{"href", href}, {"etag", etag}, {"size", bytes.size()}});
  files_.Write(PathOfObject(key.name), text.append("\n").append(bytes), when);
  Index()[href] = key.name;
  return key;
}

void Mirror::Remove(const std::string& href) {
  const auto lock = files_.Lock();
  const auto known = Index().find(href);
  if (known == Index().end()) return;
  const auto header = HeaderOf(known->second);
  if (header && header->href == href) files_.Remove(PathOfObject(known->second));
  Index().erase(known);
}

std::string Mirror::Revision() const {
  return files_.MarkOf({"objects", "pending"});
}

std::string Mirror::NewsRevision() const {
  return files_.MarkOf({"objects", "pending", "notes", "refused"});
}

}  // namespace velkor
