// tests/categories/dlgFilterTest.cpp: the filter dialog keeps list and text in step, and stores.
#include "categories/dlgFilter.h"

#include <gmock/gmock.h>

#include "platform/headless/FixedLocale.h"
#include "platform/headless/MemorySettings.h"
#include "platform/headless/ScriptedForms.h"
#include "span/CategoryFilter.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Item = CheckListBox::Item;
using Names = std::vector<std::string>;

class dlgFilterTest : public testing::Test {
 protected:
  /// A loaded dialog over a filter of the title "Team".
  dlgFilter& Dialog(const std::string& text, Names legends, const std::string& list = ",") {
    CategoryFilter filter(CategorySeparator(list));
    filter.SetCategoryFilter(text);
    dialog_.emplace(
        filter, "Team", [this] { return MasterNames(); }, settings_, locale_, messages_);
    dialog_->VelkorLegends = std::move(legends);
    dialog_->Load();
    return *dialog_;
  }
  Names MasterNames() {
    ++masterListsRead_;
    if (masterFault_) throw Error(*masterFault_);
    return master_;
  }
  /// What the user does to the entry of this name.
  void Tick(const std::string& name) {
    const auto& items = dialog_->lbCategories.Items();
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (items[i].text == name) return dialog_->lbCategories.ToggleItem(i);
    }
    FAIL() << name << " is not offered";
  }
  Names Listed(bool checkedAlone) const {
    Names names;
    for (const Item& item : dialog_->lbCategories.Items()) {
      if (item.checked || !checkedAlone) names.push_back(item.text);
    }
    return names;
  }
  Names Offered() const { return Listed(false); }
  Names Checked() const { return Listed(true); }

  /// Lists by the length of names, then as ever.
  struct : FixedLocale {
    int Compare(std::string_view a, std::string_view b) override {
      const auto length = [](std::string_view text) { return static_cast<int>(text.size()); };
      return byLength && a.size() != b.size() ? length(a) - length(b) : CompareText(a, b);
    }
    bool byLength = false;
  } locale_;
  MemorySettings settings_;
  ScriptedMessageBoxes messages_{[](const std::string& failure) { FAIL() << failure; }};
  ScriptedForms forms_{[](const std::string& failure) { FAIL() << failure; }};
  Names master_;
  std::optional<Error> masterFault_;
  int masterListsRead_ = 0;
  std::optional<dlgFilter> dialog_;
};

TEST_F(dlgFilterTest, OffersEachNameOnceInOrderAndTheMasterListOnRequest) {
  master_ = {"beach", "Work", "", "Zoo"};
  dlgFilter& dialog = Dialog("Zoo, Work", {"Work", "", "alpha", "Work", "Beach"});
  EXPECT_THAT(Offered(), ElementsAre("alpha", "Beach", "Work"));
  EXPECT_THAT(Checked(), ElementsAre("Work"));
  EXPECT_EQ(masterListsRead_, 0);

  dialog.cbMasterList.Toggle();
  EXPECT_THAT(Offered(), testing::UnorderedElementsAre("alpha", "Beach", "beach", "Work", "Zoo"));
  EXPECT_EQ(Offered().front(), "alpha");
  EXPECT_THAT(Checked(), ElementsAre("Work", "Zoo"));
  dialog.cbMasterList.Toggle();
  EXPECT_THAT(Offered(), ElementsAre("alpha", "Beach", "Work"));
  dialog.cbMasterList.Toggle();
  EXPECT_EQ(dialog.tbFilter.Text(), "Zoo, Work");
  EXPECT_EQ(masterListsRead_, 1);
  locale_.byLength = true;
  dialog.Load();
  EXPECT_THAT(Offered(), ElementsAre("Zoo", "Work", "alpha", testing::_, testing::_));
}

TEST_F(dlgFilterTest, AMasterListThatCannotBeReadIsToldAndAskedForAgain) {
  masterFault_ = Error(errors::CalendarFailed, "Outlook is gone");
  master_ = {"Zoo"};
  dlgFilter& dialog = Dialog("", {"Work"});
  messages_.Expect("Error reading the master category list 440 Outlook is gone");
  dialog.cbMasterList.Toggle();
  EXPECT_THAT(Offered(), ElementsAre("Work"));
  masterFault_.reset();
  dialog.cbMasterList.Toggle();
  dialog.cbMasterList.Toggle();
  EXPECT_THAT(Offered(), ElementsAre("Work", "Zoo"));
}

