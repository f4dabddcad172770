// tests/hosts/OnePlannerTest.cpp: window and commands show the same year of every calendar.
#include <QDirIterator>
#include <QTest>
#include <QXmlStreamReader>
#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "hosts/yearplan/commands/CommandPlanner.h"
#include "hosts/yearplan/commands/Commands.h"
#include "hosts/yearplan/window/PlannerSession.h"
#include "platform/Accessible.h"
#include "platform/desktop/TerminalMessageBoxes.h"
#include "platform/headless/MemorySettings.h"
#include "platform/headless/RecordingSurface.h"
#include "platform/headless/ScriptedForms.h"
#include "print/frmPrint.h"
#include "span/Globals.h"
#include "tests/platform/desktop/CalendarText.h"
#include "tests/platform/desktop/FolderCase.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::UnorderedElementsAreArray;

using Texts = std::vector<std::string>;
/// How often an area is filled with a colour, as in "#128AFF".
using Fills = std::map<std::string, int>;

const std::string Year = "2026";

/// A year as it is on show.
struct Shown {
  std::string caption;
  /// As `yearplan categories` lists them.
  std::string categories;
  Texts legend;
  /// Row, columns, band, index of the category and subject.
  Texts bars;
  /// The same of what a screen reader finds, by its rectangles, without categories.
  Texts spoken;
  /// Each bar and each category of the legend in its colour.
  Fills fills;
};

std::string BarText(int row, int first, int last, int band, int category,
                    const std::string& subject) {
  std::ostringstream text;
  text << row << ' ' << first << '-' << last << " band " << band << " of " << category << ": "
       << subject;
  return text.str();
}

std::string SpokenText(int row, int first, int last, int band, const std::string& subject) {
  const std::string clean = Globals::StripControlChars(subject);
  return BarText(row, first, last, band, 0, clean.empty() ? "No subject" : clean);
}

Texts SpokenBy(YearPlan& plan) {
  Texts spoken;
  AccessibleTree& tree = plan.Accessible();
  const AccessibleId table = *tree.NodeOf(plan.Elements().pic1);
  const PixelRect corner = tree.FactsOf(table)->bounds;
  const auto hit = [&](double x, double y) {
    return plan.Grid()
        .HitTestAt({(x - corner.left) * TwipsPerPixel, (y - corner.top) * TwipsPerPixel})
        .value_or(GridHit());
  };
  for (int i = MonthRows; i < tree.ChildCount(table); ++i) {
    const AccessibleFacts bar = *tree.FactsOf(*tree.ChildAt(table, i));
    const double middle = (bar.bounds.top + bar.bounds.bottom) / 2.0;
    const GridHit begin = hit(bar.bounds.left + 0.5, middle);
    const GridHit end = hit(bar.bounds.right - 0.5, middle);
    spoken.push_back(
        SpokenText(begin.row, begin.cellColumn - 1, end.cellColumn, begin.band, bar.name));
  }
  return spoken;
}

Shown ShownBy(YearPlan& plan) {
  Shown shown;
  const YearGrid& grid = plan.Grid();
  shown.caption = plan.Elements().lblSelectedYear.Caption();
  for (const Category& category : grid.Categories().All()) {
    shown.legend.push_back(LegendText(category));
    shown.categories += ColourText(category.colour) + "  " + LegendText(category) + '\n';
    ++shown.fills[ColourText(category.colour)];
  }
  for (const Bar& bar : grid.Layout().bars) {
    const CalEvent& event = grid.Events()[bar.event];
    ++shown.fills[ColourText(grid.Categories().At(event.CatIndex).colour)];
    shown.bars.push_back(
        BarText(bar.row, bar.first, bar.last, bar.band, event.CatIndex, event.Subject));
  }
  shown.spoken = SpokenBy(plan);
  return shown;
}

/// What is on show in a window that the calendar is opened in.
Shown ShownByWindow(const std::string& calendar) {
  MemorySettings settings;
  std::ostream nowhere(nullptr);
  TerminalMessageBoxes messages(nowhere);
  ScriptedForms forms;
  const auto ignore = [](const std::string&) {};
  PlannerSession session(calendar, {settings, messages, forms, nullptr, ignore, ignore, {}});
  session.Plan().Resize({15000, 9000}, {});
  session.ShowYear(std::stoi(Year));
  const Image& status = session.Plan().Elements().imgLogo;
  EXPECT_TRUE(QTest::qWaitFor([&] { return status.ToolTip().empty(); }, 15000));
  return ShownBy(session.Plan());
}

std::string Printed(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostream nowhere(nullptr);
  RunCommand(ParseCommandLine(arguments), out, nowhere);
  return out.str();
}

struct InspectedBars {
  Texts bars;
  Texts spoken;
};

