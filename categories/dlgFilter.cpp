// categories/dlgFilter.cpp: the dialog in which the user chooses the categories of the filter.
#include "categories/dlgFilter.h"

#include <functional>
#include <set>
#include <utility>

#include "categories/StoredFilter.h"
#include "model/Guard.h"
#include "platform/LocaleApi.h"
#include "span/CategoryFilter.h"
#include "span/Duplicates.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::string_view SavingFailed = "Error saving the filter ";
constexpr std::string_view MasterListFailed = "Error reading the master category list ";

/// Sorts names as the user's language lists them, each once and none of them empty.
void SortOnce(std::vector<std::string>& names, LocaleApi& locale) {
  std::set<std::string, std::less<>> known{std::string()};
  std::erase_if(names, [&](const std::string& name) { return !known.insert(name).second; });
  Duplicates::SortStrings(
      names, 0, static_cast<int>(names.size()) - 1,
      [&locale](std::string_view a, std::string_view b) { return locale.Compare(a, b); });
}

}  // namespace

dlgFilter::dlgFilter(const CategoryFilter& filter, std::string titleName, ReadMasterList masterList,
                     Settings& settings, LocaleApi& locale, MessageBoxes& messages)
    : Form("dlgFilter", "Category Filter"),
      separator_(filter.FilterSeparator()),
      titleName_(std::move(titleName)),
      readMasterList_(std::move(masterList)),
      settings_(settings),
      locale_(locale),
      messages_(messages) {
  lblHead.SetCaption("Show appointments of these categories");
  Label1.SetCaption("Names, joined by \"" + separator_ + "\"");
  cbMasterList.SetCaption("(Include Customised Master Category List)");
  cbAND.SetCaption("(All must be matched)");
  OKButton.SetCaption("OK");
  CancelButton.SetCaption("Cancel");
  ClearButton.SetCaption("Clear");
  tbFilter.SetText(filter.GetCategoryFilter());
  cbAND.SetChecked(filter.GetFilterMode());

  lbCategories.onItemCheck = [this](std::size_t index) { lbCategories_ItemCheck(index); };
  tbFilter.onChange = [this] { tbFilter_Change(); };
  cbMasterList.onClick = [this] { FillList(); };
  OKButton.onClick = [this] { OKButton_Click(); };
  CancelButton.onClick = [this] { Unload(); };
  ClearButton.onClick = [this] { ClearButton_Click(); };

  AddRow({{{&lblHead, 1}}});
  AddRow({{{&lbCategories, 1}}});
  AddRow({{{&Label1, 0}, {&tbFilter, 1}}});
  AddRow({{{&cbMasterList, 1}}});
  AddRow({{{&cbAND, 1}}});
  AddRow({{{&OKButton, 1}, {&CancelButton, 1}, {&ClearButton, 1}}, FormRowKind::Buttons});
}

void dlgFilter::Load() {
  okPressed_ = false;
  ChooseFromText();
  FillList();
}

std::vector<std::string> dlgFilter::OfferedNames() {
  std::vector<std::string> names = VelkorLegends;
  if (cbMasterList.Checked()) {
    if (!masterNames_) {
      Guard(messages_, MasterListFailed, [&] { masterNames_ = readMasterList_(); });
    }
    if (masterNames_) names.insert(names.end(), masterNames_->begin(), masterNames_->end());
  }
  SortOnce(names, locale_);
  return names;
}

void dlgFilter::FillList() {
  std::vector<CheckListBox::Item> items;
  for (std::string& name : OfferedNames()) {
    const bool chosen = IsChosen(name);
    items.push_back({std::move(name), chosen});
  }
  lbCategories.SetItems(std::move(items));
}

void dlgFilter::CheckChosen() {
  std::vector<CheckListBox::Item> items = lbCategories.Items();
  for (CheckListBox::Item& item : items) item.checked = IsChosen(item.text);
  lbCategories.SetItems(std::move(items));
}

bool dlgFilter::IsChosen(std::string_view name) const {
  return chosen_.HasKey(Trim(name));
}

void dlgFilter::Choose(std::string_view text) {
  ForEachPiece(text, separator_, [&](std::string_view piece) {
    const std::string name(Trim(piece));
    if (!name.empty() && !chosen_.HasKey(name)) chosen_.Add(name, name);
    return true;
  });
}

void dlgFilter::ChooseFromText() {
  chosen_.Clear();
  Choose(tbFilter.Text());
}

std::string dlgFilter::FilterText() const {
  std::string text;
  for (const CCollectionEx::Entry& entry : CCollectionEx::NewEnum(chosen_)) {
    if (!text.empty()) text += separator_;
    text += entry.key;
  }
  return text;
}

void dlgFilter::lbCategories_ItemCheck(std::size_t index) {
  const CheckListBox::Item item = lbCategories.Items()[index];
  // A name that holds the separator is chosen as the names that it becomes in the text.
  if (item.checked) {
    Choose(item.text);
  } else if (IsChosen(item.text)) {
    chosen_.Remove(std::string(Trim(item.text)));
  }
  const std::string text = FilterText();
  if (text == tbFilter.Text()) {
    CheckChosen();
  } else {
    tbFilter.SetText(text);
  }
}

void dlgFilter::tbFilter_Change() {
  ChooseFromText();
  CheckChosen();
}

void dlgFilter::ClearButton_Click() {
  chosen_.Clear();
  tbFilter.SetText({});
}

void dlgFilter::OKButton_Click() {
  const auto failure = Guard(messages_, SavingFailed,
                             [&] { SaveFilter(settings_, titleName_, FilterText(), MatchAll()); });
  if (failure) return;
  okPressed_ = true;
  Unload();
}

}  // namespace velkor
