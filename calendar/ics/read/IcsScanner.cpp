// calendar/ics/read/IcsScanner.cpp: follows BEGIN and END through an iCalendar file.
#include "calendar/ics/read/IcsScanner.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "calendar/ics/read/IcsLines.h"
#include "calendar/ics/read/IcsValues.h"
#include "values/Text.h"

namespace velkor {
namespace {

/// Components that stand directly in a calendar, never in one another.
bool IsTopLevel(std::string_view name) {
  static constexpr std::array<std::string_view, 5> Names{"VEVENT", "VTODO", "VJOURNAL", "VFREEBUSY",
                                                         "VTIMEZONE"};
  return std::find(Names.begin(), Names.end(), name) != Names.end();
}

std::string UpperName(std::string_view value) {
  std::string name(Trim(value.substr(0, 64)));
  std::transform(name.begin(), name.end(), name.begin(), Upper);
  return name;
}

class Scanner {
 public:
  Scanner(std::string_view bytes, const IcsLimits& limits, Diagnostics& diagnostics)
      : bytes_(bytes), limits_(limits), diagnostics_(diagnostics) {}

  IcsScan Run() {
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    IcsLines lines(bytes_, bytes_.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0,
                   bytes_.size(), 1, limits_.lineLength);
    IcsLine line;
    while (lines.Next(line)) Take(line);
    if (!open_.empty()) {
      ReportMissingEnd();
      Close(bytes_.size());
    }
    if (inCalendar_) diagnostics_.Warn(calendarLine_, "BEGIN:VCALENDAR has no END:VCALENDAR");
    if (leftOut_ > 0) {
      diagnostics_.Warn(0, "the file holds more than " + std::to_string(limits_.components) +
                               " components; the last " + std::to_string(leftOut_) +
                               " are left out");
    }
    if (!oneName_) scan_.calendarName.clear();
    for (IcsComponent& component : scan_.components) {
      component.cancelled = cancelling_.contains(component.calendar);
    }
    scan_.lastCalendarCancels = cancelling_.contains(scan_.calendars - 1);
    DecideEncoding();
    return std::move(scan_);
  }

 private:
  void Take(const IcsLine& line) {
    CheckEncoding(line);
    if (line.tooLong) {
      diagnostics_.Warn(line.number, "the line is longer than " +
                                         std::to_string(limits_.lineLength) +
                                         " bytes; it is left out");
      return;
    }
    if (line.text.empty()) return;
    const auto property = ReadProperty(line);
    if (property && property->Is("BEGIN")) {
      Begin(UpperName(property->value), line);
    } else if (property && property->Is("END")) {
      End(UpperName(property->value), line);
    } else if (open_.empty()) {
      Between(property, line);
      return;
    }
    inGarbage_ = false;
  }

  void Begin(const std::string& name, const IcsLine& line) {
    if (name == "VCALENDAR") {
      CloseUnfinished(line.begin);
      if (inCalendar_) diagnostics_.Warn(calendarLine_, "BEGIN:VCALENDAR has no END:VCALENDAR");
      inCalendar_ = true;
      scan_.lastCalendarEnd.reset();
      calendarLine_ = line.number;
      ++scan_.calendars;
      return;
    }
    if (IsTopLevel(name)) CloseUnfinished(line.begin);
    if (open_.empty()) {
      current_ = {
          name,  line.begin, line.begin, line.number, inCalendar_ ? scan_.calendars - 1 : -1,
          false, false};
    }
    if (open_.size() < limits_.nesting) {
      open_.push_back(name);
    } else if (tooDeep_++ == 0) {
      diagnostics_.Warn(line.number, "components are nested more than " +
                                         std::to_string(limits_.nesting) +
                                         " deep; the innermost are left out");
    }
  }