InspectedBars BarsOfInspect(const std::string& calendar) {
  InspectedBars found;
  const auto json = nlohmann::json::parse(Printed({"inspect", calendar, "--year", Year, "--json"}),
                                          nullptr, false);
  for (const auto& event : json.at("events")) {
    for (const auto& segment : event.at("segments")) {
      found.bars.push_back(BarText(segment[0], segment[1], segment[2], event.at("band"),
                                   event.at("catIndex"), event.at("subject")));
      found.spoken.push_back(
          SpokenText(segment[0], segment[1], segment[2], event.at("band"), event.at("subject")));
    }
  }
  return found;
}

/// What is drawn, of the colours that matter. Texts stand one after the other, since a picture
/// takes one of several fonts apart.
struct Drawn {
  Fills fills;
  std::string texts;
};

Drawn DrawnByRender(const std::string& calendar, const QString& picture, const Fills& colours) {
  Printed({"render", calendar, "--year", Year, "-o", picture.toStdString()});
  QFile file(picture);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  QXmlStreamReader xml(&file);
  Drawn drawn;
  std::string fill;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    if (xml.name() == QString("g")) {
      fill = xml.attributes().value("fill").toString().toUpper().toStdString();
    } else if (xml.name() == QString("rect") && colours.contains(fill)) {
      ++drawn.fills[fill];
    } else if (xml.name() == QString("text")) {
      drawn.texts += xml.readElementText().toStdString();
    }
  }
  return drawn;
}

Drawn DrawnBy(const RecordingSurface& surface, const Fills& colours) {
  Drawn drawn;
  for (const std::string& line : surface.Calls("fill")) {
    const std::string colour = line.substr(line.rfind('#'));
    if (colours.contains(colour)) ++drawn.fills[colour];
  }
  for (const std::string& line : surface.Calls("text")) {
    const std::size_t begin = line.find('"') + 1;
    drawn.texts += line.substr(begin, line.rfind("\" #") - begin);
  }
  return drawn;
}

/// All pages, the legend once.
Drawn DrawnByPrint(const std::string& calendar, const Fills& colours) {
  const CommandLine line =
      ParseCommandLine({"print", calendar, "--year", Year, "--pages", "--no-legend-repeat"});
  std::ostream nowhere(nullptr);
  CommandPlanner planner(line, nowhere);
  planner.Show(planner.FirstYear());
  RecordingSurface surface;
  planner.Seams().forms.Expect("frmPrint", [&](Form& form) {
    auto& preview = dynamic_cast<frmPrint&>(form);
    preview.Options().SetValues(line.printTask.options);
    preview.OptionsChanged();
    for (int page = 1; page <= preview.Document().PageCount(); ++page) {
      preview.Document().DrawPage(surface, page);
    }
  });
  planner.Plan().Elements().Toolbar1.ClickButton(toolbar_keys::Print);
  return DrawnBy(surface, colours);
}

class OnePlanner : public FolderCase {
 protected:
  void ExpectAgreement(const std::string& calendar) const {
    SCOPED_TRACE(calendar);
    const Shown window = ShownByWindow(calendar);
    EXPECT_EQ(window.caption, "Year " + Year);
    EXPECT_EQ(Printed({"categories", calendar}), window.categories);
    const InspectedBars inspected = BarsOfInspect(calendar);
    EXPECT_THAT(inspected.bars, UnorderedElementsAreArray(window.bars));
    EXPECT_THAT(inspected.spoken, UnorderedElementsAreArray(window.spoken));
    Texts words = window.legend;
    words.push_back(window.caption);
    for (const Drawn& drawn : {DrawnByRender(calendar, File("year.svg"), window.fills),
                               DrawnByPrint(calendar, window.fills)}) {
      EXPECT_EQ(drawn.fills, window.fills);
      for (const std::string& word : words) EXPECT_THAT(drawn.texts, HasSubstr(word));
    }
  }
};

TEST_F(OnePlanner, ShowsEveryCalendarAlikeWhoeverAsks) {
  int calendars = 0;
  for (const char* folder : {VELKOR_SOURCE "/samples", TEST_DATA "calendars"}) {
    for (QDirIterator files(folder, {"*.ics"}); files.hasNext(); ++calendars) {
      ExpectAgreement(files.next().toStdString());
    }
  }
  EXPECT_GT(calendars, 20);
}

TEST_F(OnePlanner, CountsTheSameCategoriesWhateverTheirNames) {
  const auto day = [](const char* uid, const char* date, const char* categories) {
    return Event(uid, QByteArray("SUMMARY:") + uid + "\r\nDTSTART;VALUE=DATE:" + date +
                          "\r\nCATEGORIES:" + categories + "\r\n");
  };
  Write("team.ics",
        CalendarOf(day("a", "20260203", "Red|Blue") + day("b", "20260303", "Sales\\, North,Work") +
                   day("c", "20260305", "Work")));
  const std::string calendar = Path("team.ics");
  ExpectAgreement(calendar);
  EXPECT_EQ(Printed({"categories", calendar}),
            "#128AFF  Work\n#FF990C  North\n#0A7F44  Sales\n#CCCCCC  Other\n");
  EXPECT_EQ(Printed({"export", calendar, "--categories-only", "-o", Path("a.xml")}),
            "4 categories: " + Path("a.xml") + "\n");
}

}  // namespace
}  // namespace velkor
