// tests/support/cScrollBarsTest.cpp: what a window hears becomes values and events of its bars.
#include "support/cScrollBars.h"

#include <gmock/gmock.h>

#include <climits>
#include <string>
#include <vector>

#include "platform/Elements.h"
#include "platform/headless/ScriptedScrollBars.h"
#include "support/values/Error.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum ScrollBarSide;

/// Bars over one picture, and the events that they raised with the value at that time.
class ScrollBarsCase : public testing::Test {
 protected:
  ScrollBarsCase() {
    bars.onScroll = [this](ScrollBarSide side) { Note("scroll", side); };
    bars.onChange = [this](ScrollBarSide side) { Note("change", side); };
    bars.onScrollClick = [this](ScrollBarSide side) { Note("click", side); };
    bars.onMouseWheel = [this](ScrollBarSide side, double notches) {
      events.push_back((side == Vertical ? "wheel " : "tilt ") + std::to_string(notches));
    };
  }

  void Create(ScrollBarSide side, std::int32_t min, std::int32_t max, std::int32_t small,
              std::int32_t large, std::int32_t value) {
    bars.Create(picture);
    bars.SetLargeChange(side, large);
    bars.SetMax(side, max);
    bars.SetMin(side, min);
    bars.SetSmallChange(side, small);
    bars.SetValue(side, value);
    events.clear();
  }
  void Note(const std::string& event, ScrollBarSide side) {
    events.push_back(event + (side == Vertical ? " v " : " h ") + std::to_string(bars.Value(side)));
  }
  std::vector<std::string> TakeEvents() { return std::exchange(events, {}); }

  PictureBox picture{"picParent"};
  ScriptedScrollBars scripted;
  cScrollBars bars{scripted};
  std::vector<std::string> events;
};

TEST_F(ScrollBarsCase, RequestsMoveWithinTheRangeAndTellWhatTheyWere) {
  struct Row {
    std::int32_t from;
    std::uint64_t request;
    std::vector<std::string> events;
  };
  using namespace scroll_requests;
  const std::vector<Row> rows{
      {500, LineBack, {"change v 490", "click v 490"}},
      {500, LineForward, {"change v 510", "click v 510"}},
      {500, PageBack, {"change v 400", "click v 400"}},
      {500, PageForward, {"change v 600", "click v 600"}},
      {500, First, {"change v -50"}},
      {500, Last, {"change v 901"}},
      {-45, LineBack, {"change v -50", "click v -50"}},
      {-50, PageBack, {"click v -50"}},
      {895, LineForward, {"change v 901", "click v 901"}},
      {901, PageForward, {"click v 901"}},
      {901, Last, {}},
      {500, EndScroll, {}},
      {500, 9, {}},
  };
  for (const Row& row : rows) {
    Create(Vertical, -50, 1000, 10, 100, row.from);
    scripted.Click("picParent", Vertical, row.request);
    EXPECT_EQ(events, row.events) << row.from << " and request " << row.request;
  }
  Create(Horizontal, 0, 99, 7, 10, 0);
  scripted.Click("picParent", Horizontal, LineForward);
  EXPECT_THAT(TakeEvents(), ElementsAre("change h 7", "click h 7"));
  EXPECT_EQ(bars.Value(), 0) << "the vertical bar is another one";
  bars.SetOrientation(Horizontal);
  EXPECT_EQ(bars.Value(), 7);
  WindowMessage ofAChild = ScrollMessage(Vertical, LineForward);
  ofAChild.lParam = 0x1234;
  scripted.Send("picParent", ofAChild);
  EXPECT_THAT(events, IsEmpty()) << "a scroll bar that is a child has a handle";
}

