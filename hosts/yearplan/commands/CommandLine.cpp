// hosts/yearplan/commands/CommandLine.cpp: the command line of yearplan, parsed and checked.
#include "hosts/yearplan/commands/CommandLine.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "hosts/yearplan/GivenCalendars.h"
#include "hosts/yearplan/PropertyTexts.h"
#include "span/DisplaySpan.h"
#include "values/Error.h"
#include "values/IsoDate.h"

namespace velkor {
namespace {

constexpr int LeastSide = 200;
constexpr int MostSide = 100000;
constexpr int LeastYear = 100;
constexpr int MostYear = 9999;

constexpr std::array<std::pair<std::string_view, Command>, 7> Commands{{
    {"render", Command::Render},
    {"refresh", Command::Refresh},
    {"inspect", Command::Inspect},
    {"export", Command::Export},
    {"print", Command::Print},
    {"categories", Command::Categories},
    {"sync", Command::Sync},
}};

constexpr const char* Description =
    "Shows a whole year of a calendar at a glance.\n"
    "\n"
    "Commands:\n"
    "  yearplan [CALENDAR...]                  open the window, without a calendar on the\n"
    "                                          one that was open last; without a display\n"
    "                                          draw the year into this folder, over an\n"
    "                                          earlier picture, and say where\n"
    "  yearplan render CALENDAR -o FILE        draw the year to a PNG, SVG or PDF file\n"
    "  yearplan refresh CALENDAR               write the year's cache file and say where\n"
    "  yearplan inspect CALENDAR --json        print the laid-out year as JSON\n"
    "  yearplan inspect --cache FILE --json    the same from a cache file\n"
    "  yearplan export CALENDAR -o FILE        write categories and appointments to an XML\n"
    "                                          file, over an earlier one; --from and --to\n"
    "                                          tell of which years\n"
    "  yearplan print CALENDAR -o FILE.pdf     print the year to a PDF file, page by page\n"
    "  yearplan print CALENDAR --pages         tell what each page would hold\n"
    "  yearplan categories CALENDAR [list]     print colour and name of each category\n"
    "  yearplan categories CALENDAR new NAME   add a category, in blue\n"
    "  yearplan categories CALENDAR rename OLD NEW [--list-only]\n"
    "                                          in the list and in all appointments\n"
    "  yearplan categories CALENDAR recolour NAME COLOUR\n"
    "  yearplan categories CALENDAR delete NAME\n"
    "                                          COLOUR is given as in '#3366CC', red first;\n"
    "                                          of two names that are alike the first is\n"
    "                                          meant; -- goes before a name that begins\n"
    "                                          with a dash\n"
    "  yearplan sync SET...                    bring the web addresses and server calendars\n"
    "                                          of sets (.yearplan) up to date, and send what\n"
    "                                          was changed here; SET may be an address\n"
    "\n"
    "CALENDAR is an iCalendar file (.ics), a set of calendars (.yearplan), or an address (webcal,\n"
    "http, https); several of them are shown as one. With --account, addresses are those of\n"
    "calendars on a server. What lies in the network is shown as it was last fetched (sync).\n"
    "Only the window and categories write to calendars.\n"
    "Cache files lie in $XDG_CACHE_HOME/outlookvelkor, else in ~/.cache/outlookvelkor.\n"
    "Exit codes: 0 done, 1 failed, 2 wrong usage, 3 (sync) something waits for an answer\n"
    "in the window.";

/// The options that more than one place names.
namespace names {
constexpr const char* Output = "output";
constexpr const char* Cache = "cache";
constexpr const char* Json = "json";
constexpr const char* PointOption = "point";
constexpr const char* From = "from";
constexpr const char* To = "to";
constexpr const char* CategoriesOnly = "categories-only";
constexpr const char* ListOnly = "list-only";
constexpr const char* PasswordInput = "password-stdin";
constexpr const char* Trust = "trust";
}  // namespace names

/// What a window is told by its settings instead, beside the properties.
constexpr std::array NotForWindows{"filter", "match-all", "size", "today"};

void AddPropertyOptions(QCommandLineParser& parser) {
  for (const PropertyTexts& texts : PropertyTextTable) {
    if (texts.option != nullptr) parser.addOption({texts.option, texts.help, texts.valueName});
  }
}

void AddOptions(QCommandLineParser& parser) {
  parser.setApplicationDescription(QString::fromUtf8(Description));
  parser.addPositionalArgument("arguments", "a command and a calendar file",
                               "[command] [CALENDAR...]");
  parser.addOptions({
      {{"h", "help"}, "Print this help."},
      {{"v", "version"}, "Print the version."},
      {{"y", "year"},
       "The year in which the twelve months begin, 100 to 9999; without it, today's.",
       "year"},
      {{"o", names::Output},
       "render: the picture, ending in .png, .svg or .pdf. export: the XML file. print: the PDF "
       "file.",
       "file"},
      {names::Cache, "inspect: read this cache file instead of a calendar.", "file"},
      {names::Json, "inspect: print JSON, the only format."},
      {names::PointOption,
       "inspect: also tell what lies under this point of the grid, in twips; may stand several "
       "times.",
       "x,y"},
      {names::From,
       "export: the first year, 100 to 9999; --from or --to alone is that one year, without both "
       "it is today's.",
       "year"},
      {names::To, "export: the last year.", "year"},
      {names::CategoriesOnly, "export: leave the appointments out."},
      {names::ListOnly, "categories: rename in the list and leave the appointments as they are."},
      {names::PasswordInput,
       "sync: the first line of standard input is the password. Without it the system's key store "
       "is asked, then the terminal."},
      {names::Trust,
       "sync: trust the certificate of a host this time, by its SHA-256; may stand several times.",
       "host=sha256"},
  });
  AddPropertyOptions(parser);
  parser.addOption({"account", "The user whose calendars on a server the addresses are.", "user"});
  parser.addOptions({
      {"filter", "Show only events with one of these categories; case matters.", "A, B", ""},
      {"match-all", "Show only events with all categories of the filter."},
      {"size",
       "Size in pixels, 200 to 100000 a side (1920x1200); a picture grows in height until every "
       "event fits. PNG holds at most 20000 a side, SVG and PDF any height.",
       "WxH", "1920x1200"},
      {"today", "The day to mark instead of today, as in 2026-07-01.", "date"},
  });
  AddPrintOptions(parser);
}

int WholeNumber(const QString& text, const char* option, int least, int most) {
  bool isNumber = false;
  const int value = text.toInt(&isNumber);
  if (!isNumber || value < least || value > most) {
    throw UsageError(std::string("--") + option + " takes a whole number from " +
                     std::to_string(least) + " to " + std::to_string(most) + ", not \"" +
                     text.toStdString() + "\"");
  }
  return value;
}

void ReadSize(const QString& text, CommandLine& line) {
  const QStringList sides = text.split('x');
  if (sides.size() != 2) {
    throw UsageError("--size takes width and height as in 1920x1200, not \"" + text.toStdString() +
                     "\"");
  }
  line.width = WholeNumber(sides[0], "size", LeastSide, MostSide);
  line.height = WholeNumber(sides[1], "size", LeastSide, MostSide);
}

/// The properties of a planner that starts with all options that were given.
PlannerProperties ReadProperties(const QCommandLineParser& parser) {
  PlannerProperties properties = FirstProperties();
  for (const PropertyTexts& texts : PropertyTextTable) {
    const char* const option = texts.option;
    if (option == nullptr || !parser.isSet(option)) continue;
    const Property& property = PropertyOf(texts.member);
    PropertyValue value = property.ValueIn(properties);
    if (auto* const text = std::get_if<std::string>(&value)) {
      *text = parser.value(option).toStdString();
    } else if (auto* const truth = std::get_if<bool>(&value)) {
      *truth = !*truth;
    } else {
      value = static_cast<std::int16_t>(WholeNumber(parser.value(option), option, 1, 12));
    }
    try {
      property.Set(properties, value);
    } catch (const Error& error) {
      throw UsageError("--" + std::string(option) + ": " + error.Description());
    }
  }
  return properties;
}

Point ReadPoint(const QString& text) {
  const QStringList parts = text.split(',');
  bool isX = false;
  bool isY = false;
  const Point point{parts.value(0).toDouble(&isX), parts.value(1).toDouble(&isY)};
  if (parts.size() != 2 || !isX || !isY || !std::isfinite(point.x) || !std::isfinite(point.y)) {
    throw UsageError("--point takes two numbers as in 1200,450, not \"" + text.toStdString() +
                     "\"");
  }
  return point;
}

std::optional<Command> CommandOf(const QString& word) {
  for (const auto& [name, command] : Commands) {
    if (word.toStdString() == name) return command;
  }
  return std::nullopt;
}

/// A file that is there, or a name as files have them.
bool MayBeCalendar(const QString& word) {
  return word.contains('.') || word.contains('/') || QFileInfo::exists(word);
}

/// Words without a command in front: a calendar, or a mistake.
void CheckCalendar(const QStringList& words) {
  if (words.isEmpty()) return;
  const std::string first = words.front().toStdString();
  if (first == "help" || first == "version") {
    throw UsageError("\"" + first + "\" is no command but an option, --" + first);
  }
  if (!MayBeCalendar(words.front())) {
    throw UsageError("\"" + first + "\" is neither a command nor a calendar file");
  }
  for (const QString& word : words.mid(1)) {
    if (!CommandOf(word)) continue;
    const std::string command = word.toStdString();
    throw UsageError("The command goes first: yearplan " + command + " " + first);
  }
}

/// Takes the command off the front of the positional arguments.
Command TakeCommand(QStringList& arguments) {
  const auto command = arguments.isEmpty() ? std::nullopt : CommandOf(arguments.front());
  if (!command) {
    CheckCalendar(arguments);
    return Command::Open;
  }
  const std::string name = arguments.takeFirst().toStdString();
  if (!arguments.isEmpty() && !MayBeCalendar(arguments.front())) {
    throw UsageError("After " + name + " comes a calendar file, not \"" +
                     arguments.front().toStdString() + "\"");
  }
  return *command;
}

std::vector<std::string> ToWords(const QStringList& texts) {
  std::vector<std::string> words;
  for (const QString& text : texts) words.push_back(text.toStdString());
  return words;
}

struct OptionUse {
  const char* option;
  std::vector<Command> commands;
};

/// What each option goes with; the others go with all commands.
const std::vector<OptionUse>& OptionUses() {
  using enum Command;
  static const std::vector<OptionUse> uses{
      {names::Output, {Render, Export, Print}},
      {names::Cache, {Inspect}},
      {names::Json, {Inspect}},
      {names::PointOption, {Inspect}},
      {names::From, {Export}},
      {names::To, {Export}},
      {names::CategoriesOnly, {Export}},
      {names::ListOnly, {Categories}},
      {names::PasswordInput, {Sync}},
      {names::Trust, {Sync}},
      {"year", {Open, Render, Refresh, Inspect, Print}},
      {"no-all-events", {Open, Render, Refresh, Inspect, Print}},
      {"no-subjects", {Open, Render, Refresh, Inspect, Print}},
      {"size", {Open, Render, Refresh, Inspect}},
      {"today", {Open, Render, Refresh, Inspect, Print}},
      {"first-month", {Open, Render, Refresh, Inspect, Export, Print}},
      {"filter", {Open, Render, Refresh, Inspect, Export, Print}},
      {"match-all", {Open, Render, Refresh, Inspect, Export, Print}},
  };
  return uses;
}

/// "the command inspect", "the commands render, export".
std::string CommandNames(const std::vector<Command>& commands) {
  std::string all;
  int count = 0;
  for (const auto& [name, command] : Commands) {
    if (std::find(commands.begin(), commands.end(), command) == commands.end()) continue;
    all += (count++ == 0 ? "" : ", ") + std::string(name);
  }
  return (count == 1 ? "the command " : "the commands ") + all;
}

void CheckUse(const QCommandLineParser& parser, Command command, const OptionUse& use) {
  const auto& [option, commands] = use;
  const bool fits = std::find(commands.begin(), commands.end(), command) != commands.end();
  if (!fits && parser.isSet(option)) {
    throw UsageError(std::string("--") + option + " belongs to " + CommandNames(commands));
  }
}

void CheckOptions(const QCommandLineParser& parser, Command command) {
  for (const OptionUse& use : OptionUses()) CheckUse(parser, command, use);
  for (const char* option : PrintOptionNames())
    CheckUse(parser, command, {option, {Command::Print}});
  if (command == Command::Render && !parser.isSet(names::Output)) {
    throw UsageError("render needs -o and the name of the picture");
  }
  if (command == Command::Export && parser.value(names::Output).isEmpty()) {
    throw UsageError("export needs -o and the name of the XML file");
  }
  if (command == Command::Print && parser.isSet(names::Output) == parser.isSet("pages")) {
    throw UsageError("print needs either -o and the name of the PDF file, or --pages");
  }
  if (command == Command::Inspect && !parser.isSet(names::Json)) {
    throw UsageError("inspect needs --json");
  }
}

void CheckSpan(const std::optional<int>& year, int firstMonth) {
  if (year && !IsValidSpan({*year, firstMonth})) {
    throw UsageError("The twelve months would end after the year 9999");
  }
}

/// One of the two alone stands for both.
void ReadExportYears(const QCommandLineParser& parser, CommandLine& line) {
  const auto year = [&](const char* option, const char* other) -> std::optional<int> {
    const char* given = parser.isSet(option) ? option : other;
    if (!parser.isSet(given)) return std::nullopt;
    return WholeNumber(parser.value(given), given, LeastYear, MostYear);
  };
  line.fromYear = year(names::From, names::To);
  line.toYear = year(names::To, names::From);
  if (line.fromYear > line.toYear) {
    throw UsageError("--from " + std::to_string(*line.fromYear) + " lies after --to " +
                     std::to_string(*line.toYear));
  }
  CheckSpan(line.toYear, line.properties.FirstMonth);
}

/// The first option given that a window does not take; empty for none.
std::string PictureOptionOf(const QCommandLineParser& parser) {
  for (const PropertyTexts& texts : PropertyTextTable) {
    if (texts.option != nullptr && parser.isSet(texts.option)) return texts.option;
  }
  for (const char* option : NotForWindows) {
    if (parser.isSet(option)) return option;
  }
  return {};
}

/// What the words after the command say: the calendars, and what becomes of its categories.
/// @param rest  those words
void ReadCalendars(const QCommandLineParser& parser, QStringList rest, CommandLine& line) {
  line.cacheFile = parser.value(names::Cache).toStdString();
  if (line.command == Command::Categories && rest.size() > 1) {
    line.categoryTask = ParseCategoryTask(ToWords(rest.mid(1)));
    line.categoryTask.listOnly = parser.isSet(names::ListOnly);
    if (line.categoryTask.listOnly && line.categoryTask.kind != CategoryTask::Kind::Rename) {
      throw UsageError("--list-only belongs to categories CALENDAR rename");
    }
  }
  if (!rest.isEmpty() && !line.cacheFile.empty()) {
    throw UsageError("Either a calendar or --cache, not both");
  }
  if (line.command == Command::Categories) rest = rest.mid(0, 1);
  for (const QString& word : rest) {
    if (!MayBeCalendar(word)) {
      throw UsageError("\"" + word.toStdString() + "\" is no calendar file");
    }
    line.calendars.push_back(word.toStdString());
  }
  line.account = parser.value("account").toStdString();
  const bool hasAddress =
      std::any_of(line.calendars.begin(), line.calendars.end(), IsCalendarAddress);
  if (parser.isSet("account") && !hasAddress) {
    throw UsageError("--account goes with the address of a calendar on a server");
  }
  if (line.calendars.size() == 1 && !hasAddress) line.calendar = line.calendars.front();
  if (line.command != Command::Open && line.calendars.empty() && line.cacheFile.empty()) {
    throw UsageError("A calendar file is missing");
  }
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  QCommandLineParser parser;
  AddOptions(parser);
  QStringList words{"yearplan"};
  for (const std::string& argument : arguments) words << QString::fromStdString(argument);
  if (!parser.parse(words)) {
    throw UsageError(parser.errorText().remove(QRegularExpression("\\.$")).toStdString());
  }

  CommandLine line;
  if (parser.isSet("version")) line.command = Command::Version;
  if (parser.isSet("help")) line.command = Command::Help;
  if (parser.isSet("version") || parser.isSet("help")) return line;

  QStringList rest = parser.positionalArguments();
  line.command = TakeCommand(rest);
  CheckOptions(parser, line.command);
  ReadCalendars(parser, rest, line);
  line.pictureOption = PictureOptionOf(parser);
  line.output = parser.value(names::Output).toStdString();
  if (parser.isSet("year"))
    line.year = WholeNumber(parser.value("year"), "year", LeastYear, MostYear);
  line.properties = ReadProperties(parser);
  CheckSpan(line.year, line.properties.FirstMonth);
  ReadExportYears(parser, line);
  line.syncTask =
      ParseSyncTask(parser.isSet(names::PasswordInput), ToWords(parser.values(names::Trust)));
  if (line.command == Command::Sync) CheckCanBeSynchronised(line.calendars);
  line.printTask = ReadPrintTask(parser, line.properties.FirstMonth);
  line.categoriesOnly = parser.isSet(names::CategoriesOnly);
  if (parser.isSet("today")) {
    line.today = ParseIso(parser.value("today").toStdString());
    if (!line.today) throw UsageError("--today takes a date as in 2026-07-01");
  }
  line.filter = parser.value("filter").toStdString();
  line.matchAll = parser.isSet("match-all");
  ReadSize(parser.value("size"), line);
  for (const QString& point : parser.values(names::PointOption)) {
    line.points.push_back(ReadPoint(point));
  }
  return line;
}

std::string HelpText() {
  QCommandLineParser parser;
  AddOptions(parser);
  // Without the folder that the program was started from, and without the arguments' list, which
  // the commands tell better.
  QString help = parser.helpText().replace(QRegularExpression("^Usage: \\S+"), "Usage: yearplan");
  help.truncate(help.indexOf("\nArguments:"));
  return help.toStdString();
}

}  // namespace velkor
