// tools/PointerAnswer.cpp: what the pointer does over a laid-out year, action by action.
#include "tools/PointerAnswer.h"

#include <string>

#include "tools/ProbeCase.h"
#include "values/Error.h"
#include "values/IsoDate.h"
#include "view/GridPointer.h"

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;

/// The day after the last one that there is has no text.
std::string TextOf(Date date) {
  if (!date.IsValid()) throw Error(errors::Overflow, "A date lies after the year 9999.");
  return ToIso(date);
}

Json LabelJson(const std::optional<PointerLabel>& label) {
  constexpr std::size_t DateLength = 10;
  Json dates = Json::array();
  if (label) dates.push_back(TextOf(label->from).substr(0, DateLength));
  if (label && label->to) dates.push_back(TextOf(*label->to).substr(0, DateLength));
  return dates;
}

Json MenuJson(const MenuEnabling& menu) {
  return {{"mnuDelete", menu.mnuDelete}, {"mnuEdit", menu.mnuEdit}, {"mnuClear", menu.mnuClear}};
}

Json ReleaseJson(const PointerRelease& release) {
  if (release.range) {
    return {{"range", {TextOf(release.range->start), TextOf(release.range->end)}}};
  }
  if (release.open) return {{"open", *release.open}};
  return nullptr;
}

/// @return what the action hands on; null when that is nothing
Json Act(GridPointer& pointer, const Json& action) {
  const std::string name = action.at(0).get<std::string>();
  if (name == "move") {
    pointer.MouseMove({action.at(1).get<double>(), action.at(2).get<double>()});
    return nullptr;
  }
  if (name == "press") {
    pointer.MouseDown(MouseButton::Left);
    return nullptr;
  }
  if (name == "menu") return MenuJson(*pointer.MouseDown(MouseButton::Right).menu);
  if (name == "release") return ReleaseJson(pointer.MouseUp(MouseButton::Left));
  throw BadCase("\"" + name + "\" is no action of the pointer");
}

}  // namespace

Json AnswerPointer(const Json& json) {
  const YearGrid grid = GridOf(json);
  GridPointer pointer(grid);
  pointer.SetMode(json.at("selectionEnabled").get<bool>() ? SelectionMode::AlwaysSelect
                                                          : SelectionMode::AlwaysOpen);
  Json answer = Json::array();
  for (const Json& action : ListOf(json.at("actions"))) {
    Json result = Act(pointer, action);
    const std::optional<std::size_t> event = pointer.HoverEvent();
    answer.push_back({{"row", pointer.CurrentRow()},
                      {"column", pointer.CurrentColumn()},
                      {"band", pointer.CurrentBand()},
                      {"dragging", pointer.Dragging()},
                      {"event", event ? Json(*event) : Json(nullptr)},
                      {"label", LabelJson(pointer.Label())},
                      {"result", std::move(result)}});
  }
  return answer;
}

}  // namespace velkor
