// tests/control/PictureTest.cpp: the control drawn without its windows.
#include "control/Picture.h"

#include <algorithm>
#include <fstream>
#include <numeric>
#include <set>
#include <sstream>

#include "support/ToolbarIcons.h"
#include "tests/control/PlannerCase.h"
#include "view/Frame.h"
#include "view/GridPainter.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class PictureTest : public PlannerCase {
 protected:
  PictureTest() { bag_.values["DisplaySubject"] = true; }

  YearPlanElements& Elements() { return plan_.Elements(); }
  void Show() {
    Start();
    Refreshed({SampleEvent("days", At(2005, 1, 30), At(2005, 2, 3), "Leave"),
               SampleEvent("same", At(2005, 1, 31), At(2005, 2, 1), "Key Customer"),
               SampleEvent("none", At(2005, 12, 31), At(2006, 1, 2))});
  }
  void ShowAsPicture(Extent size) {
    plan_.LayOutAsPicture();
    Show();
    plan_.Resize(size, {});
    size_ = size;
  }
  void DrawOn(Surface& surface) { DrawControl(surface, Elements(), size_); }
  RecordingSurface Drawn() {
    RecordingSurface surface;
    DrawOn(surface);
    EXPECT_EQ(surface.Depth(), 0U);
    return surface;
  }
  /// The middle of a day's cell in the control.
  Point InControl(Date day, int band) {
    const Point at = DayPoint(day, band);
    const Rect& parent = Elements().picParent.Bounds();
    const Rect& grid = Elements().pic1.Bounds();
    return {parent.left + grid.left + at.x, parent.top + grid.top + at.y};
  }

  Extent size_{15000, 9000};
};

