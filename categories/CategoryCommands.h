// categories/CategoryCommands.h: adds, renames, deletes and recolours categories.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/CategoryTable.h"
#include "platform/Platform.h"
#include "values/Error.h"

namespace velkor {

class CategoryView;
class ColourStore;

/// What a category's new name reaches.
enum class RenameReach {
  /// What the user says where events on show carry the category, else the list.
  Ask,
  List,
  /// The list and all appointments of the calendar.
  Appointments
};

/// The commands of the legend. Each change is shown and then saved; when it cannot be saved, which
/// is told, it stays on show. Where our other programs can be kept from saving, a change is made to
/// the list as the calendar has it by then, so that theirs are not lost. Nothing is changed while
/// the categories are not known. Each command ends in a message when it fails; none throws Error.
class CategoryCommands {
 public:
  /// All of them outlive this.
  CategoryCommands(CategoryView& view, ColourStore& colours, const Platform& platform);

  /// Index of the selected category; 0 for none. A selection ends when another name stands at its
  /// index.
  std::int16_t Selected() const;
  /// An index that no category has selects none.
  void Select(int index);
  /// Another category is selected, or none any more.
  std::function<void()> onSelectionChange;

  /// Asks for a name and adds a blue category: before the last one, which takes the events without
  /// a category, or after it when HideNonCategoryItems is set. Afterwards none is selected.
  void New();

  /// Gives the selected category another name, cleaned as a new one's; a name that another one has
  /// is refused with a message. Afterwards none is selected, unless nothing was changed. Where it
  /// reaches the appointments, and ends before they all have the new name, the list keeps both.
  void Rename(std::string_view text, RenameReach reach = RenameReach::Ask);

  /// Deletes a category; the last one that is left is kept, with a message. Afterwards none is
  /// selected.
  /// @param name  selects the category first, one that is unknown does nothing; when it is empty
  ///              the selected category is meant
  void CatDelete(std::string_view name = {});

  /// Lets the user pick a category's colour, again and again while it is another category's.
  /// @param name  as CatDelete takes it
  void CatColour(std::string_view name = {});

 private:
  struct Choice {
    std::int16_t index = 0;
    std::string name;
  };

  bool Stands(const Choice& choice) const;
  /// The category that a command is for, selected; none when there is none or the categories are
  /// not known.
  std::optional<Choice> Choose(std::string_view name);
  std::optional<Colour> PickColour(const Choice& choice);
  bool IsTaken(const Choice& choice, const std::function<bool(const Category&)>& matches) const;
  void Select(Choice choice);

  /// The calendar while nobody else saves into it.
  struct Held {
    std::shared_ptr<const void> hold;
    /// Its list where that is another than the one on show.
    std::optional<std::vector<Category>> others;
    /// What is wrong with its list, which must not be saved over then.
    std::optional<Error> fault;
  };
  Held HoldCalendar();
  /// Changes a list. Where it cannot: what the user is told, empty for nothing.
  using Edit = std::function<std::optional<std::string>(std::vector<Category>& all)>;
  /// Makes a change to the list as the calendar has it, shows and saves it.
  void Store(const Edit& edit, Choice selection);
  /// @return whether it was saved, too
  bool Show(std::vector<Category> categories, Choice selection);
  static std::optional<std::size_t> PlaceOf(const Choice& choice, const std::vector<Category>& all);
  static std::optional<std::string> RefusalOf(const std::string& name,
                                              std::optional<std::size_t> place,
                                              const std::vector<Category>& all);
  /// None when the user cancels.
  std::optional<RenameReach> AskForReach(const Choice& choice, const std::string& name);
  /// @return what the user is told; empty for nothing
  std::string RenameEverywhere(const Choice& choice, const std::string& name);

  CategoryView& view_;
  ColourStore& colours_;
  const Platform platform_;
  Choice selected_;
  /// Of which the categories on show could not be saved.
  std::optional<std::string> unsavedTitle_;
};

}  // namespace velkor
