// hosts/yearplan/commands/YearRemarks.cpp: what a command says of the year that it shows.
#include "hosts/yearplan/commands/YearRemarks.h"

#include <ostream>

#include "categories/UncarriedNames.h"
#include "view/YearGrid.h"
#include "view/YearTexts.h"

namespace velkor {

void RemarkOn(const YearGrid& grid, std::ostream& messages) {
  UncarriedNames uncarried(grid.Filter());
  uncarried.Look(grid.Events());
  uncarried.Report(messages, "the year");
  if (const std::string why = WhyEmpty(grid); !why.empty()) messages << why << '\n';
}

}  // namespace velkor
