// hosts/yearplan/window/CalendarRows.cpp: the set, its places and their synchronisation, put
// together.
#include "hosts/yearplan/window/CalendarRows.h"

#include <QDateTime>
#include <QLocale>
#include <algorithm>

#include "hosts/yearplan/window/OpenSet.h"
#include "hosts/yearplan/window/WindowSync.h"

namespace velkor {
namespace {

/// A moment of today by its time, one before by its day.
std::string ForPeople(std::int64_t seconds) {
  if (seconds == 0) return {};
  const QDateTime moment = QDateTime::fromSecsSinceEpoch(seconds);
  const QLocale locale;
  const bool today = moment.date() == QDate::currentDate();
  return (today ? locale.toString(moment.time(), QLocale::ShortFormat)
                : locale.toString(moment.date(), QLocale::ShortFormat))
      .toStdString();
}

/// What the last try says is newer than what lies here, and says more: a copy that was never
/// fetched is only missing.
void AddSync(CalendarRow& row, const SourceSync& sync) {
  row.remote = true;
  row.busy = sync.running;
  if (row.since.empty()) row.trouble.clear();
  if (!sync.trouble.empty()) {
    row.trouble = sync.trouble;
    row.offline = sync.offline;
  }
  if (sync.certificate) row.trouble = "Its server is not trusted.";
  if (sync.login) row.trouble = "The password is needed.";
}

}  // namespace

std::vector<CalendarRow> RowsOf(const SetCalendar& calendar, const WindowSync& sync,
                                const std::function<std::size_t(const std::string&)>& refused) {
  const CalendarSet& set = calendar.Set();
  const std::string defaultId = calendar.DefaultForNew();
  std::vector<CalendarRow> rows;
  for (const PlaceState& place : calendar.PlaceStates()) {
    const auto source = std::ranges::find(set.sources, place.id, &SetSource::id);
    if (source == set.sources.end()) continue;
    CalendarRow& row =
        rows.emplace_back(CalendarRow{.id = place.id,
                                      .name = NameOf(*source, place.name),
                                      .colour = ColourOf(set, *source),
                                      .shown = source->shown,
                                      .daysOff = source->background,
                                      .isDefault = calendar.IsSet() && place.id == defaultId,
                                      .readOnly = place.readOnly,
                                      .offline = place.offline,
                                      .since = ForPeople(place.synchronised),
                                      .trouble = place.trouble,
                                      .waiting = place.waiting,
                                      .refused = refused(place.id)});
    if (const SourceSync* const state = sync.Of(place.id)) AddSync(row, *state);
  }
  return rows;
}

}  // namespace velkor
