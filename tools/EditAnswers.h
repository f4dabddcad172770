// tools/EditAnswers.h: what the category commands do to a list, tell, and save.
#pragma once

#include <nlohmann/json.hpp>

namespace velkor {

/// For each of a case's `edits` the message told (null for none; of a recolouring the number of
/// warnings), whether the list was saved, and the body of its record afterwards.
nlohmann::ordered_json AnswerEdits(const nlohmann::ordered_json& json);

}  // namespace velkor
