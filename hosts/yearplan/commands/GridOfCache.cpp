// hosts/yearplan/commands/GridOfCache.cpp: the year that a cache file holds, without its calendar.
#include "hosts/yearplan/commands/GridOfCache.h"

#include <ostream>
#include <string>
#include <vector>

#include "categories/FirstColours.h"
#include "control/ControlLayout.h"
#include "hosts/yearplan/commands/TerminalSeams.h"
#include "model/CacheFile.h"
#include "platform/desktop/QtPages.h"
#include "span/Locale.h"
#include "values/Error.h"
#include "view/GridPainter.h"
#include "view/Scrolling.h"

namespace velkor {
namespace {

EventCollection Load(const std::string& path, TerminalSeams& seams, const EventFields& fields,
                     std::ostream& messages) {
  EventCollection events;
  const LoadOutcome outcome = CacheFile(seams.files, seams.locale).Load(path, fields, events);
  if (outcome == LoadOutcome::NoFile) {
    throw Error(errors::FileNotFound,
                seams.files.Exists(path)
                    ? path + " is no cache file of this version: its texts are not in UTF-8"
                    : "There is no cache file " + path);
  }
  if (outcome == LoadOutcome::LoadedInPart && events.Count() == 0) {
    throw Error(errors::BadFileMode, path + " is no cache file");
  }
  if (outcome == LoadOutcome::LoadedInPart) {
    messages << path << ": not a whole cache file; the first " << events.Count()
             << " events are shown\n";
  }
  return events;
}

}  // namespace

YearGrid GridOfCache(const CommandLine& line, TerminalSeams& seams, std::ostream& messages) {
  const DisplaySpan today{0, line.properties.FirstMonth};
  const DisplaySpan span{line.year.value_or(today.ViewYearOf(seams.clock.Now())),
                         line.properties.FirstMonth};
  CategoryFilter filter(CategorySeparator(seams.listSeparator));
  filter.SetCategoryFilter(line.filter);
  filter.SetFilterMode(line.matchAll);
  Font font;
  Locale::ApplyCodePageFont(font,
                            Locale::AnsiCodePageOf(seams.locale, seams.locale.ThreadLocale()));
  QtMeasuringPage measuring{PixelSize()};
  YearGrid grid(span, CategoryTable(), filter, line.properties);
  grid.SetMinBandHeight(ReadableBandHeight(measuring.Page(), font));
  seams.files.MarkFresh(line.cacheFile);
  grid.SetEvents(Load(line.cacheFile, seams, grid.Fields(), messages));
  std::vector<std::string> texts;
  for (const CalEvent& event : grid.Events()) texts.push_back(event.Categories);
  grid.SetCategories(MakeFirstCategoryTable(texts, filter.FilterSeparator()));
  const Rect area =
      DivideControl({line.width * TwipsPerPixel, line.height * TwipsPerPixel}, StripKind::Caption)
          .grid;
  grid.Resize({area.Width(), area.Height()}, ScrollBarWidth, {});
  return grid;
}

}  // namespace velkor
