// hosts/yearplan/commands/PrintTask.cpp: the options of `yearplan print`.
#include "hosts/yearplan/commands/PrintTask.h"

#include <QLocale>
#include <array>
#include <cmath>
#include <cstdint>

#include "hosts/yearplan/commands/CommandLine.h"
#include "span/DisplaySpan.h"

namespace velkor {
namespace {

namespace names {
constexpr const char* Paper = "paper";
constexpr const char* Landscape = "landscape";
constexpr const char* Portrait = "portrait";
constexpr const char* Months = "months";
constexpr const char* Margins = "margins";
constexpr const char* Header = "header";
constexpr const char* Subjects = "subjects";
/// An option that other commands have, too.
constexpr const char* NoSubjects = "no-subjects";
constexpr const char* Multiline = "multiline";
constexpr const char* NoLegendRepeat = "no-legend-repeat";
constexpr const char* MinBands = "min-bands";
constexpr const char* MinBandHeight = "min-band-height";
constexpr const char* LegendWidth = "legend-width";
constexpr const char* Pages = "pages";
}  // namespace names

/// Years are printed on sheets; codes are those of the device mode.
struct PaperName {
  const char* name;
  int code;
};
constexpr std::array<PaperName, 14> Papers{{
    {"Letter", device_mode::PaperLetter},
    {"Tabloid", 3},
    {"Legal", 5},
    {"Statement", 6},
    {"Executive", 7},
    {"A3", 8},
    {"A4", device_mode::PaperA4},
    {"A5", 11},
    {"B4", 12},
    {"B5", 13},
    {"Folio", 14},
    {"C", 24},
    {"D", 25},
    {"E", 26},
}};

QString PaperNames() {
  QStringList all;
  for (const PaperName& paper : Papers) all << paper.name;
  return all.join(", ");
}

int ReadPaper(const QString& text) {
  for (const PaperName& paper : Papers) {
    if (text.compare(paper.name, Qt::CaseInsensitive) == 0) return paper.code;
  }
  throw UsageError("--paper takes one of " + PaperNames().toStdString() + ", not \"" +
                   text.toStdString() + "\"");
}

/// A number with a decimal point from 0 to as many; nothing for other texts.
std::optional<double> ReadNumber(const QString& text, double most) {
  bool isNumber = false;
  const double value = QLocale::c().toDouble(text, &isNumber);
  if (!isNumber || !std::isfinite(value) || value < 0 || value > most) return std::nullopt;
  return value;
}

constexpr double MostMillimetres = 10000;

double Millimetres(const QCommandLineParser& parser, const char* option) {
  const QString text = parser.value(option);
  const auto value = ReadNumber(text, MostMillimetres);
  if (value) return *value;
  throw UsageError(std::string("--") + option + " takes millimetres, 0 to 10000, not \"" +
                   text.toStdString() + "\"");
}

std::int32_t ToTwips(double millimetres) {
  return static_cast<std::int32_t>(RoundHalfEven(millimetres * TwipsPerMillimetre));
}

void ReadMargins(const QString& text, PrintOptionSet& options) {
  const QStringList parts = text.split(',');
  std::vector<std::int32_t> twips;
  for (const QString& part : parts) {
    if (const auto value = ReadNumber(part.trimmed(), MostMillimetres)) {
      twips.push_back(ToTwips(*value));
    }
  }
  if (twips.size() != static_cast<std::size_t>(parts.size()) ||
      (twips.size() != 1 && twips.size() != 4)) {
    throw UsageError(
        "--margins takes millimetres, one number or left,top,right,bottom as in 20,15,20,15, "
        "not \"" +
        text.toStdString() + "\"");
  }
  if (twips.size() == 1) twips.resize(4, twips.front());
  options.LeftMargin = twips[0];
  options.TopMargin = twips[1];
  options.RightMargin = twips[2];
  options.BottomMargin = twips[3];
}

/// From a number or from three or more letters of the English name; 0 for other texts.
int ReadMonth(const QString& text) {
  constexpr int Months = 12;
  constexpr int LeastLetters = 3;
  bool isNumber = false;
  const int number = text.toInt(&isNumber);
  if (isNumber) return number >= 1 && number <= Months ? number : 0;
  for (int month = 1; text.size() >= LeastLetters && month <= Months; ++month) {
    if (QLocale::c().standaloneMonthName(month).startsWith(text, Qt::CaseInsensitive)) return month;
  }
  return 0;
}

/// Twelve months from the first one on, or those that the text names.
void ReadMonths(const QString& text, int firstMonth, PrintOptionSet& options) {
  const DisplaySpan span{2000, firstMonth};
  int from = firstMonth;
  int to = span.MonthOfRow(12);
  if (!text.isNull()) {
    const QStringList parts = text.split('-');
    from = ReadMonth(parts.first().trimmed());
    to = ReadMonth(parts.last().trimmed());
    if (parts.size() > 2 || from == 0 || to == 0) {
      throw UsageError("--months takes one month or two as in Mar-Oct or 3-10, not \"" +
                       text.toStdString() + "\"");
    }
  }
  if (span.RowOfMonth(to) < span.RowOfMonth(from)) {
    const auto name = [](int month) {
      return QLocale::c().standaloneMonthName(month).toStdString();
    };
    throw UsageError("--months " + text.toStdString() + " ends before it begins: the year goes " +
                     "from " + name(firstMonth) + " to " + name(span.MonthOfRow(12)));
  }
  options.StartMonth = static_cast<std::int16_t>(from);
  options.EndMonth = static_cast<std::int16_t>(to);
}

/// What a user enters, plus one.
std::int16_t ReadMinBands(const QString& text) {
  constexpr int Most = 1000;
  bool isNumber = false;
  const int value = text.toInt(&isNumber);
  if (!isNumber || value < 0 || value > Most) {
    throw UsageError("--min-bands takes a whole number from 0 to 1000, not \"" +
                     text.toStdString() + "\"");
  }
  return static_cast<std::int16_t>(value + 1);
}

}  // namespace

const std::vector<const char*>& PrintOptionNames() {
  using namespace names;
  static const std::vector<const char*> all{
      Paper,     Landscape,      Portrait, Months,        Margins,     Header, Subjects,
      Multiline, NoLegendRepeat, MinBands, MinBandHeight, LegendWidth, Pages};
  return all;
}

void AddPrintOptions(QCommandLineParser& parser) {
  parser.addOptions({
      {names::Paper, "print: the paper (A4), one of " + PaperNames() + ".", "name", "A4"},
      {names::Landscape, "print: pages lie on their long side, as without this."},
      {names::Portrait, "print: pages stand upright."},
      {names::Months, "print: only these months, as in Mar-Oct or 3-10.", "from-to"},
      {names::Margins, "print: margins in millimetres (20), one number or left,top,right,bottom.",
       "mm", "20"},
      {names::Header, "print: a line below the year on every page.", "text"},
      {names::Subjects, "print: write subjects into the bars, as without this."},
      {names::Multiline,
       "print: wrap subjects and crop what goes beyond the bar; else each is one line with an "
       "ellipsis."},
      {names::NoLegendRepeat, "print: the legend once, not on every page."},
      {names::MinBands, "print: rows that every month has at least (3).", "number", "3"},
      {names::MinBandHeight,
       "print: least height of a row in millimetres (2.5); more pages are used where a lower one "
       "would be needed.",
       "mm", "2.5"},
      {names::LegendWidth, "print: width of the legend in millimetres (40).", "mm", "40"},
      {names::Pages, "print: tell what each page would hold, and write no file."},
  });
}

PrintTask ReadPrintTask(const QCommandLineParser& parser, int firstMonth) {
  if (parser.isSet(names::Landscape) && parser.isSet(names::Portrait)) {
    throw UsageError("Either --landscape or --portrait, not both");
  }
  const bool withoutSubjects = parser.isSet(names::NoSubjects);
  if (withoutSubjects && (parser.isSet(names::Multiline) || parser.isSet(names::Subjects))) {
    throw UsageError("--no-subjects goes neither with --subjects nor with --multiline");
  }
  PrintTask task;
  task.paper = ReadPaper(parser.value(names::Paper));
  if (parser.isSet(names::Portrait)) task.orientation = device_mode::Portrait;
  task.pages = parser.isSet(names::Pages);

  PrintOptionSet& options = task.options;
  ReadMargins(parser.value(names::Margins), options);
  ReadMonths(parser.value(names::Months), firstMonth, options);
  options.Header = parser.value(names::Header).toStdString();
  options.VisibleText = !withoutSubjects;
  options.PrintFormat =
      parser.isSet(names::Multiline) ? print_formats::Multiline : print_formats::SingleLine;
  options.ReprintLegend = !parser.isSet(names::NoLegendRepeat);
  options.MinBands = ReadMinBands(parser.value(names::MinBands));
  options.MinBandHeight =
      static_cast<float>(Millimetres(parser, names::MinBandHeight) * TwipsPerMillimetre);
  if (!parser.isSet(names::MinBandHeight)) options.MinBandHeight = PrintOptionSet{}.MinBandHeight;
  options.LegendWidth = ToTwips(Millimetres(parser, names::LegendWidth));
  return task;
}

}  // namespace velkor
