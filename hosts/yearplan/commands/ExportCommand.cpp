// hosts/yearplan/commands/ExportCommand.cpp: the years of a command line, as an export reads them.
#include "hosts/yearplan/commands/ExportCommand.h"

#include <QFileInfo>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>

#include "categories/UncarriedNames.h"
#include "exchange/XmlExport.h"
#include "hosts/yearplan/commands/CalendarReader.h"
#include "model/YearSource.h"
#include "values/Error.h"

namespace velkor {
namespace {

/// So many years are taken from one reading of the calendar: a reading has room for so many
/// occurrences and no more, and each year looks through all of them.
constexpr int YearsOfReading = 20;

/// "1 appointment", "2 appointments".
std::string Counted(int count, const std::string& one, const std::string& many) {
  return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

/// Taken in rising order; each year's cache file is brought up to date first.
class ExportYears : public YearSource {
 public:
  /// Both outlive this.
  ExportYears(const CommandLine& line, std::ostream& messages)
      : line_(line),
        reader_(line, messages),
        first_{line.fromYear.value_or(Today()), line.firstMonth},
        last_{line.toYear.value_or(Today()), line.firstMonth},
        filter_(reader_.Filter()),
        uncarried_(filter_) {}

  CalendarReader& Reader() { return reader_; }
  const UncarriedNames& Uncarried() const { return uncarried_; }
  /// Appointments whose items were asked for.
  int Fetched() const { return fetched_; }
  int FirstYear() const { return first_.ViewYear; }
  int LastYear() const { return last_.ViewYear; }

  void Open() { OpenFrom(FirstYear()); }

  int DisplayedYear() const override { return first_.ViewYear; }
  const CategoryTable& Categories() const override { return reader_.Categories(); }
  const CategoryFilter& Filter() const override { return filter_; }
  std::optional<EventCollection> EventsOf(int viewYear,
                                          const std::function<bool()>& /*goesOn*/) override {
    const DisplaySpan span{viewYear, line_.firstMonth};
    const EventFields fields{span, MonthColumns(span), Categories(), filter_.FilterSeparator(),
                             line_.grid.HideNonCategoryItems};
    if (viewYear > lastRead_) OpenFrom(viewYear);
    // Right before it is loaded, since a planner of another first month shares the cache file.
    reader_.Refresh(span);
    EventCollection events = reader_.Load(reader_.PathsOf(viewYear).cacheFile, fields);
    uncarried_.Look(events);
    return events;
  }
  std::unique_ptr<OutlookItem> ItemOf(std::string_view eventId) override {
    auto item = reader_.ItemOf(eventId);
    ++fetched_;
    return item;
  }
  void BeginReadingYears() override {}
  void EndReadingYears() override {}

 private:
  void OpenFrom(int year) {
    lastRead_ = std::min(year + YearsOfReading - 1, LastYear());
    reader_.Open({year, line_.firstMonth}, {lastRead_, line_.firstMonth});
  }
  int Today() { return DisplaySpan{0, line_.firstMonth}.ViewYearOf(reader_.Seams().clock.Now()); }

  const CommandLine& line_;
  CalendarReader reader_;
  DisplaySpan first_;
  DisplaySpan last_;
  /// The last year whose occurrences were read.
  int lastRead_ = 0;
  CategoryFilter filter_;
  UncarriedNames uncarried_;
  int fetched_ = 0;
};

/// An export replaces the file that it is given, whatever that holds.
void CheckTarget(const CommandLine& line) {
  std::error_code absent;
  if (std::filesystem::equivalent(line.calendar, line.output, absent)) {
    throw Error(errors::BadFileName, line.output + " is the calendar itself; nothing was written");
  }
}

/// "Years 2025 to 2026, 40 appointments, 5 categories".
std::string Summary(const CommandLine& line, const ExportYears& years) {
  const std::string categories = Counted(years.Categories().Count(), "category", "categories");
  if (line.categoriesOnly) return categories;
  const std::string first = std::to_string(years.FirstYear());
  const std::string span = years.FirstYear() == years.LastYear()
                               ? "Year " + first
                               : "Years " + first + " to " + std::to_string(years.LastYear());
  return span + ", " + Counted(years.Fetched(), "appointment", "appointments") + ", " + categories;
}

}  // namespace

void Export(const CommandLine& line, std::ostream& out, std::ostream& messages) {
  CheckTarget(line);
  ExportYears years(line, messages);
  CalendarReader& reader = years.Reader();
  years.Open();
  const std::string path =
      QFileInfo(QString::fromStdString(line.output)).absoluteFilePath().toStdString();
  XmlExport exporter(years, reader.Seams().On(reader.Outlook()));
  const ExportOutcome outcome = exporter.Write(path, {.firstYear = years.FirstYear(),
                                                      .lastYear = years.LastYear(),
                                                      .categoriesOnly = line.categoriesOnly});
  if (outcome != ExportOutcome::Saved) {
    throw Error(errors::PathNotFound, reader.Seams().messages.Text() + ' ' + path);
  }
  if (!line.categoriesOnly) years.Uncarried().Report(messages, "these years");
  out << Summary(line, years) << ": " << path << '\n';
}

}  // namespace velkor
