// tools/PagesAnswer.h: how a year is cut into printed pages, and what their preview shows.
#pragma once

#include <nlohmann/json.hpp>

namespace velkor {

/// The plan of a case's pages (a failure where there is none to print by), its title, and page,
/// buttons and status line after the case's `clicks`.
nlohmann::ordered_json AnswerPages(const nlohmann::ordered_json& json);

}  // namespace velkor
