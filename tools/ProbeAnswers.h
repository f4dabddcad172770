// tools/ProbeAnswers.h: answers to the probe's cases, by the core's own functions.
#pragma once

#include <string>
#include <string_view>

namespace velkor {

/// Answers one JSON case with one line of JSON. An error that the product itself describes is
/// {"failure": text}; an unknown kind or a malformed case is {"error": what is wrong}. Never
/// throws.
std::string AnswerCase(std::string_view line);

}  // namespace velkor
