// tools/ProbeCase.h: the parts of the probe's cases as the core's own types.
#pragma once

#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "model/CalEvent.h"
#include "model/CategoryTable.h"
#include "platform/headless/MemorySettings.h"
#include "span/CategoryFilter.h"
#include "span/DisplaySpan.h"
#include "values/Date.h"
#include "view/YearGrid.h"

namespace velkor {

/// What makes a case malformed, in words for its sender. The functions here throw it, or what the
/// JSON library throws.
class BadCase : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A whole number within bounds; a conversion alone would cut and wrap.
int WholeNumber(const nlohmann::ordered_json& json, int least = std::numeric_limits<int>::min(),
                int most = std::numeric_limits<int>::max());
/// The list or object itself; its entries may be walked.
const nlohmann::ordered_json& ListOf(const nlohmann::ordered_json& json);
const nlohmann::ordered_json& ObjectOf(const nlohmann::ordered_json& json);
/// A settings store that holds these print settings by their keys.
MemorySettings PrintSettingsOf(const nlohmann::ordered_json& store);
Date DateOf(const nlohmann::ordered_json& json);
DisplaySpan SpanOf(const nlohmann::ordered_json& view);
CategoryFilter FilterOf(const nlohmann::ordered_json& separator, const std::string& text,
                        bool matchAll);
/// Derived fields are not set.
std::vector<CalEvent> EventsOf(const nlohmann::ordered_json& json);
/// Categories by their names and colours.
CategoryTable TableOf(const nlohmann::ordered_json& json);
/// One character for each byte.
std::string TextOfBytes(std::string_view bytes);
/// The laid-out year of a case with `view`, `separator`, `filter`, `categories`, `events` and the
/// options; it has no size yet.
YearGrid YearOf(const nlohmann::ordered_json& json);
/// The same, sized to the case's `surface`.
YearGrid GridOf(const nlohmann::ordered_json& json);

}  // namespace velkor