  void End(const std::string& name, const IcsLine& line) {
    if (name == "VCALENDAR") {
      CloseUnfinished(line.begin);
      if (inCalendar_) {
        scan_.lastCalendarEnd = line.begin;
      } else {
        Stray(name, line);
      }
      inCalendar_ = false;
      return;
    }
    const bool whole = !open_.empty() && name == open_.front() && IsTopLevel(name);
    if (tooDeep_ > 0 && !whole) {
      --tooDeep_;
      return;
    }
    const auto found = std::find(open_.rbegin(), open_.rend(), name);
    if (found == open_.rend()) {
      Stray(name, line);
      return;
    }
    if (found != open_.rbegin()) {
      diagnostics_.Warn(line.number, "BEGIN:" + open_.back() + " has no END:" + open_.back() +
                                         "; it is taken to end here");
    }
    open_.erase(found.base() - 1, open_.end());
    if (open_.empty()) Close(line.end);
  }

  void Stray(const std::string& name, const IcsLine& line) {
    diagnostics_.Warn(line.number, Quoted("END:" + name) + " ends nothing; the line is left out");
  }

  void CloseUnfinished(std::size_t end) {
    if (open_.empty()) return;
    ReportMissingEnd();
    Close(end);
  }

  void ReportMissingEnd() {
    current_.unfinished = true;
    diagnostics_.Warn(current_.line, "BEGIN:" + current_.name + " has no END:" + current_.name +
                                         "; it is shown as far as it goes");
  }

  void Close(std::size_t end) {
    current_.end = end;
    open_.clear();
    tooDeep_ = 0;
    if (current_.end - current_.begin > limits_.componentSize) {
      diagnostics_.Warn(current_.line, current_.name + " is longer than " +
                                           std::to_string(limits_.componentSize) +
                                           " bytes; it is left out");
    } else if (scan_.components.size() >= limits_.components) {
      ++leftOut_;
    } else {
      scan_.components.push_back(std::move(current_));
    }
  }

  /// A line that stands in no component: a property of the calendar, or something else.
  void Between(const std::optional<IcsProperty>& property, const IcsLine& line) {
    if (inCalendar_ && property) {
      inGarbage_ = false;
      if (property->Is("METHOD") && SameName(Trim(property->value), "CANCEL")) {
        cancelling_.insert(scan_.calendars - 1);
      }
      if (property->Is("X-WR-CALNAME") && !property->value.empty()) {
        std::string name = ReadText(*property);
        oneName_ = oneName_ && (scan_.calendarName.empty() || scan_.calendarName == name);
        scan_.calendarName = std::move(name);
      }
      return;
    }
    if (!inGarbage_ && !Trim(line.text).empty()) {
      diagnostics_.Warn(line.number, Quoted(line.text) + " belongs to no component; left out");
      inGarbage_ = true;
    }
  }

  void CheckEncoding(const IcsLine& line) {
    const auto beyondAscii = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    if (std::none_of(line.text.begin(), line.text.end(), beyondAscii)) return;
    std::string_view rest = line.text;
    while (!rest.empty()) {
      const std::size_t before = rest.size();
      const bool ascii = !beyondAscii(rest.front());
      TakeCharacter(rest);
      if (ascii) continue;
      if (before - rest.size() > 1) {
        sawUtf8_ = true;
      } else if (firstInvalidLine_ == 0) {
        firstInvalidLine_ = line.number;
      }
    }
  }

  void DecideEncoding() {
    if (firstInvalidLine_ == 0) return;
    if (!sawUtf8_) scan_.encoding = IcsEncoding::Windows1252;
    diagnostics_.Warn(firstInvalidLine_,
                      "here is text that is not UTF-8; it is read as Windows-1252");
  }

  std::string_view bytes_;
  const IcsLimits& limits_;
  Diagnostics& diagnostics_;
  IcsScan scan_;
  bool inCalendar_ = false;
  int calendarLine_ = 0;
  /// Calendars with METHOD:CANCEL.
  std::unordered_set<int> cancelling_;
  /// Names of the open components, the top-level one first.
  std::vector<std::string> open_;
  IcsComponent current_;
  std::size_t tooDeep_ = 0;
  std::size_t leftOut_ = 0;
  bool oneName_ = true;
  bool inGarbage_ = false;
  bool sawUtf8_ = false;
  int firstInvalidLine_ = 0;
};

}  // namespace

IcsScan ScanIcs(std::string_view bytes, const IcsLimits& limits, Diagnostics& diagnostics) {
  return Scanner(bytes, limits, diagnostics).Run();
}

}  // namespace velkor
