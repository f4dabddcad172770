// categories/CategoryCommands.cpp: adds, renames, deletes and recolours categories.
#include "categories/CategoryCommands.h"

#include <utility>

#include "categories/ColourStore.h"
#include "model/CategoryView.h"
#include "model/Guard.h"
#include "platform/CommonDialogs.h"
#include "platform/MessageBoxes.h"
#include "view/span/Globals.h"

namespace velkor {
namespace {

constexpr Colour NewColour{0xFF0000};

constexpr std::size_t PositionOf(std::int16_t index) {
  return static_cast<std::size_t>(index - 1);
}

}  // namespace

CategoryCommands::CategoryCommands(CategoryView& view, ColourStore& colours,
                                   const Platform& platform)
    : view_(view), colours_(colours), platform_(platform) {}

/// Whatever is shown to the user lets the rest of the program run: the table may be another then.
bool CategoryCommands::Stands(const Choice& choice) const {
  const CategoryTable& categories = view_.Categories();
  return choice.index > 0 && choice.index <= categories.Count() &&
         categories.At(choice.index).name == choice.name;
}

std::int16_t CategoryCommands::Selected() const {
  return Stands(selected_) ? selected_.index : std::int16_t{0};
}

void CategoryCommands::Select(int index) {
  const CategoryTable& categories = view_.Categories();
  const bool known = index > 0 && index <= categories.Count();
  Select(known ? Choice{static_cast<std::int16_t>(index), categories.At(index).name} : Choice{});
}

void CategoryCommands::Select(Choice choice) {
  const bool changes = choice.index != selected_.index || choice.name != selected_.name;
  selected_ = std::move(choice);
  if (changes && onSelectionChange) onSelectionChange();
}

std::optional<CategoryCommands::Choice> CategoryCommands::Choose(std::string_view name) {
  Choice choice;
  if (name.empty()) {
    choice = selected_;
    if (!Stands(choice) || !view_.AreCategoriesKnown() || !Stands(choice)) return std::nullopt;
    return choice;
  }
  choice.name = name;
  if (!view_.AreCategoriesKnown()) return std::nullopt;
  choice.index = view_.Categories().IndexOf(choice.name);
  if (choice.index == 0) return std::nullopt;
  Select(choice);
  return choice;
}

bool CategoryCommands::IsTaken(const Choice& choice,
                               const std::function<bool(const Category&)>& matches) const {
  const CategoryTable& categories = view_.Categories();
  for (int index = 1; index <= categories.Count(); ++index) {
    if (index != choice.index && matches(categories.At(index))) return true;
  }
  return false;
}

void CategoryCommands::Store(const std::vector<Category>& categories, Choice selection) {
  // Drawing tells the host, which may set another one.
  const std::string title = view_.TitleOfCategories();
  view_.ChangeCategories(categories);
  Select(std::move(selection));
  colours_.Save(title, categories);
}

void CategoryCommands::New() {
  Guard(platform_.messages, "Error adding a category ", [&] {
    if (!view_.AreCategoriesKnown()) return;
    const std::string title = view_.TitleOfCategories();
    const std::string answer = platform_.inputs.Ask("Enter name of new category", "New Category");
    if (answer.empty() || title != view_.TitleOfCategories() || !view_.AreCategoriesKnown()) return;
    std::vector<Category> all = view_.Categories().All();
    const bool keepsLast = !view_.HideNonCategoryItems() && !all.empty();
    all.insert(keepsLast ? all.end() - 1 : all.end(),
               {Globals::StripControlChars(answer), NewColour});
    Store(all, {});
  });
}

void CategoryCommands::Rename(std::string_view text) {
  const std::string name = Globals::StripControlChars(text);
  Guard(platform_.messages, "Error renaming the category ", [&] {
    const std::optional<Choice> choice = Choose({});
    if (!choice) return;
    if (IsTaken(*choice, [&](const Category& other) { return other.name == name; })) {
      Tell(platform_.messages, "The category " + name + " already exists");
      return;
    }
    if (name == choice->name) return;
    std::vector<Category> all = view_.Categories().All();
    all[PositionOf(choice->index)].name = name;
    Store(all, {});
  });
}

void CategoryCommands::CatDelete(std::string_view name) {
  Guard(platform_.messages, "Error deleting the category ", [&] {
    const std::optional<Choice> choice = Choose(name);
    if (!choice) return;
    std::vector<Category> all = view_.Categories().All();
    if (all.size() == 1) {
      Tell(platform_.messages, "Cannot delete all the categories; at least one must be retained.");
      return;
    }
    all.erase(all.begin() + choice->index - 1);
    Store(all, {});
  });
}

/// None when the user cancels, or when the category is gone meanwhile.
std::optional<Colour> CategoryCommands::PickColour(const Choice& choice) {
  while (Stands(choice)) {
    const auto picked = platform_.dialogs.ShowColour(view_.Categories().At(choice.index).colour);
    if (!picked || !Stands(choice)) break;
    if (!IsTaken(choice, [&](const Category& other) { return other.colour == *picked; })) {
      return picked;
    }
    platform_.messages.Show({.text = "This colour has already been used.",
                             .title = "Category Colour Picker",
                             .icon = MessageIcon::Exclamation});
  }
  return std::nullopt;
}

void CategoryCommands::CatColour(std::string_view name) {
  Guard(platform_.messages, "Error changing the colour ", [&] {
    const std::optional<Choice> choice = Choose(name);
    if (!choice) return;
    const std::string title = view_.TitleOfCategories();
    const std::optional<Colour> picked = PickColour(*choice);
    // Of another title's list the user has seen nothing.
    if (!picked || title != view_.TitleOfCategories() || !view_.AreCategoriesKnown()) return;
    if (!Stands(*choice)) return;
    std::vector<Category> all = view_.Categories().All();
    all[PositionOf(choice->index)].colour = *picked;
    Store(all, selected_);
  });
}

}  // namespace velkor
