// hosts/yearplan/commands/CommandPlanner.cpp: the control of a command, started without a window.
#include "hosts/yearplan/commands/CommandPlanner.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "categories/LostNames.h"
#include "categories/StoredFilter.h"
#include "categories/UncarriedNames.h"
#include "hosts/CalendarRefresh.h"
#include "hosts/yearplan/OfferedColours.h"
#include "hosts/yearplan/SetColours.h"
#include "platform/desktop/DesktopSystem.h"
#include "span/CategoryFilter.h"
#include "view/YearTexts.h"

namespace velkor {
namespace {

/// So many years are taken from one reading of the calendar: a reading has room for so many
/// occurrences and no more, and each year looks through all of them.
constexpr int YearsOfReading = 20;

/// The year that today lies in, unless the command line says another one.
int YearOf(std::optional<int> ofRange, const CommandLine& line, Clock& clock) {
  if (ofRange || line.year) return ofRange ? *ofRange : *line.year;
  return DisplaySpan{0, line.properties.FirstMonth}.ViewYearOf(clock.Now());
}

}  // namespace

CommandPlanner::CommandPlanner(const CommandLine& line, std::ostream& messages,
                               SetCalendar* calendar)
    : line_(line),
      messages_(messages),
      seams_(line, messages),
      firstYear_(YearOf(line.fromYear, line, seams_.clock)),
      lastYear_(YearOf(line.toYear, line, seams_.clock)),
      reader_(line.calendar, messages),
      calendar_(Opened(calendar)),
      cacheUtilities_(
          [this](const RefreshInputs& inputs, const std::function<bool()>& proceed) {
            return Refresh(inputs, proceed);
          },
          [this](std::function<void()> work) { work_.push_back(std::move(work)); },
          [this](const Error& error) {
            // What Refresh kept says more.
            if (!failure_) failure_ = error;
          }),
      outlook_(calendar_.Store(), seams_.locale,
               {.userName = LoginName(),
                .listSeparator = seams_.listSeparator,
                // A command shows what is there when it is given.
                .post = [](const std::function<void()>&) {},
                .clock = [] { return DesktopClock().Now(); }}),
      plan_(seams_.On(outlook_, cacheUtilities_), host_) {
  seams_.shell.onMessages = [this](int) { LetWorkRun(); };
  const std::string separator = CategorySeparator(seams_.listSeparator);
  const std::string lost = RemarkOnLostNames(*DefaultCalendarOf(outlook_), seams_.locale,
                                             line.properties.TitleName, separator);
  if (!lost.empty()) messages << line.calendars.front() << ": " << lost << '\n';
  OfferFirstColours(calendar_.Folder(), outlook_, seams_.locale, line.properties.TitleName,
                    separator);
  Start();
  if (!calendar && !fault_.empty()) messages << fault_ << '\n';
}

SetCalendar& CommandPlanner::Opened(SetCalendar* calendar) {
  if (calendar) return *calendar;
  ReadFrom(firstYear_);
  const std::string& trouble = seams_.environment.Trouble();
  if (!trouble.empty()) messages_ << trouble << '\n';
  return reader_.Calendar();
}

void CommandPlanner::ReadFrom(int year) {
  lastRead_ = std::min(year + YearsOfReading - 1, lastYear_);
  reader_.Open({year, line_.properties.FirstMonth}, {lastRead_, line_.properties.FirstMonth});
}

void CommandPlanner::Start() {
  MemoryPropertyBag defaults;
  plan_.ReadProperties(defaults);
  plan_.Set(line_.properties);
  SaveFilter(seams_.settings, line_.properties.TitleName, line_.filter, line_.matchAll);
  plan_.Elements().tmrStart.Tick();
  fault_ = seams_.messages.Take();
  if (!plan_.IsLive()) {
    throw Error(errors::CalendarFailed, ReasonOf(fault_));
  }
}

void CommandPlanner::Show(int year) {
  failure_.reset();
  inputs_ = {};
  if (year != Grid().Span().ViewYear) plan_.ChangeYear(year - Grid().Span().ViewYear);
  LetWorkRun();
  const std::string told = seams_.messages.Take();
  if (failure_) throw Error(*failure_);
  if (inputs_.viewYear != year) throw Error(errors::CalendarFailed, ReasonOf(told));
  if (!told.empty()) messages_ << told << '\n';
  plan_.ShowDaysOff(calendar_.DaysOff());
  plan_.ColourBars(ColoursOf(calendar_));
}

void CommandPlanner::LetWorkRun() {
  while (!work_.empty()) {
    const std::function<void()> work = std::move(work_.front());
    work_.pop_front();
    work();
  }
}

PromptCacheUtilities::Result CommandPlanner::Refresh(const RefreshInputs& inputs,
                                                     const std::function<bool()>& proceed) {
  const auto result = [](SynchResult code, long error) {
    return PromptCacheUtilities::Result{static_cast<short>(code), error, {}};
  };
  if (!proceed()) return result(SynchResult::NothingToReport, 0);
  inputs_ = inputs;
  try {
    if (inputs.viewYear > lastRead_) ReadFrom(inputs.viewYear);
  } catch (const Error& error) {
    failure_ = error;
    return result(SynchResult::FetchingFailed, error.Number());
  }
  const RefreshRequest request = RequestOf(inputs);
  const RefreshAnswer answer =
      RefreshPatiently(request, outlook_, seams_.files, seams_.locale, proceed);
  if (answer.result == SynchResult::CacheWritten) {
    seams_.files.MarkFresh(inputs.cacheFile);
  } else {
    std::string text = MessageOf(answer.result, answer.error, request.paths);
    if (!answer.description.empty()) text += ": " + answer.description;
    failure_ = Error(answer.error, text, "refresh");
  }
  return result(answer.result, answer.error);
}

void RemarkOn(const YearGrid& grid, std::ostream& messages) {
  UncarriedNames uncarried(grid.Filter());
  uncarried.Look(grid.Events());
  uncarried.Report(messages, "the year");
  if (const std::string why = WhyEmpty(grid); !why.empty()) messages << why << '\n';
}

}  // namespace velkor
