// tests/house/ArrowsTest.cpp: the include arrows, on examples and on the whole tree.
#include "tests/house/Arrows.h"

#include <gmock/gmock.h>

namespace velkor::house {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

Findings ArrowsOf(const std::string& path, const std::string& included) {
  return CheckArrows({path, "// x\n#include \"" + included + "\"\n"});
}

TEST(Arrows, PointTowardsTheValues) {
  EXPECT_THAT(ArrowsOf("control/YearPlan.cpp", "print/PagePlan.h"), IsEmpty());
  EXPECT_THAT(ArrowsOf("print/PagePlan.cpp", "view/Bands.h"), IsEmpty());
  EXPECT_THAT(ArrowsOf("view/Bands.cpp", "model/CalEvent.h"), IsEmpty());
  EXPECT_THAT(ArrowsOf("model/CalEvent.cpp", "view/span/Globals.h"), IsEmpty());
  EXPECT_THAT(ArrowsOf("view/span/Globals.cpp", "support/RegIO.h"), IsEmpty());
  EXPECT_THAT(ArrowsOf("support/RegIO.cpp", "platform/Registry.h"), IsEmpty());
  EXPECT_THAT(ArrowsOf("platform/Surface.h", "support/values/Colour.h"), IsEmpty());
  EXPECT_THAT(ArrowsOf("refresh/Worker.cpp", "model/CacheFile.h"), IsEmpty());
  EXPECT_THAT(ArrowsOf("calendar/Store.cpp", "platform/Outlook.h"), IsEmpty());
}

TEST(Arrows, NeverPointBack) {
  EXPECT_THAT(ArrowsOf("support/values/Date.h", "support/RegIO.h"),
              ElementsAre("support/values/Date.h:2: values must not include support "
                          "(support/RegIO.h)"));
  EXPECT_THAT(ArrowsOf("platform/Surface.h", "support/RegIO.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("support/RegIO.h", "view/span/Globals.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("view/span/Globals.h", "model/CalEvent.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("model/CalEvent.h", "view/Bands.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("view/Bands.h", "print/PagePlan.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("print/PagePlan.h", "control/YearPlan.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("control/YearPlan.h", "hosts/Main.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("refresh/Worker.h", "view/Bands.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("model/CalEvent.h", "refresh/Worker.h"), Not(IsEmpty()));
}

TEST(Arrows, NeverJoinPeers) {
  EXPECT_THAT(ArrowsOf("print/PagePlan.cpp", "exchange/Xml.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("categories/Store.cpp", "print/PagePlan.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("platform/desktop/Window.h", "platform/headless/Clock.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("platform/windows/Gdi.h", "control/YearPlan.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("platform/headless/Clock.h", "model/CalEvent.h"), Not(IsEmpty()));
  EXPECT_THAT(ArrowsOf("calendar/Store.cpp", "platform/headless/Clock.h"), Not(IsEmpty()));
}

TEST(Arrows, LeaveHostsToolsAndTestsFree) {
  EXPECT_THAT(ArrowsOf("hosts/Main.cpp", "calendar/Store.h"), IsEmpty());
  EXPECT_THAT(ArrowsOf("tools/Probe.cpp", "platform/headless/Clock.h"), IsEmpty());
  EXPECT_THAT(ArrowsOf("tests/view/BandsTest.cpp", "control/YearPlan.h"), IsEmpty());
}

TEST(Arrows, GoByThePathFromTheTopFolder) {
  EXPECT_THAT(ArrowsOf("model/CalEvent.cpp", "../view/Bands.h"),
              ElementsAre(HasSubstr("path from the top folder")));
}

TEST(Arrows, HoldInThisRepository) {
  const std::vector<SourceFile> tree = ReadTree(VELKOR_SOURCE);
  std::size_t includes = 0;
  for (const SourceFile& file : tree) includes += IsCode(file) ? Includes(file).size() : 0;
  ASSERT_GT(includes, 50u);
  EXPECT_THAT(CheckAll(tree, CheckArrows), IsEmpty());
}

}  // namespace
}  // namespace velkor::house