TEST_F(PictureTest, OfATinyYearIsDrawnAsRecorded) {
  // Bands of 110 twips: too low for day numbers.
  ShowAsPicture({10'000, 390 + 90 + 285 + 48 * 110});
  const RecordingSurface drawn = Drawn();
  std::string log;
  for (const std::string& line : drawn.Log()) log += line + '\n';

  std::ifstream file(TEST_DATA "tiny-year.log", std::ios::binary);
  std::stringstream recorded;
  recorded << file.rdbuf();
  if (log != recorded.str()) std::ofstream("tiny-year.log.new", std::ios::binary) << log;
  EXPECT_EQ(log, recorded.str()) << "All lines are in tiny-year.log.new in the build folder.";
}

TEST_F(PictureTest, MeasuresNothingTwice) {
  ShowAsPicture(size_);
  for (const int bandHeight : {110, 150, 300}) {
    size_ = {16'000, 390.0 + 90 + 285 + 48 * bandHeight};
    plan_.Resize(size_, {});
    MeasureOnceSurface surface;
    DrawOn(surface);
    EXPECT_THAT(surface.repeated, IsEmpty()) << bandHeight;
    EXPECT_GT(surface.Measured(), 0);
  }
}

TEST_F(PictureTest, TheHeightWithoutScrollingIsTheLeastOne) {
  for (const bool picture : {false, true}) {
    if (picture) plan_.LayOutAsPicture();
    plan_.Resize({10'000, 10'000}, {});
    const Twips height = plan_.LeastHeight();
    plan_.Resize({10'000, height}, {});
    EXPECT_FALSE(plan_.Grid().Geometry().scroll);
    plan_.Resize({10'000, height - 1}, {});
    EXPECT_TRUE(plan_.Grid().Geometry().scroll);
    EXPECT_EQ(Elements().VScroll1.Visible(), !picture);
  }
}

TEST_F(PictureTest, HasEachPartInItsColours) {
  ShowAsPicture({19'500, 13'500});
  const RecordingSurface drawn = Drawn();
  const Rect& grid = Elements().picParent.Bounds();
  const Rect& legend = Elements().legend.picCatView.Bounds();
  const auto& categories = plan_.Grid().Categories();
  const std::pair<const char*, std::pair<Point, Colour>> places[] = {
      {"the ground", {{10, 10}, ControlLook().back}},
      {"a bar in its first month",
       {InControl(At(2005, 1, 30), 2), categories.At(categories.Count()).colour}},
      {"the same band in the next month",
       {InControl(At(2005, 2, 2), 2), categories.At(categories.Count()).colour}},
      {"the day after a bar", {InControl(At(2005, 2, 4), 4), grid_colours::Back}},
      {"a Saturday", {InControl(At(2005, 3, 5), 4), grid_colours::Weekend}},
      {"the frame of the grid, right", {{grid.right - 1, grid.top + 500}, FrameColour}},
      {"the frame of the grid, above the weekdays", {{grid.left + 900, grid.top + 1}, FrameColour}},
      {"the frame of the legend, below", {{legend.left + 500, legend.bottom - 1}, FrameColour}},
      {"the first swatch of the legend",
       {{legend.left + 210, legend.top + LegendRowHeight / 2}, categories.At(1).colour}},
  };
  for (const auto& [what, place] : places) {
    EXPECT_EQ(drawn.ColourAt(place.first).value_or(Colour{-1}).value, place.second.value) << what;
  }
  EXPECT_THAT(drawn.Calls("text").front(), HasSubstr("\"Year 2005\" #000000 font 13 bold"));
}

TEST_F(PictureTest, OfTheControlShowsWhatCanBePressed) {
  const auto colourIn = [](const RecordingSurface& drawn, const Rect& bounds, Colour colour) {
    for (Twips y = bounds.top; y < bounds.bottom; y += TwipsPerPixel) {
      for (Twips x = bounds.left; x < bounds.right; x += TwipsPerPixel) {
        if (drawn.ColourAt({x + 1, y + 1}) == colour) return true;
      }
    }
    return false;
  };
  plan_.Resize(size_, {});
  const RecordingSurface before = Drawn();
  Show();
  const RecordingSurface live = Drawn();
  const Rect& toolbar = Elements().Toolbar1.Bounds();
  EXPECT_TRUE(colourIn(before, toolbar, FadedLines(colours::Black, ControlLook().back)));
  EXPECT_FALSE(colourIn(before, toolbar, colours::Black)) << "nothing can be pressed";
  EXPECT_TRUE(colourIn(live, toolbar, colours::Black));
  EXPECT_FALSE(colourIn(live, toolbar, FadedLines(colours::Black, ControlLook().back)));
  EXPECT_TRUE(colourIn(live, Elements().imgLogo.Bounds(), Elements().imgLogo.FillColour()));
  const auto texts = live.Calls("text");
  EXPECT_THAT(texts, testing::Contains(HasSubstr("\"" + Elements().Command1.Caption() + "\"")));

  plan_.LayOutAsPicture();
  plan_.Resize(size_, {});
  const RecordingSurface picture = Drawn();
  EXPECT_THAT(picture.Calls("text"),
              Not(testing::Contains(HasSubstr("\"" + Elements().Command1.Caption() + "\""))));
  EXPECT_FALSE(colourIn(picture, Elements().imgLogo.Bounds(), Elements().imgLogo.FillColour()));
}

TEST(ToolbarIcons, EachHasItsOwnLinesAndTheFilterInForceAMark) {
  constexpr int Side = 20;
  std::set<std::vector<int>> seen;
  for (int image = 1; image <= toolbar_images::Last; ++image) {
    std::vector<int> covers;
    bool marked = false;
    for (const IconPixel& pixel : DrawToolbarIcon(image, Side, colours::Black)) {
      covers.push_back(pixel.cover);
      marked = marked || (pixel.cover == 255 && !(pixel.colour == colours::Black));
    }
    ASSERT_EQ(covers.size(), std::size_t{Side * Side});
    EXPECT_TRUE(seen.insert(covers).second) << image << " looks like another one";
    EXPECT_EQ(covers.front(), 0) << "corners are free";
    EXPECT_GT(std::accumulate(covers.begin(), covers.end(), 0), 255 * 2 * Side) << image;
    EXPECT_EQ(marked, image == toolbar_images::ActiveFilter);
  }
  EXPECT_EQ(seen.size(), 10U);
  for (const IconPixel& pixel : DrawToolbarIcon(0, Side, colours::Black)) EXPECT_EQ(pixel.cover, 0);
}

}  // namespace
}  // namespace velkor
