// tests/categories/LegendTest.cpp: the legend scrolled, pointed at, steered by keys and renamed.
#include "categories/Legend.h"

#include "categories/LegendElements.h"
#include "platform/headless/RecordingSurface.h"
#include "tests/categories/CategoryCase.h"
#include "tests/platform/headless/CountingPeer.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

constexpr Twips Row = LegendRowHeight;

/// Ten rows are in sight, from 100, 200 on.
class LegendTest : public CategoryCase {
 protected:
  LegendTest() {
    elements_.mnuCatPop.Attach(&menu_);
    shown_.onChange = [this] { legend_.CategoriesChanged(); };
    legend_.SetLive(true);
  }
  ~LegendTest() override { elements_.mnuCatPop.Attach(nullptr); }

  void ListNumbers(int count) {
    Names names;
    for (int i = 1; i <= count; ++i) names.push_back("Category " + std::to_string(i));
    List(names);
    legend_.Place({100, 200, 2100, 200 + 10 * Row}, {});
    legend_.CategoriesChanged();
  }
  std::vector<std::string> Painted() {
    const Rect& bounds = elements_.picCats.Bounds();
    surface_.Clear();
    elements_.picCats.onPaint(surface_, {0, 0, bounds.Width(), bounds.Height()});
    return surface_.Calls("text");
  }
  void Press(MouseButton button, int row) {
    elements_.picCats.onMouseDown(button, {500, (row - 0.5) * Row});
  }
  bool IsInSight(const Rect& inPicCats) const {
    const Twips top = inPicCats.top + elements_.picCats.Bounds().top;
    return top >= 0 && top + inPicCats.Height() <= elements_.picCatView.Bounds().Height();
  }
  /// Types a name over the row's and ends with a key.
  void Type(int row, const std::string& text, int key) {
    Press(MouseButton::Left, row);
    elements_.mnuCatRename.Click();
    EXPECT_TRUE(elements_.txtEdit.Visible());
    EXPECT_TRUE(elements_.txtEdit.onKeyPress('x'));
    elements_.txtEdit.SetText(text);
    EXPECT_FALSE(elements_.txtEdit.onKeyPress(key));
    EXPECT_FALSE(elements_.txtEdit.Visible());
    EXPECT_EQ(elements_.txtEdit.Text(), "");
  }

  CountingPeer menu_;
  RecordingSurface surface_;
  LegendElements elements_;
  Legend legend_{elements_, shown_, commands_};
};

TEST_F(LegendTest, OfFiveHundredCategoriesThoseInSightArePaintedAndAllCanBeReached) {
  ListNumbers(500);
  EXPECT_THAT(Painted(), SizeIs(10));
  EXPECT_EQ(elements_.vScrollCat.Bounds().right, 2100);
  elements_.picCats.onMouseWheel(-1);
  EXPECT_THAT(Painted().at(0), HasSubstr("\"Category 4\""));
  elements_.vScrollCat.SetValue(elements_.vScrollCat.Max());
  EXPECT_THAT(Painted().back(), HasSubstr("\"Category 500\""));
  EXPECT_TRUE(IsInSight(LegendRowRect(500, 1)));
  Press(MouseButton::Left, 500);
  EXPECT_EQ(commands_.Selected(), 500);
  Painted();
  EXPECT_EQ(surface_.ColourAt({1000, 499.5 * Row}), legend_colours::Selected);
  // Fewer rows than before leave no gap below the last one.
  ListNumbers(12);
  EXPECT_THAT(Painted().back(), HasSubstr("\"Category 12\""));
  EXPECT_THAT(Painted(), SizeIs(10));
  ListNumbers(10);
  EXPECT_FALSE(elements_.vScrollCat.Visible());
  EXPECT_THAT(Painted(), SizeIs(10));
  // Less than a pixel too low, and still its end can be reached.
  legend_.Place({100, 200, 2100, 200 + 10 * Row - 7}, {});
  elements_.vScrollCat.SetValue(elements_.vScrollCat.Max());
  EXPECT_TRUE(IsInSight(LegendRowRect(10, 1)));
}

