// categories/dlgFilter.h: the dialog in which the user chooses the categories of the filter.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Forms.h"
#include "platform/InputElements.h"
#include "support/CCollectionEx.h"

namespace velkor {

class CategoryFilter;
class LocaleApi;
class MessageBoxes;
class Settings;

/// The text is the truth: its names, between separators, are the chosen categories, offered or
/// not. Blanks around a name do not count, as around the names of an event. The list shows which of
/// the offered ones are among them.
class dlgFilter : public Form {
 public:
  /// Reads Outlook's customised master category names; may throw Error.
  using ReadMasterList = std::function<std::vector<std::string>()>;

  /// Settings, locale and messages outlive this.
  /// @param filter     shown until the user changes it
  /// @param titleName  the planner title whose filter is stored
  /// @param masterList asked when the user wants those names for the first time
  dlgFilter(const CategoryFilter& filter, std::string titleName, ReadMasterList masterList,
            Settings& settings, LocaleApi& locale, MessageBoxes& messages);

  /// The category names of all colour records in the calendar; set before Load.
  std::vector<std::string> VelkorLegends;

  /// Offers the categories and checks those of the filter; before the form is shown.
  void Load();

  /// Whether the user confirmed the filter, and it was stored.
  bool OKPressed() const { return okPressed_; }
  /// The chosen names joined by the filter's separator; empty is no filter.
  std::string FilterText() const;
  bool MatchAll() const { return cbAND.Checked(); }

  Label lblHead{"lblHead"};
  CheckListBox lbCategories{"lbCategories"};
  Label Label1{"Label1"};
  TextBox tbFilter{"tbFilter"};
  CheckBox cbMasterList{"cbMasterList"};
  CheckBox cbAND{"cbAND"};
  CommandButton OKButton{"OKButton"};
  CommandButton CancelButton{"CancelButton"};
  CommandButton ClearButton{"ClearButton"};

 private:
  void lbCategories_ItemCheck(std::size_t index);
  void tbFilter_Change();
  void OKButton_Click();
  void ClearButton_Click();

  /// Lists the offered categories anew.
  void FillList();
  std::vector<std::string> OfferedNames();
  /// Checks the entries that are chosen.
  void CheckChosen();
  /// Chooses every name in a text, beside those that are.
  void Choose(std::string_view text);
  void ChooseFromText();
  bool IsChosen(std::string_view name) const;

  std::string separator_;
  std::string titleName_;
  ReadMasterList readMasterList_;
  Settings& settings_;
  LocaleApi& locale_;
  MessageBoxes& messages_;
  /// None until they were read.
  std::optional<std::vector<std::string>> masterNames_;
  /// Each name under itself as the key.
  CCollectionEx chosen_;
  bool okPressed_ = false;
};

}  // namespace velkor
