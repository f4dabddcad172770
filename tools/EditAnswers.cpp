// tools/EditAnswers.cpp: what the category commands do to a list, tell, and save.
#include "tools/EditAnswers.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "categories/CategoryCommands.h"
#include "categories/ColourList.h"
#include "model/CategoryView.h"
#include "model/ColourRecord.h"
#include "tools/ColourCalendar.h"
#include "tools/ProbeCase.h"

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;

/// Categories that nobody looks at.
class EditedCategories : public CategoryView {
 public:
  EditedCategories(CategoryTable table, bool hideNonCategory)
      : table_(std::move(table)), hideNonCategory_(hideNonCategory) {}

  const CategoryTable& Categories() const override { return table_; }
  const std::string& TitleOfCategories() const override { return title_; }
  bool HideNonCategoryItems() const override { return hideNonCategory_; }
  bool AreCategoriesKnown() override { return true; }
  void ChangeCategories(std::vector<Category> categories) override {
    table_ = CategoryTable(std::move(categories));
  }
  bool IsCarried(std::string_view) const override { return false; }
  void RenameOnShow(std::string_view, std::string_view) override {}

 private:
  CategoryTable table_;
  bool hideNonCategory_;
  std::string title_{ColourCalendar::Title};
};

/// What the picker answers, in turn; once they ran out it is cancelled.
void Script(ScriptedDialogs& dialogs, const Json& picks) {
  dialogs.colours.clear();
  for (const Json& pick : ListOf(picks)) {
    dialogs.colours.push_back(pick.is_null() ? std::optional<Colour>() : Colour{WholeNumber(pick)});
  }
}

void Run(CategoryCommands& commands, HeadlessSeams& seams, const Json& edit) {
  const std::string kind = edit.at("do").get<std::string>();
  if (kind != "new") commands.Select(WholeNumber(edit.at("index")));
  if (kind == "new") {
    seams.inputs.lines = {edit.at("name").get<std::string>()};
    commands.New();
  } else if (kind == "rename") {
    commands.Rename(edit.at("name").get<std::string>());
  } else if (kind == "delete") {
    commands.CatDelete();
  } else if (kind == "colour") {
    Script(seams.dialogs, edit.at("picks"));
    commands.CatColour();
  } else {
    throw BadCase("unknown edit \"" + kind + "\"");
  }
}

Json Told(const std::vector<std::string>& told, bool counted) {
  if (counted) return told.size();
  return told.empty() ? Json() : Json(told.front());
}

}  // namespace

Json AnswerEdits(const Json& json) {
  EditedCategories categories(TableOf(json.at("categories")),
                              json.at("hideNonCategory").get<bool>());
  ColourCalendar calendar;
  calendar.Add(colour_record::SubjectOf(ColourCalendar::Title),
               ColourListText(categories.Categories().All()));
  CategoryCommands commands(categories, calendar.Colours(), calendar.AsPlatform());

  Json answer = Json::array();
  for (const Json& edit : ListOf(json.at("edits"))) {
    calendar.messages.told.clear();
    const int visits = calendar.visits;
    Run(commands, calendar.seams, edit);
    // The commands go to the calendar for nothing else.
    answer.push_back({{"told", Told(calendar.messages.told, edit.at("do") == "colour")},
                      {"saved", calendar.visits > visits},
                      {"body", calendar.BodyOf(ColourCalendar::Title)}});
  }
  return answer;
}

}  // namespace velkor
