// categories/CategoryCommands.h: adds, renames, deletes and recolours categories.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/CategoryTable.h"
#include "platform/Platform.h"

namespace velkor {

class CategoryView;
class ColourStore;

/// The commands of the legend. Each change is shown and then saved; when it cannot be saved, which
/// is told, it stays on show. Nothing is changed while the categories are not known. Each command
/// ends in a message when it fails; none throws Error.
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
  /// is refused with a message. Afterwards none is selected, unless nothing was changed.
  void Rename(std::string_view text);

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
  /// Shows the categories and saves them.
  void Store(const std::vector<Category>& categories, Choice selection);

  CategoryView& view_;
  ColourStore& colours_;
  const Platform platform_;
  Choice selected_;
};

}  // namespace velkor
