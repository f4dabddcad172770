// tests/support/cScrollBarsTest.cpp: what a window hears becomes values and events of its bars.
#include "support/cScrollBars.h"

#include <gmock/gmock.h>

#include <climits>

#include "platform/Elements.h"
#include "platform/headless/ScriptedScrollBars.h"
#include "tests/support/ScrollBarLog.h"
#include "values/Error.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using enum ScrollBarSide;
using Events = std::vector<std::string>;

class ScrollBarsCase : public testing::Test {
 protected:
  void Create(std::int32_t min, std::int32_t max, std::int32_t large, std::int32_t value) {
    bars.Create(picture);
    bars.SetLargeChange(Vertical, large);
    bars.SetMax(Vertical, max);
    bars.SetMin(Vertical, min);
    bars.SetSmallChange(Vertical, 10);
    bars.SetValue(Vertical, value);
    log.Take();
  }
  void Click(std::uint64_t request) { scripted.Click("picParent", Vertical, request); }
  void Drag(std::initializer_list<std::int32_t> positions) {
    for (const auto position : positions) scripted.Drag("picParent", Vertical, position);
  }
  void LetGo() { scripted.LetGo("picParent", Vertical); }

  PictureBox picture{"picParent"};
  PictureBox other{"picOther"};
  ScriptedScrollBars scripted;
  cScrollBars bars{scripted};
  ScrollBarLog log{bars};
};

TEST_F(ScrollBarsCase, RequestsMoveWithinTheRangeAndTellWhatTheyWere) {
  using namespace scroll_requests;
  struct Row {
    std::int32_t from;
    std::uint64_t request;
    Events events;
  };
  for (const Row& row :
       {Row{500, LineBack, {"change v 490", "click v 490"}},
        Row{500, LineForward, {"change v 510", "click v 510"}},
        Row{500, PageBack, {"change v 400", "click v 400"}},
        Row{500, PageForward, {"change v 600", "click v 600"}}, Row{500, First, {"change v -50"}},
        Row{500, Last, {"change v 901"}}, Row{-45, LineBack, {"change v -50", "click v -50"}},
        Row{901, PageForward, {"click v 901"}}, Row{500, EndScroll, {}}}) {
    Create(-50, 1000, 100, row.from);
    Click(row.request);
    EXPECT_EQ(log.Take(), row.events) << row.from << " and request " << row.request;
  }
  WindowMessage ofAChild = ScrollMessage(Vertical, LineForward);
  ofAChild.lParam = 0x1234;
  scripted.Send("picParent", ofAChild);
  EXPECT_EQ(log.Take(), Events{}) << "a scroll bar that is a child has a handle";
}

