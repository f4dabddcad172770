// categories/CategoryCommands.cpp: adds, renames, deletes and recolours categories.
#include "categories/CategoryCommands.h"

#include <algorithm>
#include <utility>

#include "categories/AppointmentRename.h"
#include "categories/ColourStore.h"
#include "model/CategoryView.h"
#include "model/Guard.h"
#include "model/WaitPointer.h"
#include "platform/CommonDialogs.h"
#include "platform/MessageBoxes.h"
#include "platform/Outlook.h"
#include "span/CategoryFilter.h"
#include "span/Globals.h"
#include "support/RegIO.h"
#include "values/Text.h"

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

/// A category's place in a list that may be another than the one that was on show when it was
/// chosen; none when it is gone.
std::optional<std::size_t> CategoryCommands::PlaceOf(const Choice& choice,
                                                     const std::vector<Category>& all) {
  const auto is = [&](const Category& category) { return category.name == choice.name; };
  const std::size_t shown = PositionOf(choice.index);
  if (shown < all.size() && is(all[shown])) return shown;
  const auto found = std::find_if(all.begin(), all.end(), is);
  if (found == all.end()) return std::nullopt;
  return static_cast<std::size_t>(found - all.begin());
}

bool CategoryCommands::Show(std::vector<Category> categories, Choice selection) {
  // Drawing tells the host, which may set another one.
  const std::string title = view_.TitleOfCategories();
  view_.ChangeCategories(categories);
  Select(std::move(selection));
  const bool saved = colours_.Save(title, categories);
  unsavedTitle_.reset();
  if (!saved) unsavedTitle_ = title;
  return saved;
}

void CategoryCommands::Store(const Edit& edit, Choice selection) {
  std::vector<Category> all = view_.Categories().All();
  std::optional<std::string> refusal = edit(all);
  if (!refusal) {
    const Held held = HoldCalendar();
    if (held.fault) throw Error(*held.fault);
    if (held.others) refusal = edit(all = *held.others);
    if (!refusal) Show(std::move(all), std::move(selection));
  }
  // Not while others wait for the calendar.
  if (refusal && !refusal->empty()) Tell(platform_.messages, *refusal);
}

/// Another program may have changed the list since it was read: it is read again while that program
/// has to wait.
CategoryCommands::Held CategoryCommands::HoldCalendar() {
  auto [hold, record] = colours_.Hold(view_.TitleOfCategories());
  Held held{std::move(hold), std::nullopt, std::nullopt};
  // What could not be saved the last time is saved now, whatever the calendar has.
  if (!record || unsavedTitle_ == view_.TitleOfCategories()) return held;
  held.fault = record->fault;
  if (record->categories != view_.Categories().All()) held.others = std::move(record->categories);
  return held;
}

void CategoryCommands::New() {
  Guard(platform_.messages, "Error adding a category ", [&] {
    if (!view_.AreCategoriesKnown()) return;
    const std::string title = view_.TitleOfCategories();
    const std::string answer = platform_.inputs.Ask("Enter name of new category", "New Category");
    if (answer.empty() || title != view_.TitleOfCategories() || !view_.AreCategoriesKnown()) return;
    const Edit add = [&](std::vector<Category>& all) {
      const bool keepsLast = !view_.HideNonCategoryItems() && !all.empty();
      all.insert(keepsLast ? all.end() - 1 : all.end(),
                 {Globals::StripControlChars(answer), NewColour});
      return std::nullopt;
    };
    Store(add, {});
  });
}

/// Why a category cannot get a name: another one has it, or the category is gone.
std::optional<std::string> CategoryCommands::RefusalOf(const std::string& name,
                                                       std::optional<std::size_t> place,
                                                       const std::vector<Category>& all) {
  if (!place) return std::string();
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (i != *place && all[i].name == name) return "The category " + name + " already exists";
  }
  return std::nullopt;
}

