// bench/SampleEvents.h: large years to measure with, the same in every run.
#pragma once

#include <cstddef>
#include <vector>

#include "model/CalEvent.h"
#include "model/CategoryTable.h"
#include "view/YearGrid.h"

namespace velkor {

enum class Spread {
  /// Starts anywhere in the year, most events a day long, some for weeks or months.
  Random,
  OneDay,
  /// All on the second day of some month.
  OneDayInEveryRow,
  /// All from before the span to after it.
  AcrossAllRows,
};

CategoryTable SampleCategories();

/// A grid of 2026 without events, timed appointments shown.
YearGrid SampleGrid(bool displaySubject = false);

/// Events in order of start, as a calendar hands them out; derived fields are not set. Subjects
/// have about 20 characters, one in four some beyond ASCII; each event has 0 to 2 categories.
/// @param idLength  characters of an EventID, 14 to 48
std::vector<CalEvent> SampleEvents(std::size_t count, Spread spread, std::size_t idLength = 48);

/// The same, derived and in a grid of 2026 that is not laid out yet.
YearGrid FilledGrid(std::size_t count, Spread spread, bool displaySubject = false);

/// A year laid out in a window of ordinary size, with the wanted number of bars or few less.
YearGrid GridWithBars(std::size_t bars, bool displaySubject);

}  // namespace velkor