TEST_F(ScrollBarsCase, ThumbScrollsWhileItIsDraggedAndChangesOnceWhenItIsLetGo) {
  Create(Vertical, 0, 1'000'000, 10, 1, 5);
  scripted.Drag("picParent", Vertical, 70'000);
  scripted.Drag("picParent", Vertical, 70'000);
  scripted.Drag("picParent", Vertical, 900'000);
  EXPECT_THAT(TakeEvents(), ElementsAre("scroll v 70000", "scroll v 900000"));
  scripted.LetGo("picParent", Vertical);
  EXPECT_THAT(TakeEvents(), ElementsAre("change v 900000"));
  scripted.Drag("picParent", Vertical, 10);
  scripted.Drag("picParent", Vertical, 900'000);
  scripted.LetGo("picParent", Vertical);
  EXPECT_THAT(TakeEvents(), ElementsAre("scroll v 10", "scroll v 900000")) << "back again";
  bars.onScroll = [this](ScrollBarSide side) { bars.SetValue(side, 300); };
  scripted.Drag("picParent", Vertical, 333);
  scripted.LetGo("picParent", Vertical);
  EXPECT_THAT(TakeEvents(), ElementsAre("change v 300", "change v 333"))
      << "the owner moved it, then the thumb was let go elsewhere";
}

TEST_F(ScrollBarsCase, RangesAsWideAsTheirTypeDoNotOverflow) {
  Create(Vertical, INT_MIN, INT_MAX, INT_MAX, INT_MAX, INT_MIN);
  scripted.Click("picParent", Vertical, scroll_requests::LineBack);
  EXPECT_EQ(bars.Value(), INT_MIN);
  scripted.Click("picParent", Vertical, scroll_requests::PageForward);
  EXPECT_EQ(bars.Value(), -1);
  scripted.Click("picParent", Vertical, scroll_requests::PageForward);
  EXPECT_EQ(bars.Value(), 1);
  bars.SetLargeChange(Vertical, -5);
  bars.SetSmallChange(Vertical, -5);
  EXPECT_EQ(bars.LargeChange(), 0);
  EXPECT_EQ(bars.SmallChange(), 0);
  scripted.Click("picParent", Vertical, scroll_requests::Last);
  scripted.Click("picParent", Vertical, scroll_requests::LineForward);
  EXPECT_EQ(bars.Value(), INT_MAX);
}

TEST_F(ScrollBarsCase, AShorterRangeTakesTheValueWithItAndALongerOneGivesThePageBack) {
  Create(Vertical, 0, 999, 10, 100, 900);
  bars.SetMax(Vertical, 499);
  EXPECT_THAT(TakeEvents(), ElementsAre("change v 400"));
  bars.SetMax(Vertical, 49);
  EXPECT_THAT(TakeEvents(), ElementsAre("change v 0"));
  EXPECT_EQ(bars.LargeChange(), 50);
  bars.SetMax(Vertical, 999);
  EXPECT_EQ(bars.LargeChange(), 100);
  bars.SetMin(Vertical, 2000);
  EXPECT_EQ(bars.Max(), 2000);
  EXPECT_THAT(TakeEvents(), ElementsAre("change v 2000"));
}

TEST_F(ScrollBarsCase, EveryWheelIsHeardOnce) {
  Create(Vertical, 0, 999, 10, 100, 500);
  scripted.Turn("picParent", Vertical, 1);
  scripted.Turn("picParent", Vertical, -2.5);
  scripted.Turn("picParent", Horizontal, 1);
  // Keys that are held stand in the low word, and where the pointer is in lParam.
  scripted.Send("picParent", {.id = 522, .wParam = 0xFF88'0008, .lParam = 0x0010'0020});
  scripted.Send("picParent", {.id = 522, .wParam = 0x0000'0008});
  EXPECT_THAT(TakeEvents(),
              ElementsAre("wheel 1.000000", "wheel -2.500000", "tilt 1.000000", "wheel -1.000000"));
  EXPECT_EQ(bars.Value(), 500) << "how far that scrolls is the owner's";
}

TEST_F(ScrollBarsCase, OlderDriversAreHeardWhereTheirWindowSupportsTheWheel) {
  Create(Vertical, 0, 999, 10, 100, 500);
  ASSERT_THAT(scripted.registered,
              ElementsAre("MSWHEEL_ROLLMSG", "MSH_WHEELSUPPORT_MSG", "MSH_SCROLL_LINES_MSG"));
  std::optional<std::int64_t> support;
  scripted.onAsk = [&](std::string_view windowClass, std::string_view title,
                       std::uint32_t message) -> std::optional<std::int64_t> {
    const bool asked = windowClass == "MouseZ" && title == "Magellan MSWHEEL" &&
                       message == ScriptedScrollBars::FirstRegistered + 1;
    return asked ? support : 99;
  };
  struct Row {
    std::optional<std::int64_t> support;
    std::uint32_t message;
    std::uint64_t wParam;
    std::vector<std::string> events;
  };
  const std::vector<Row> rows{
      {std::nullopt, 0, 120, {}},
      {0, 0, 120, {}},
      {1, 0, 240, {"wheel 2.000000"}},
      {1, 0, 0xFFFF'FF88, {"wheel -1.000000"}},
      {1, 0, 0xFFFF'FFFF'FFFF'FF88, {"wheel -1.000000"}},
      {1, 1, 120, {}},
      {1, 2, 3, {}},
  };
  for (const Row& row : rows) {
    support = row.support;
    scripted.Send("picParent",
                  {.id = ScriptedScrollBars::FirstRegistered + row.message, .wParam = row.wParam});
    EXPECT_EQ(TakeEvents(), row.events) << row.message << ' ' << row.wParam;
  }
}

TEST_F(ScrollBarsCase, OnlyNewerCommonControlsDrawFlat) {
  struct Row {
    CommonControlsVersion version;
    bool flat;
  };
  for (const Row& row : {Row{{0, 0}, false}, Row{{4, 70}, false}, Row{{4, 71}, true},
                         Row{{5, 0}, true}, Row{{3, 99}, false}}) {
    scripted.commonControls = row.version;
    cScrollBars flat(scripted);
    std::string refusal;
    try {
      flat.SetStyle(ScrollBarStyle::Encarta);
    } catch (const Error& error) {
      refusal = error.Description();
    }
    flat.Create(picture);
    EXPECT_EQ(flat.CanBeFlat(), row.flat) << row.version.major << '.' << row.version.minor;
    EXPECT_EQ(flat.Style(), row.flat ? ScrollBarStyle::Encarta : ScrollBarStyle::Regular);
    EXPECT_EQ(scripted.windows["picParent"]->flat, row.flat);
    EXPECT_EQ(refusal, row.flat ? ""
                                : "Can't set non-regular style mode on this system - "
                                  "COMCTL32.DLL version < 4.71.");
    flat.SetStyle(ScrollBarStyle::Regular);
    EXPECT_FALSE(scripted.windows["picParent"]->flat);
  }
}

TEST_F(ScrollBarsCase, NothingIsHeldBeforeAWindowAndNothingHeardFromTheOneThatWasLeft) {
  bars.SetMax(Vertical, 10);
  bars.SetValue(Vertical, 5);
  bars.SetLargeChange(Vertical, 5);
  bars.SetVisible(Vertical, true);
  EXPECT_EQ(bars.Max() + bars.Value() + bars.LargeChange() + bars.SmallChange(), 0);
  EXPECT_FALSE(bars.Visible() || bars.Enabled());
  Create(Vertical, 0, 10, 1, 1, 5);
  bars.SetVisible(Vertical, true);
  bars.SetEnabled(Vertical, false);
  const auto first = scripted.windows["picParent"];
  EXPECT_TRUE((*first)[Vertical].visible && !(*first)[Vertical].enabled);
  PictureBox other("picOther");
  bars.Create(other);
  EXPECT_FALSE(first->attached);
  EXPECT_FALSE(bars.Visible() || !bars.Enabled());
  scripted.Click("picParent", Vertical, scroll_requests::LineForward);
  EXPECT_THAT(events, IsEmpty());
  scripted.Turn("picOther", Vertical, 1);
  EXPECT_THAT(events, ElementsAre("wheel 1.000000"));
}

TEST_F(ScrollBarsCase, HandlersMayLeaveTheWindowOrEndTheBars) {
  PictureBox other("picOther");
  Create(Vertical, 0, 10, 1, 1, 5);
  bars.onChange = [&](ScrollBarSide) { bars.Create(other); };
  scripted.Click("picParent", Vertical, scroll_requests::LineForward);
  EXPECT_THAT(events, IsEmpty()) << "the click was on a bar that was left";
  auto ending = std::make_unique<cScrollBars>(scripted);
  ending->onMouseWheel = [&](ScrollBarSide, double) { ending.reset(); };
  ending->Create(picture);
  scripted.Turn("picParent", Vertical, 1);
  EXPECT_FALSE(scripted.windows["picParent"]->attached);
  ending = std::make_unique<cScrollBars>(scripted);
  ending->Create(picture);
  ending->SetMax(Vertical, 10);
  ending->onChange = [&](ScrollBarSide) { ending.reset(); };
  scripted.Click("picParent", Vertical, scroll_requests::LineForward);
  EXPECT_FALSE(ending);
}

}  // namespace
}  // namespace velkor
