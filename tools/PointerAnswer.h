// tools/PointerAnswer.h: what the pointer does over a laid-out year, action by action.
#pragma once

#include <nlohmann/json.hpp>

namespace velkor {

/// The state after each of a case's `actions`: `["move", x, y]`, `["press"]`, `["release"]` (of the
/// left button) and `["menu"]` (a press of the right one). Throws BadCase for others.
nlohmann::ordered_json AnswerPointer(const nlohmann::ordered_json& json);

}  // namespace velkor
