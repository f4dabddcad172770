// tools/ColourAnswers.h: what the colour store reads from and writes to a calendar's records.
#pragma once

#include <nlohmann/json.hpp>

namespace velkor {

/// The table fetched from a calendar with a case's `current` and `legacy` body (null: no such
/// record), what that did to the stored items ("create", "migrate", "delete", in the order done)
/// and the body of the record once the table is saved again. Throws Error as the store told it.
nlohmann::ordered_json AnswerColours(const nlohmann::ordered_json& json);

/// The names of all `records`, each a subject and a body, in the order of the search.
nlohmann::ordered_json AnswerAllLists(const nlohmann::ordered_json& json);

}  // namespace velkor
