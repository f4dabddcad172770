// exchange/XmlExport.cpp: what the export takes from which years, and how the file is replaced.
#include "exchange/XmlExport.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "exchange/XmlDocument.h"
#include "exchange/dlgSaveType.h"
#include "model/CategoryTable.h"
#include "model/EventCollection.h"
#include "model/Guard.h"
#include "model/YearSource.h"
#include "platform/CommonDialogs.h"
#include "platform/Outlook.h"
#include "platform/Progress.h"
#include "platform/System.h"
#include "span/CategoryFilter.h"
#include "support/modFileIO.h"
#include "values/IsoDate.h"

namespace velkor {
namespace {

/// The progress of one year is counted in so many steps.
constexpr int StepsOfYear = 100;
/// The user is asked for the wish to end after so many events.
constexpr int EventsOfStep = 32;

/// Reads several years; the source hears of the end in every case.
template <typename Read>
void ReadYears(YearSource& source, Read&& read) {
  source.BeginReadingYears();
  try {
    std::forward<Read>(read)();
  } catch (...) {
    try {
      source.EndReadingYears();
    } catch (...) {
      // What failed first is told.
    }
    throw;
  }
  source.EndReadingYears();
}

/// The same failure with the appointment that it is about, unless it names that already.
Error Naming(const Error& error, const CalEvent& event) {
  const std::string subject = "\"" + event.Subject + "\"";
  const std::string& description = error.Description();
  if (description.find(subject) != std::string::npos) return error;
  return Error(error.Number(),
               description + " (" + subject + ", " + ToIso(event.StartDate).substr(0, 10) + ")",
               error.Source());
}

/// Where a file is written before it gets its name: beside it, under a hidden name that is this
/// product's own, no longer than any file system allows, and the same each time, so that an export
/// that was stopped leaves no more than one.
std::string WorkFileOf(const std::string& fileName, char separator) {
  const auto nameAt = fileName.find_last_of(separator == '\\' ? "\\/:" : "/") + 1;
  // FNV-1a, of 64 bits.
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : std::string_view(fileName).substr(nameAt)) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  }
  std::string name = ".velkor-export-";
  for (int shift = 60; shift >= 0; shift -= 4) name += "0123456789abcdef"[hash >> shift & 15];
  return fileName.substr(0, nameAt) + name;
}

}  // namespace

void XmlExport::Run() {
  Guard(platform_.messages, "Error whilst performing Export: ", [&] {
    dlgSaveType form;
    form.SelectedYear = source_.DisplayedYear();
    form.Load();
    platform_.forms.ShowModal(form);
    if (!form.OKPressed) return;
    const std::string fileName = platform_.dialogs.ShowSave(
        {.filter = "Velkor Data(*.xml)|*.xml|All Files(*.*)|*.*",
         .title = "Save Velkor Data",
         .flags = file_dialog_flags::OverwritePrompt | file_dialog_flags::HideReadOnly,
         .defaultExtension = "xml"});
    if (fileName.empty()) return;
    ExportChoice choice{.categoriesOnly = form.CategoriesOnly};
    if (!choice.categoriesOnly) {
      choice.firstYear = form.DateFrom.value().Fields().year;
      choice.lastYear = form.DateTo.value().Fields().year;
    }
    Write(fileName, choice);
  });
}

ExportOutcome XmlExport::Write(const std::string& fileName, const ExportChoice& choice) {
  XmlDocument document(platform_.locale, choice.host, source_.Categories());
  if (!choice.categoriesOnly) {
    document.BeginAppointments();
    if (!AddYears(choice, document)) return ExportOutcome::Cancelled;
  }
  document.End();
  return Save(fileName, document.Pieces()) ? ExportOutcome::Saved : ExportOutcome::NotSaved;
}

bool XmlExport::AddYears(const ExportChoice& choice, XmlDocument& document) {
  // Messages are processed meanwhile, which may change the filter of the view.
  const CategoryFilter filter = source_.Filter();
  const auto progress = platform_.progress.Begin("Export");
  const int total = (choice.lastYear - choice.firstYear + 1) * StepsOfYear;
  bool goesOn = true;
  ReadYears(source_, [&] {
    for (int year = choice.firstYear; goesOn && year <= choice.lastYear; ++year) {
      const int done = (year - choice.firstYear) * StepsOfYear;
      const std::string text = "Year " + std::to_string(year);
      const auto step = [&](int doneOfYear) {
        return progress->Step(done + doneOfYear, total, text);
      };
      const auto events = step(0) ? source_.EventsOf(year, [&] { return step(0); }) : std::nullopt;
      goesOn = events && AddYear(*events, filter, step, document);
    }
  });
  return goesOn;
}

bool XmlExport::AddYear(const EventCollection& events, const CategoryFilter& filter,
                        const std::function<bool(int doneOfYear)>& step, XmlDocument& document) {
  std::size_t seen = 0;
  for (const CalEvent& event : events) {
    if (++seen % EventsOfStep == 0 &&
        !step(static_cast<int>(seen * StepsOfYear / events.Count()))) {
      return false;
    }
    if (event.CatIndex < 0 || filter.IsFilteredOut(event.Categories)) continue;
    AddAppointment(event, document);
  }
  return true;
}

void XmlExport::AddAppointment(const CalEvent& event, XmlDocument& document) {
  std::string body;
  std::string location;
  try {
    const auto item = source_.ItemOf(event.EventID);
    body = item->Body();
    location = item->Location();
  } catch (const Error& error) {
    throw Naming(error, event);
  }
  document.AddAppointment(event, body, location);
}

bool XmlExport::Save(const std::string& fileName, const std::vector<std::string>& pieces) {
  const std::string beside = WorkFileOf(fileName, platform_.environment.PathSeparator());
  while (true) {
    try {
      const bool saved = modFileIO::Replace(platform_.files, fileName, beside, pieces);
      Tell(platform_.messages, saved ? ExportSaved : "Failed to save file.");
      return saved;
    } catch (const Error& error) {
      using modFileIO::FileErrorAnswer;
      const auto answer = modFileIO::ReportFileError(platform_.messages, error.Number());
      if (answer == FileErrorAnswer::NotAFileError) throw;
      if (answer != FileErrorAnswer::Retry) return false;
    }
  }
}

}  // namespace velkor
