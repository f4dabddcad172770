// view/YearTexts.h: what is said about a year on show: its name, and why nothing of it is seen.
#pragma once

#include <string>

#include "span/DisplaySpan.h"

namespace velkor {

class YearGrid;

/// "Year 2026": the caption of a displayed year.
std::string YearCaption(int viewYear);

/// "Year 2026", or "Year 2026/27" for one that goes over into the next.
std::string YearName(const DisplaySpan& span);

/// A sentence on a year that has no appointments, or whose appointments are all hidden; empty where
/// one is seen.
std::string WhyEmpty(const YearGrid& grid);

}  // namespace velkor
