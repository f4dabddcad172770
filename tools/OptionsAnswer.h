// tools/OptionsAnswer.h: what the print options are after loading, and after each use of their
// form.
#pragma once

#include <nlohmann/json.hpp>

namespace velkor {

/// The state after loading, then after each of a case's `actions`, with the messages told. `units`
/// and `reprint` click; `key` types the characters of a `text` into a `box`; `ok` and `cancel`
/// press the button, `ok` after it put what it names into the form (`boxes`, `header`, `start`,
/// `end`, `visible`, `format`). A form that was closed is opened again for the next action. Options
/// that cannot be loaded are a failure.
nlohmann::ordered_json AnswerOptions(const nlohmann::ordered_json& json);

}  // namespace velkor
