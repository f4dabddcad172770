// hosts/yearplan/commands/CalendarSession.cpp: one year of a calendar file: refreshed, loaded and
// laid out.
#include "hosts/yearplan/commands/CalendarSession.h"

#include <ostream>
#include <utility>
#include <vector>

#include "categories/FirstColours.h"
#include "categories/UncarriedNames.h"
#include "model/CacheFile.h"
#include "platform/desktop/QtPages.h"
#include "view/GridPainter.h"
#include "view/YearTexts.h"

namespace velkor {

CalendarSession::CalendarSession(const CommandLine& line, std::ostream& messages)
    : line_(line),
      messages_(messages),
      reader_(line, messages),
      today_(line.today.value_or(reader_.Seams().clock.Now())),
      span_{line.year.value_or(DisplaySpan{0, line.firstMonth}.ViewYearOf(today_)),
            line.firstMonth},
      cacheFile_(line.cacheFile) {}

std::size_t CalendarSession::Refresh() {
  reader_.Open(span_, span_);
  cacheFile_ = reader_.PathsOf(span_.ViewYear).cacheFile;
  return reader_.Refresh(span_);
}

CategoryTable CalendarSession::TableOfCache() {
  const CategoryTable none;
  std::vector<std::string> texts;
  EventCollection events;
  TerminalSeams& seams = reader_.Seams();
  CacheFile(seams.files, seams.locale)
      .Load(cacheFile_, EventFields{span_, MonthColumns(span_), none}, events);
  for (const CalEvent& event : events) texts.push_back(event.Categories);
  return MakeFirstCategoryTable(texts, CategorySeparator(seams.listSeparator));
}

PlannedYear CalendarSession::Plan() {
  if (!line_.calendar.empty()) Refresh();
  LocaleApi& locale = reader_.Seams().locale;
  const LocaleId id = locale.ThreadLocale();
  Font font;
  Locale::ApplyCodePageFont(font, Locale::AnsiCodePageOf(locale, id));
  GridOptions options = line_.grid;
  QtMeasuringPage measuring{PixelSize()};
  options.MinBandHeight = ReadableBandHeight(measuring.Page(), font);
  PlannedYear year{YearGrid(span_, line_.calendar.empty() ? TableOfCache() : reader_.Categories(),
                            reader_.Filter(), options),
                   Locale::LoadCalendarNames(locale, id), font, today_};
  year.grid.SetEvents(reader_.Load(cacheFile_, year.grid.Fields()));
  UncarriedNames uncarried(year.grid.Filter());
  uncarried.Look(year.grid.Events());
  uncarried.Report(messages_, "the year");
  if (const std::string why = WhyEmpty(year.grid); !why.empty()) messages_ << why << '\n';
  return year;
}

}  // namespace velkor
