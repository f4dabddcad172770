// tools/XmlAnswer.h: the exported file of a case.
#pragma once

#include <nlohmann/json.hpp>

namespace velkor {

/// The whole file as text, one character for each byte.
nlohmann::ordered_json AnswerXml(const nlohmann::ordered_json& json);

}  // namespace velkor
