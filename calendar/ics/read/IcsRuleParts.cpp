// calendar/ics/read/IcsRuleParts.cpp: reading a recurrence rule.
#include "calendar/ics/read/IcsRuleParts.h"

#include <algorithm>
#include <array>
#include <set>

#include "calendar/ics/read/Diagnostics.h"
#include "calendar/ics/read/IcsLines.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::array<std::string_view, 7> Frequencies{"SECONDLY", "MINUTELY", "HOURLY", "DAILY",
                                                      "WEEKLY",   "MONTHLY",  "YEARLY"};
constexpr std::array<std::string_view, 7> Weekdays{"MO", "TU", "WE", "TH", "FR", "SA", "SU"};

/// The index of a name in a table; none when it is not there.
template <std::size_t N>
std::optional<std::size_t> IndexOf(const std::array<std::string_view, N>& names,
                                   std::string_view name) {
  const auto found = std::find_if(names.begin(), names.end(),
                                  [&](std::string_view other) { return SameName(name, other); });
  if (found == names.end()) return std::nullopt;
  return static_cast<std::size_t>(found - names.begin());
}

std::size_t Bit(int value) {
  return static_cast<std::size_t>(value);
}

/// A part that is a list of numbers.
struct NumberList {
  std::string_view name;
  int least;
  int most;
  /// -1 to -most are numbers of it, too.
  bool fromEnd;
  void (*take)(RuleParts& parts, int number);
};

constexpr std::array<NumberList, 8> NumberLists{{
    // A clock without leap seconds shows 59 then (RFC 5545 section 3.3.12).
    {"BYSECOND", 0, 60, false,
     [](RuleParts& parts, int number) { parts.seconds.set(Bit(std::min(number, 59))); }},
    {"BYMINUTE", 0, 59, false,
     [](RuleParts& parts, int number) { parts.minutes.set(Bit(number)); }},
    {"BYHOUR", 0, 23, false, [](RuleParts& parts, int number) { parts.hours.set(Bit(number)); }},
    {"BYMONTHDAY", 1, 31, true, [](RuleParts& parts, int number) { parts.monthDays.Add(number); }},
    {"BYYEARDAY", 1, 366, true, [](RuleParts& parts, int number) { parts.yearDays.Add(number); }},
    {"BYWEEKNO", 1, 53, true, [](RuleParts& parts, int number) { parts.weeks.Add(number); }},
    {"BYMONTH", 1, 12, false, [](RuleParts& parts, int number) { parts.months.set(Bit(number)); }},
    {"BYSETPOS", 1, 366, true, [](RuleParts& parts, int number) { parts.places.insert(number); }},
}};

/// A number from -most to most with an optional sign; none for other text.
std::optional<int> SmallNumber(std::string_view text, int most) {
  const auto number = ParseInteger(text);
  if (!number || *number < -most || *number > most) return std::nullopt;
  return static_cast<int>(*number);
}

/// Reads one rule, part by part.
class RuleReader {
 public:
  RuleReading Read(std::string_view text) {
    for (std::string_view rest = Trim(text); !rest.empty() && reading_.problem.empty();) {
      const std::string_view part = Trim(TakePart(rest, ';'));
      if (!part.empty()) TakeRulePart(part);
    }
    if (reading_.problem.empty() && !names_.contains("FREQ")) reading_.problem = "has no FREQ";
    if (reading_.problem.empty()) reading_.parts = parts_;
    if (more_ > 0) reading_.passedOver += " and " + std::to_string(more_) + " more such parts";
    return std::move(reading_);
  }

 private:
  void TakeRulePart(std::string_view part) {
    std::string_view value = part;
    std::string name;
    for (const char c : Trim(TakePart(value, '='))) name.push_back(Upper(c));
    value = Trim(value);
    if (value.empty()) return PassOver("an empty part ", part);
    if (!names_.insert(name).second) return PassOver("a second " + name + " ", value);
    if (name == "FREQ") return TakeFrequency(value);
    if (name == "INTERVAL") return TakeInterval(value);
    if (name == "COUNT") return TakeCount(value);
    if (name == "UNTIL") return TakeUntil(value);
    if (name == "WKST") return TakeWeekStart(value);
    if (name == "BYDAY") return TakeWeekdays(value);
    if (name == "RSCALE") return TakeCalendarSystem(value);
    if (name == "SKIP") return TakeSkip(value);
    for (const NumberList& list : NumberLists) {
      if (name == list.name) return TakeNumbers(list, value);
    }
    names_.erase(name);
    PassOver("a part that is not known, ", part);
  }

