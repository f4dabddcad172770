// calendar/mirror/JsonFields.h: reads fields of JSON that may be anything.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace velkor {

/// The field of an object; empty, 0 or false where there is none of this kind.
inline std::string TextIn(const nlohmann::json& json, const char* name) {
  const auto field = json.find(name);
  return field != json.end() && field->is_string() ? field->get<std::string>() : std::string();
}

inline std::int64_t NumberIn(const nlohmann::json& json, const char* name,
                             std::int64_t otherwise = 0) {
  const auto field = json.find(name);
  return field != json.end() && field->is_number_integer() ? field->get<std::int64_t>() : otherwise;
}

inline bool FlagIn(const nlohmann::json& json, const char* name) {
  const auto field = json.find(name);
  return field != json.end() && field->is_boolean() && field->get<bool>();
}

/// As text that is always UTF-8, on one line unless it is indented.
inline std::string TextOf(const nlohmann::json& json, int indent = -1) {
  return json.dump(indent, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace velkor