TEST_F(ScrollBarsCase, ThumbScrollsWhileItIsDraggedAndChangesOnceWhenItIsLetGo) {
  Create(0, 1'000'000, 1, 5);
  Drag({70'000, 70'000, 900'000});
  EXPECT_THAT(log.Take(), ElementsAre("scroll v 70000", "scroll v 900000"));
  LetGo();
  EXPECT_THAT(log.Take(), ElementsAre("change v 900000"));
  Drag({10, 900'000});
  LetGo();
  EXPECT_THAT(log.Take(), ElementsAre("scroll v 10", "scroll v 900000")) << "back again";
  bars.onScroll = [this](ScrollBarSide side) { bars.SetValue(side, 300); };
  Drag({333});
  LetGo();
  EXPECT_THAT(log.Take(), ElementsAre("change v 300", "change v 333"));
}

TEST_F(ScrollBarsCase, AnyRangeKeepsValueAndPageAndDoesNotOverflow) {
  Create(INT_MIN, INT_MAX, INT_MAX, INT_MIN);
  Click(scroll_requests::LineBack);
  EXPECT_EQ(bars.Value(), INT_MIN);
  for (int page = 0; page < 3; ++page) Click(scroll_requests::PageForward);
  EXPECT_EQ(bars.Value(), 1) << "the last page begins there";
  Create(0, 999, 100, 900);
  bars.SetMax(Vertical, 49);
  EXPECT_THAT(log.Take(), ElementsAre("change v 0"));
  bars.SetMax(Vertical, 999);
  EXPECT_EQ(bars.LargeChange(), 100) << "more than the shorter range, and kept";
}

TEST_F(ScrollBarsCase, EveryWheelIsHeardUnlessTheWindowOfAnOlderDriverDeniesIt) {
  Create(0, 999, 100, 500);
  ASSERT_THAT(scripted.registered,
              ElementsAre("MSWHEEL_ROLLMSG", "MSH_WHEELSUPPORT_MSG", "MSH_SCROLL_LINES_MSG"));
  std::optional<std::int64_t> support;
  scripted.onAsk = [&](std::string_view name, std::string_view title, std::uint32_t message) {
    const bool asked = name == "MouseZ" && title == "Magellan MSWHEEL" && message == 0xC001;
    return asked ? support : 99;
  };
  struct Row {
    std::optional<std::int64_t> support;
    WindowMessage message;
    Events events;
  };
  // Low words are keys that are held, lParam is where the pointer is.
  for (const Row& row :
       {Row{{}, {522, 0x0078'0000, 0}, {"wheel v 1"}},
        Row{{}, {522, 0xFF88'0008, 0x0010'0020}, {"wheel v -1"}}, Row{{}, {522, 0x0008, 0}, {}},
        Row{{}, {0x020E, 0x003C'0000, 0}, {"wheel h 0.5"}},
        Row{{}, {0xC000, 120, 0}, {"wheel v 1"}}, Row{0, {0xC000, 120, 0}, {}},
        Row{1, {0xC000, 240, 0}, {"wheel v 2"}}, Row{1, {0xC000, 0xFFFF'FF88, 0}, {"wheel v -1"}},
        Row{1, {0xC000, 0xFFFF'FFFF'FFFF'FF88, 0}, {"wheel v -1"}}, Row{1, {0xC001, 120, 0}, {}},
        Row{1, {0xC002, 3, 0}, {}}}) {
    support = row.support;
    scripted.Send("picParent", row.message);
    EXPECT_EQ(log.Take(), row.events) << row.message.id << ' ' << row.message.wParam;
  }
  EXPECT_EQ(bars.Value(), 500) << "how far that scrolls is the owner's";
}

TEST_F(ScrollBarsCase, OnlyNewerCommonControlsDrawFlat) {
  using Row = std::pair<CommonControlsVersion, bool>;
  for (const auto& [version, flat] : {Row{{0, 0}, false}, Row{{3, 99}, false}, Row{{4, 70}, false},
                                      Row{{4, 71}, true}, Row{{5, 0}, true}}) {
    scripted.commonControls = version;
    cScrollBars fresh(scripted);
    std::string refusal;
    try {
      fresh.SetStyle(ScrollBarStyle::Encarta);
    } catch (const Error& error) {
      refusal = error.Description();
    }
    fresh.Create(picture);
    EXPECT_EQ(scripted.windows["picParent"]->flat, flat) << version.major << '.' << version.minor;
    EXPECT_EQ(refusal, flat ? ""
                            : "Can't set non-regular style mode on this system - "
                              "COMCTL32.DLL version < 4.71.");
  }
}

TEST_F(ScrollBarsCase, ALeftWindowIsNotHeardEvenWhereAHandlerLeavesItOrEndsTheBars) {
  bars.SetMax(Vertical, 10);
  EXPECT_EQ(bars.Max(), 0) << "there is no window yet";
  Create(0, 10, 1, 5);
  bars.onChange = [&](ScrollBarSide) { bars.Create(other); };
  Click(scroll_requests::LineForward);
  Click(scroll_requests::LineForward);
  scripted.Turn("picOther", Vertical, -1);
  EXPECT_THAT(log.Take(), ElementsAre("wheel v -1")) << "no click on a bar that was left";
  auto ending = std::make_unique<cScrollBars>(scripted);
  ending->Create(picture);
  ending->SetMax(Vertical, 10);
  ending->onChange = [&](ScrollBarSide) { ending.reset(); };
  Click(scroll_requests::LineForward);
  EXPECT_FALSE(scripted.windows["picParent"]->attached);
}

}  // namespace
}  // namespace velkor