TEST_F(LegendTest, ARightPressSelectsTheRowAndCallsTheMenuWhereThePointerIs) {
  ListNumbers(500);
  elements_.vScrollCat.SetValue(2 * 18);
  Press(MouseButton::Right, 4);
  EXPECT_EQ(commands_.Selected(), 4);
  ASSERT_THAT(menu_.popUps, SizeIs(1));
  EXPECT_EQ(menu_.popUps[0].x, 600);
  EXPECT_EQ(menu_.popUps[0].y, 200 + 1.5 * Row);
  EXPECT_TRUE(elements_.mnuCatDelete.Enabled());
  ListNumbers(3);
  Press(MouseButton::Right, 5);
  EXPECT_EQ(commands_.Selected(), 0) << "below the rows";
  EXPECT_FALSE(elements_.mnuCatRename.Enabled() || elements_.mnuCatColour.Enabled() ||
               elements_.mnuCatDelete.Enabled());
  EXPECT_TRUE(elements_.mnuCatNew.Enabled());
  seams_.inputs.lines = {"N"};
  elements_.mnuCatNew.Click();
  EXPECT_THAT(Painted(), SizeIs(4));

  Press(MouseButton::Left, 1);
  legend_.SetLive(false);
  Press(MouseButton::Right, 1);
  EXPECT_FALSE(elements_.picCats.onKeyDown(Key::Down));
  EXPECT_EQ(commands_.Selected(), 0);
  EXPECT_THAT(menu_.popUps, SizeIs(2));
  EXPECT_FALSE(elements_.mnuCatNew.Enabled());
}

TEST_F(LegendTest, KeysMoveTheSelectionIntoSightAndDeleteNothing) {
  ListNumbers(40);
  struct Step {
    Key key;
    int from;
    int to;
  };
  for (const Step& step : {Step{Key::Down, 0, 1}, Step{Key::Up, 0, 40}, Step{Key::PageDown, 1, 11},
                           Step{Key::PageUp, 40, 30}, Step{Key::PageUp, 3, 1},
                           Step{Key::PageDown, 35, 40}, Step{Key::Home, 20, 1},
                           Step{Key::End, 1, 40}, Step{Key::Up, 1, 1}, Step{Key::Down, 40, 40}}) {
    commands_.Select(step.from);
    EXPECT_TRUE(elements_.picCats.onKeyDown(step.key));
    EXPECT_EQ(commands_.Selected(), step.to);
    EXPECT_TRUE(IsInSight(LegendRowRect(step.to, 1))) << step.to;
  }
  EXPECT_FALSE(elements_.picCats.onKeyDown(Key::Delete));
  elements_.vScrollCat.SetValue(0);
  EXPECT_TRUE(elements_.picCats.onKeyDown(Key::Menu));
  EXPECT_EQ(menu_.popUps.at(0).y, 200 + 10 * Row) << "under row 40, scrolled into sight";
  EXPECT_TRUE(elements_.picCats.onKeyDown(Key::Enter));
  EXPECT_EQ(elements_.txtEdit.Text(), "Category 40");
  EXPECT_EQ(Listed().size(), 40U);
  List({});
  legend_.CategoriesChanged();
  EXPECT_FALSE(elements_.picCats.onKeyDown(Key::Down) || elements_.picCats.onKeyDown(Key::End));
}

TEST_F(LegendTest, EnterRenamesAndWhateverElseEndsTheEditLeavesTheName) {
  ListNumbers(40);
  Type(2, "Travel", key_codes::Enter);
  EXPECT_EQ(Listed()[1], "Travel");
  EXPECT_TRUE(IsSaved());
  Type(1, "Nothing", key_codes::Escape);
  messages_.Expect("The category Travel already exists");
  Type(1, "Travel", key_codes::Enter);

  const std::function<void()> ends[] = {
      [&] { elements_.txtEdit.onLostFocus(); }, [&] { legend_.CategoriesChanged(); },
      [&] { commands_.Select(3); }, [&] { Press(MouseButton::Left, 39); },
      [&] { legend_.SetLive(false); }};
  for (const auto& end : ends) {
    commands_.Select(40);
    elements_.vScrollCat.SetValue(0);
    elements_.mnuCatRename.Click();
    EXPECT_TRUE(IsInSight(elements_.txtEdit.Bounds()));
    elements_.txtEdit.SetText("Nothing");
    end();
    EXPECT_FALSE(elements_.txtEdit.Visible());
    elements_.txtEdit.onKeyPress(key_codes::Enter);
  }
  EXPECT_THAT(Listed(), testing::Not(testing::Contains("Nothing")));
}

TEST_F(LegendTest, TheToolTipIsTheNameUnderThePointerWhenTheRowsMoveToo) {
  ListNumbers(40);
  EXPECT_EQ(elements_.picCats.onToolTip(), "");
  elements_.picCats.onMouseMove({10, 1.5 * Row});
  EXPECT_EQ(elements_.picCats.onToolTip(), "Category 2");
  elements_.picCats.onMouseWheel(-1);
  EXPECT_EQ(elements_.picCats.onToolTip(), "Category 5");
  elements_.picCats.onMouseLeave();
  EXPECT_EQ(elements_.picCats.onToolTip(), "");
}

}  // namespace
}  // namespace velkor