TEST_F(dlgFilterTest, TickingWritesTheTextAndTypingChecksTheList) {
  dlgFilter& dialog =
      Dialog("Else, where; b", {"a", "b", "B", "\"c\"", "🏖", "x; y", "x", "y"}, ";");
  EXPECT_THAT(Checked(), ElementsAre("b"));
  Tick("🏖");
  Tick("\"c\"");
  EXPECT_EQ(dialog.tbFilter.Text(), "Else, where; b; 🏖; \"c\"");
  Tick("b");
  EXPECT_EQ(dialog.tbFilter.Text(), "Else, where; 🏖; \"c\"");
  EXPECT_THAT(Checked(), ElementsAre("\"c\"", "🏖"));

  // Half-typed names check nothing, and the text stays as it was typed.
  for (const auto& [typed, checked] :
       std::vector<std::pair<std::string, Names>>{{"a; ", {"a"}},
                                                  {"a;b", {}},
                                                  {"a; a; B", {"a", "B"}},
                                                  {" a ; B ", {"a", "B"}},
                                                  {"x; y", {"x", "y"}}}) {
    dialog.tbFilter.SetText(typed);
    EXPECT_EQ(dialog.tbFilter.Text(), typed);
    EXPECT_EQ(Checked(), checked) << typed;
  }
  // A name that holds the separator stands for the names that it becomes, again and again.
  Tick("x; y");
  EXPECT_EQ(dialog.tbFilter.Text(), "x; y");
  EXPECT_THAT(Checked(), ElementsAre("x", "y"));
  Tick("x");
  Tick("x; y");
  EXPECT_EQ(dialog.tbFilter.Text(), "y; x");
  // What repeats or is empty goes with the next tick.
  dialog.tbFilter.SetText("a; ; a; b");
  Tick("B");
  EXPECT_EQ(dialog.tbFilter.Text(), "a; b; B");

  dialog.ClearButton.Click();
  EXPECT_EQ(dialog.tbFilter.Text(), "");
  EXPECT_THAT(Checked(), IsEmpty());
  Tick("a");
  EXPECT_EQ(dialog.tbFilter.Text(), "a");
}

// Two blanks: pieces and separators run into each other, and the text decides.
TEST_F(dlgFilterTest, ListAndTextAgreeWhateverTheSeparatorDoesToTheNames) {
  const Names legends{"a", "a ", " b", "b", " ", "b "};
  Dialog("", legends, " ");
  for (int i = 0; i < 200; ++i) {
    dialog_->lbCategories.ToggleItem(static_cast<std::size_t>(i * 7 % 11) % legends.size());
    const Names checked = Checked();
    const std::string text = dialog_->tbFilter.Text();
    Dialog(text, legends, " ");
    ASSERT_EQ(Checked(), checked) << "[" << text << "]";
  }
}

TEST_F(dlgFilterTest, OnlyOKStores) {
  forms_.Expect("dlgFilter", [&](Form&) {
    Tick("Work");
    dialog_->cbAND.Toggle();
    dialog_->CancelButton.Click();
  });
  forms_.ShowModal(Dialog("Zoo", {"Work", "Zoo"}));
  EXPECT_FALSE(dialog_->OKPressed());
  EXPECT_THAT(settings_.Values(), IsEmpty());

  forms_.Expect("dlgFilter", [&](Form&) {
    Tick("Work");
    dialog_->cbAND.Toggle();
    settings_.readOnly = true;
    messages_.Expect("Error saving the filter 5 The settings cannot be written.");
    dialog_->OKButton.Click();
    EXPECT_TRUE(dialog_->IsOpen());
    EXPECT_FALSE(dialog_->OKPressed());
    settings_.readOnly = false;
    dialog_->OKButton.Click();
    EXPECT_FALSE(dialog_->IsOpen());
  });
  // An unfinished text must not become a name that nothing carries.
  forms_.ShowModal(Dialog("Zoo,  ", {"Work", "Zoo"}));
  EXPECT_TRUE(dialog_->OKPressed());
  EXPECT_EQ(dialog_->FilterText(), "Zoo, Work");
  EXPECT_TRUE(dialog_->MatchAll());
  EXPECT_EQ(settings_.Get("Year Planner", "Filtering Team", "Active", ""), "Zoo, Work");
  EXPECT_EQ(settings_.Get("Year Planner", "Filtering Team", "UsingAND", ""), "True");
}

}  // namespace
}  // namespace velkor