void CategoryCommands::Rename(std::string_view text, RenameReach reach) {
  const std::string name = Globals::StripControlChars(text);
  Guard(platform_.messages, "Error renaming the category ", [&] {
    const std::optional<Choice> choice = Choose({});
    if (!choice) return;
    const auto refusal = RefusalOf(name, PositionOf(choice->index), view_.Categories().All());
    if (refusal) return Tell(platform_.messages, *refusal);
    if (name == choice->name) return;
    if (reach == RenameReach::Ask) {
      const auto asked = AskForReach(*choice, name);
      if (!asked) return;
      reach = *asked;
    }
    if (reach == RenameReach::Appointments) {
      const std::string told = RenameEverywhere(*choice, name);
      if (!told.empty()) Tell(platform_.messages, told);
      return;
    }
    const Edit rename = [&](std::vector<Category>& all) {
      const auto place = PlaceOf(*choice, all);
      auto taken = RefusalOf(name, place, all);
      if (!taken) all[*place].name = name;
      return taken;
    };
    Store(rename, {});
  });
}

std::optional<RenameReach> CategoryCommands::AskForReach(const Choice& choice,
                                                         const std::string& name) {
  if (!view_.IsCarried(choice.name)) return RenameReach::List;
  const std::string title = view_.TitleOfCategories();
  const MessageAnswer answer = platform_.messages.Show(
      {.text = "Appointments of this year carry the category \"" + choice.name +
               "\".\r\rAre all appointments of the calendar that carry it to take the new name \"" +
               name + "\"? With No only the list of categories is changed.",
       .title = "Rename Category",
       .buttons = MessageButtons::YesNoCancel,
       .icon = MessageIcon::Question});
  if (answer != MessageAnswer::Yes && answer != MessageAnswer::No) return std::nullopt;
  if (title != view_.TitleOfCategories() || !view_.AreCategoriesKnown()) return std::nullopt;
  return answer == MessageAnswer::Yes ? RenameReach::Appointments : RenameReach::List;
}

/// The new name is saved before the first appointment takes it, and the old one goes after the
/// last: whenever this ends, no appointment carries a name that is not in the list.
std::string CategoryCommands::RenameEverywhere(const Choice& choice, const std::string& name) {
  const CategoryRename rename{
      choice.name, name,
      CategorySeparator(RegIO::ListSeparator(platform_.registry, platform_.messages))};
  if (!CanBeCarried(name, rename.separator)) {
    return "No appointment can carry the category \"" + name +
           "\": a name has no blanks around it and no \"" + std::string(Trim(rename.separator)) +
           "\" in it.";
  }
  const std::string title = view_.TitleOfCategories();
  const Held held = HoldCalendar();
  if (held.fault) throw Error(*held.fault);
  std::vector<Category> all = held.others.value_or(view_.Categories().All());
  const auto place = PlaceOf(choice, all);
  if (const auto refusal = RefusalOf(name, place, all)) return *refusal;
  // Before the old one, which may be the catch-all and stays the last then.
  all.insert(all.begin() + static_cast<std::ptrdiff_t>(*place), {name, all[*place].colour});
  if (!Show(std::move(all), {})) return {};

  const WaitPointer wait(platform_.shell);
  if (!RenameInAppointments(rename, *colours_.Folder(), platform_)) {
    return "The renaming was stopped: some appointments may carry \"" + rename.from +
           "\" and others \"" + name + "\". The list keeps both.";
  }
  // Messages were let in meanwhile.
  if (title != view_.TitleOfCategories() || !view_.AreCategoriesKnown()) return {};
  view_.RenameOnShow(rename.from, name);
  std::vector<Category> after = view_.Categories().All();
  const auto old = PlaceOf({static_cast<std::int16_t>(*place + 2), rename.from}, after);
  if (!old) return {};
  after.erase(after.begin() + static_cast<std::ptrdiff_t>(*old));
  Show(std::move(after), {});
  return {};
}

void CategoryCommands::CatDelete(std::string_view name) {
  Guard(platform_.messages, "Error deleting the category ", [&] {
    const std::optional<Choice> choice = Choose(name);
    if (!choice) return;
    const Edit remove = [&](std::vector<Category>& all) -> std::optional<std::string> {
      const auto place = PlaceOf(*choice, all);
      if (!place) return std::string();
      if (all.size() == 1) {
        return "Cannot delete all the categories; at least one must be retained.";
      }
      all.erase(all.begin() + static_cast<std::ptrdiff_t>(*place));
      return std::nullopt;
    };
    Store(remove, {});
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
    const Edit recolour = [&](std::vector<Category>& all) -> std::optional<std::string> {
      const auto place = PlaceOf(*choice, all);
      if (!place) return std::string();
      all[*place].colour = *picked;
      return std::nullopt;
    };
    Store(recolour, selected_);
  });
}

}  // namespace velkor