  void PassOver(std::string_view what, std::string_view text) {
    if (reading_.passedOver.empty()) {
      reading_.passedOver = "has " + std::string(what) + Quoted(text);
    } else {
      ++more_;
    }
  }

  void Refuse(std::string_view name, std::string_view value, std::string_view what) {
    reading_.problem = std::string("has ").append(name).append(" ").append(Quoted(value));
    reading_.problem.append(", which is no ").append(what);
  }

  void TakeFrequency(std::string_view value) {
    const auto index = IndexOf(Frequencies, value);
    if (!index) return Refuse("FREQ", value, "frequency");
    parts_.frequency = static_cast<RuleFrequency>(*index);
  }

  void TakeInterval(std::string_view value) {
    // More seconds than the calendar's years have, so that none comes again.
    constexpr long long Longest = 1'000'000'000'000;
    const auto number = ParseInteger(value);
    if (!number || *number < 1) return Refuse("INTERVAL", value, "number above 0");
    parts_.interval = std::min(*number, Longest);
  }

  void TakeCount(std::string_view value) {
    const auto number = ParseInteger(value);
    if (!number || *number < 1) return Refuse("COUNT", value, "number above 0");
    parts_.count = *number;
  }

  void TakeUntil(std::string_view value) {
    parts_.until = ReadTimeText(value);
    if (!parts_.until) Refuse("UNTIL", value, "time");
  }

  void TakeWeekStart(std::string_view value) {
    const auto index = IndexOf(Weekdays, value);
    if (!index) return Refuse("WKST", value, "weekday");
    parts_.weekStart = static_cast<int>(*index);
  }

  void TakeCalendarSystem(std::string_view value) {
    if (SameName(value, "GREGORIAN")) return;
    reading_.problem = "counts by another calendar system, " + Quoted(value);
  }

  /// Days that a month lacks are left out, as they are without this part (RFC 7529 section 4.1).
  void TakeSkip(std::string_view value) {
    if (!SameName(value, "OMIT")) PassOver("SKIP ", value);
  }

  void TakeWeekdays(std::string_view values) {
    constexpr int MostWeeks = 53;
    while (!values.empty()) {
      const std::string_view value = Trim(TakePart(values, ','));
      const std::size_t split = value.size() - std::min<std::size_t>(value.size(), 2);
      const auto weekday = IndexOf(Weekdays, value.substr(split));
      const auto number = SmallNumber(value.substr(0, split), MostWeeks);
      const bool known = weekday && (split == 0 || (number && *number != 0));
      if (!known) return Refuse("BYDAY", value, "weekday, nor one after a number up to 53");
      if (split == 0) {
        parts_.weekdays.set(*weekday);
      } else {
        parts_.numberedWeekdays.at(*weekday).Add(*number);
      }
    }
  }

  void TakeNumbers(const NumberList& list, std::string_view values) {
    const std::string most = std::to_string(list.most);
    while (!values.empty()) {
      const std::string_view value = Trim(TakePart(values, ','));
      const auto number = SmallNumber(value, list.most);
      if (!number || (list.fromEnd ? *number == 0 : *number < list.least)) {
        return Refuse(list.name, value,
                      "number from " + std::to_string(list.least) + " to " + most +
                          (list.fromEnd ? ", nor from -1 to -" + most : ""));
      }
      list.take(parts_, *number);
    }
  }

  RuleReading reading_;
  RuleParts parts_;
  /// Of the known parts that were there.
  std::set<std::string> names_;
  /// Parts passed over after the first one.
  std::size_t more_ = 0;
};

}  // namespace

bool RuleParts::NumbersWeekdays() const {
  return std::any_of(numberedWeekdays.begin(), numberedWeekdays.end(),
                     [](const Ordinals& numbers) { return !numbers.IsEmpty(); });
}

RuleReading ReadRule(std::string_view text) {
  return RuleReader().Read(text);
}

}  // namespace velkor
