// bench/ReadingFigures.cpp: reading calendars with eight times as many values of one kind, and many
// objects in place of one file.
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "bench/Comparison.h"
#include "bench/Figures.h"
#include "calendar/ics/read/IcsParser.h"
#include "calendar/mirror/Mirror.h"
#include "calendar/mirror/ReadMirror.h"

namespace velkor {
namespace {

constexpr int Many = 3000;
constexpr int Times = 8;
/// A square would take 64 times as long.
constexpr double Limit = 16;
constexpr int Rounds = 15;

std::string Event(const std::string& lines) {
  return "BEGIN:VEVENT\n" + lines + "END:VEVENT\n";
}

/// "20260101T000700" for the seventh minute of 2026.
std::string Minute(int minute) {
  const DateFields at = Date::FromFields({2026, 1, 1, 0, minute, 0}).Fields();
  const auto digits = [](int value) { return std::to_string(100 + value).substr(1); };
  return "2026" + digits(at.month) + digits(at.day) + "T" + digits(at.hour) + digits(at.minute) +
         "00";
}

/// An event with a property of so many minutes.
std::string List(const std::string& property, int count) {
  std::string lines = "DTSTART:20260101T000000\n" + property;
  for (int i = 1; i <= count; ++i) lines += (i > 1 ? ",\n " : "") + Minute(i);
  return Event(lines + "\n");
}

std::string SameUid(int count) {
  std::string events;
  for (int i = 1; i <= count; ++i) events += Event("UID:m\nDTSTART:" + Minute(i) + "\n");
  return events;
}

std::string Changes(int count) {
  std::string events = Event("UID:m\nDTSTART:20260101T000000\nRRULE:FREQ=MINUTELY;COUNT=99999\n");
  for (int i = 1; i <= count; ++i) {
    const std::string moment = Minute(i);
    events += Event("UID:m\nRECURRENCE-ID:" + moment + "\nDTSTART:" + moment + "\n");
  }
  return events;
}

std::string Removed(int count) {
  return List("RRULE:FREQ=MINUTELY;COUNT=99999\nEXDATE:", count);
}

std::string LongName(int count) {
  return std::string(static_cast<std::size_t>(count) * 10, 'x');
}

std::string LongParameter(int count) {
  return List("RDATE;X-A=" + LongName(count) + ";TZID=America/St_Johns:", count);
}

std::string LongZone(int count) {
  return "BEGIN:VTIMEZONE\nTZID:" + LongName(count) +
         "\nBEGIN:STANDARD\nDTSTART:19700101T000000\nTZOFFSETFROM:+0000\nTZOFFSETTO:+0000\n"
         "END:STANDARD\nEND:VTIMEZONE\n" +
         List("RDATE;TZID=" + LongName(count) + ":", count);
}

const DateWindow Year{Date::FromYmd(2026, 1, 1), Date::FromYmd(2027, 1, 1)};

double SecondsToRead(const std::string& components) {
  const std::string text = "BEGIN:VCALENDAR\nVERSION:2.0\n" + components + "END:VCALENDAR\n";
  IcsLimits limits;
  limits.itemOccurrences = limits.occurrences = 1'000'000;
  return SecondsOf(
      [&] { benchmark::DoNotOptimize(ParseIcs(text, "many.ics", Year, limits).items.data()); });
}

/// An event in a zone that stands beside it, as servers keep each one.
std::string WithZone(const std::string& event) {
  return "BEGIN:VTIMEZONE\nTZID:Here\nBEGIN:STANDARD\nDTSTART:19700101T000000\n"
         "TZOFFSETFROM:+0200\nTZOFFSETTO:+0100\nRRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\n"
         "END:STANDARD\nBEGIN:DAYLIGHT\nDTSTART:19700101T000000\nTZOFFSETFROM:+0100\n"
         "TZOFFSETTO:+0200\nRRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\nEND:DAYLIGHT\n"
         "END:VTIMEZONE\n" +
         event;
}

std::string EventOf(int number) {
  return Event("UID:u" + std::to_string(number) + "\nSUMMARY:Event " + std::to_string(number) +
               "\nDTSTART;TZID=Here:" + Minute(number) + "\nDURATION:PT1H\n");
}

/// A mirror of a server's calendar over a file of the same events.
void CompareMirror(benchmark::State& state) {
  constexpr int Objects = 50'000;
  constexpr double MostOfAFile = 5;
  const std::string folder =
      std::filesystem::temp_directory_path() / ("mirror-bench-" + std::to_string(getpid()));
  Mirror mirror(folder);
  std::string all;
  for (int i = 0; i < Objects; ++i) {
    const std::string event = EventOf(i);
    mirror.Put("/c/" + std::to_string(i) + ".ics", "1",
               "BEGIN:VCALENDAR\nVERSION:2.0\n" + WithZone(event) + "END:VCALENDAR\n");
    all += event;
  }
  const std::string file = WithZone(all);
  Compare(
      state, MostOfAFile, [&] { return SecondsToRead(file); },
      [&] {
        return SecondsOf([&] { benchmark::DoNotOptimize(ReadMirror(folder, Year).items.data()); });
      });
  std::filesystem::remove_all(folder);
}

}  // namespace

void RegisterReadingFigures() {
  const std::pair<const char*, std::function<std::string(int)>> shapes[] = {
      {"events of one UID", SameUid},
      {"changed occurrences", Changes},
      {"removed occurrences", Removed},
      {"dates after a long parameter", LongParameter},
      {"dates in a zone of a long name", LongZone}};
  for (const auto& [name, shape] : shapes) {
    RegisterFigure("reading: eight times the " + std::string(name), Rounds,
                   [few = shape(Many), many = shape(Times * Many)](benchmark::State& state) {
                     Compare(
                         state, Limit, [&] { return SecondsToRead(few); },
                         [&] { return SecondsToRead(many); });
                   });
  }
  RegisterFigure("reading: a mirror of 50,000 objects over a file", 3, CompareMirror);
}

}  // namespace velkor
