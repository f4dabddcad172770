// calendar/ics/read/IcsZones.cpp: zone definitions by libical, zones of the system by Qt.
#include "calendar/ics/read/IcsZones.h"

#include <libical/ical.h>

#include <QDateTime>
#include <algorithm>
#include <array>
#include <ctime>

#include "calendar/ics/read/IcsLines.h"
#include "values/Date.h"
#include "values/Text.h"

namespace velkor {
namespace {

/// From the epoch of Date to that of time_t.
constexpr std::int64_t EpochDistance = std::int64_t{25569} * SecondsPerDay;
constexpr int AnyCalendar = -2;

/// True for the rules that zone definitions are made of: once or a few days a year, at one time of
/// the day. Anything else could keep the library busy for ever.
bool IsOrdinaryZoneRule(std::string_view rule) {
  constexpr std::size_t Longest = 200;
  static constexpr std::array<std::string_view, 8> Known{
      "FREQ", "BYMONTH", "BYDAY", "BYMONTHDAY", "UNTIL", "COUNT", "INTERVAL", "WKST"};
  static constexpr std::array<std::string_view, 2> KnownTimes{"BYHOUR", "BYMINUTE"};
  if (rule.size() > Longest) return false;
  bool yearly = false;
  while (!rule.empty()) {
    std::string_view value = TakePart(rule, ';');
    const std::string_view name = TakePart(value, '=');
    const auto isName = [&](std::string_view part) { return SameName(name, part); };
    const bool isTime = std::any_of(KnownTimes.begin(), KnownTimes.end(), isName) &&
                        value.find(',') == std::string_view::npos;
    if (!isTime && std::none_of(Known.begin(), Known.end(), isName)) return false;
    if (SameName(name, "FREQ")) yearly = SameName(value, "YEARLY");
  }
  return yearly;
}

/// A TZID without quotes and escapes.
std::string PlainName(std::string_view tzid) {
  std::string name;
  for (std::size_t i = 0; i < tzid.size(); ++i) {
    if (tzid[i] == '\\' && i + 1 < tzid.size()) ++i;
    name += tzid[i];
  }
  std::string_view plain = Trim(name);
  if (plain.size() >= 2 && plain.front() == '"' && plain.back() == '"') {
    plain = Trim(plain.substr(1, plain.size() - 2));
  }
  return std::string(plain);
}

/// What definitions in another spelling have in common.
std::string SpellingKey(std::string_view tzid) {
  std::string key = PlainName(tzid);
  std::transform(key.begin(), key.end(), key.begin(), Upper);
  return key;
}

std::int64_t SystemOffsetAt(WallSeconds utc) {
  const std::time_t time = static_cast<std::time_t>(utc - EpochDistance);
  std::tm fields{};
  return localtime_r(&time, &fields) ? fields.tm_gmtoff : 0;
}

}  // namespace

icaltimetype ToIcalTime(WallSeconds wall, bool isDate) {
  const DateFields fields = Date::FromSeconds(wall).Fields();
  icaltimetype time = icaltime_null_time();
  time.year = fields.year;
  time.month = fields.month;
  time.day = fields.day;
  time.hour = fields.hour;
  time.minute = fields.minute;
  time.second = fields.second;
  time.is_date = isDate;
  return time;
}

WallSeconds IcsZone::ToUtc(WallSeconds wall) const {
  // The day before and the day after: no clock goes ahead or back by more than one.
  const WallSeconds about = wall - OffsetAt(wall);
  const std::int64_t before = OffsetAt(about - SecondsPerDay);
  const std::int64_t after = OffsetAt(about + SecondsPerDay);
  if (before != after && OffsetAt(wall - before) != before && OffsetAt(wall - after) == after) {
    return wall - after;
  }
  return wall - before;
}

WallSeconds IcsZone::ToLocal(WallSeconds wall, std::int64_t exact) const {
  if (std::holds_alternative<Floating>(kind_)) return wall + exact;
  const WallSeconds utc = ToUtc(wall) + exact;
  return utc + SystemOffsetAt(utc);
}

std::optional<WallSeconds> IcsZone::FromLocal(WallSeconds local) const {
  const WallSeconds wall = FromUtc(IcsZone(Floating{}).ToUtc(local));
  if (!IsInCalendar(wall) || ToLocal(wall) != local) return std::nullopt;
  return wall;
}

std::int64_t IcsZone::OffsetAt(WallSeconds utc) const {
  if (const auto* defined = std::get_if<Defined>(&kind_)) {
    icaltimetype time = ToIcalTime(std::clamp(utc, FirstWall, LastWall));
    int daylight = 0;
    return icaltimezone_get_utc_offset_of_utc_time(defined->zone, &time, &daylight);
  }
  if (const auto* zone = std::get_if<QTimeZone>(&kind_)) {
    return zone->offsetFromUtc(QDateTime::fromSecsSinceEpoch(utc - EpochDistance, Qt::UTC));
  }
  return std::holds_alternative<Floating>(kind_) ? SystemOffsetAt(utc) : 0;
}

IcsZones::IcsZones(std::string_view bytes, const IcsScan& scan, const IcsLimits& limits,
                   Diagnostics& diagnostics, IcsZoneStore& store)
    : bytes_(bytes), limits_(limits), diagnostics_(diagnostics), store_(store) {
  std::vector<std::string> names;
  for (const IcsComponent& component : scan.components) {
    if (component.name != "VTIMEZONE") continue;
    IcsLines lines(bytes_, component.begin, component.end, component.line, limits_.lineLength);
    IcsLine line;
    while (lines.Next(line)) {
      const auto property = ReadProperty(line);
      if (!property || !property->Is("TZID")) continue;
      names.emplace_back(property->value);
      definitions_.push_back({&component});
      break;
    }
  }
  const auto enter = [&](std::size_t index, const std::string& name) {
    byName_.try_emplace({definitions_[index].component->calendar, name}, index);
    byName_.try_emplace({AnyCalendar, name}, index);
  };
  for (std::size_t i = 0; i < names.size(); ++i) enter(i, names[i]);
  for (std::size_t i = 0; i < names.size(); ++i) enter(i, SpellingKey(names[i]));
}

IcsZoneStore::~IcsZoneStore() {
  for (icaltimezone* zone : owned_) icaltimezone_free(zone, 1);
}

const IcsZone& IcsZones::Find(int calendar, std::string_view tzid, int line) {
  const std::pair<int, std::string> key{calendar, std::string(tzid)};
  if (const auto known = found_.find(key); known != found_.end()) return *known->second;

  const IcsZone* zone = FindDefined(calendar, key.second);
  if (!zone) zone = FindDefined(calendar, SpellingKey(tzid));
  if (!zone) {
    const std::string name = PlainName(tzid);
    const auto [known, isNew] = store_.system_.try_emplace(name, nullptr);
    if (isNew) {
      known->second = FindSystemZone(name);
      if (!known->second) {
        known->second = &store_.floating_;
        diagnostics_.Warn(line, "the time zone " + Quoted(tzid) +
                                    " is not known; its times are taken as local time");
      }
    }
    zone = known->second;
  }
  found_.emplace(key, zone);
  return *zone;
}

const IcsZone* IcsZones::FindDefined(int calendar, const std::string& name) {
  for (const int place : {calendar, AnyCalendar}) {
    const auto defined = byName_.find({place, name});
    if (defined == byName_.end()) continue;
    if (const IcsZone* zone = Read(definitions_[defined->second])) return zone;
  }
  return nullptr;
}

const IcsZone* IcsZones::Read(Definition& definition) {
  if (!definition.read) {
    const IcsComponent& component = *definition.component;
    const std::string_view text = bytes_.substr(component.begin, component.end - component.begin);
    const auto [known, isNew] = store_.byText_.try_emplace(std::string(text), nullptr);
    if (isNew) known->second = ReadDefinition(component);
    definition.zone = known->second;
    definition.read = true;
  }
  return definition.zone;
}

const IcsZone* IcsZones::ReadDefinition(const IcsComponent& component) {
  const auto refuse = [&](int line, const std::string& why) {
    diagnostics_.Warn(line, why + "; this definition of a time zone is not used");
    return nullptr;
  };
  std::string text;
  std::size_t count = 0;
  bool hasObservance = false;
  IcsLines lines(bytes_, component.begin, component.end, component.line, limits_.lineLength);
  IcsLine line;
  while (lines.Next(line)) {
    const auto property = ReadProperty(line);
    if (!property) continue;
    if (++count > limits_.timeZoneLines) return refuse(component.line, "VTIMEZONE is too long");
    if (property->Is("RRULE") && !IsOrdinaryZoneRule(property->value)) {
      return refuse(line.number, "the rule " + Quoted(property->value) + " is no zone's rule");
    }
    hasObservance = hasObservance || property->Is("TZOFFSETTO");
    text.append(line.text).append("\r\n");
  }
  if (!hasObservance) return refuse(component.line, "VTIMEZONE has no TZOFFSETTO");

  icalcomponent* parsed = icalparser_parse_string(text.c_str());
  if (!parsed || icalcomponent_isa(parsed) != ICAL_VTIMEZONE_COMPONENT) {
    if (parsed) icalcomponent_free(parsed);
    return refuse(component.line, "VTIMEZONE cannot be read");
  }
  icaltimezone* zone = icaltimezone_new();
  if (!icaltimezone_set_component(zone, parsed)) {
    icaltimezone_free(zone, 1);
    icalcomponent_free(parsed);
    return refuse(component.line, "VTIMEZONE has no TZID");
  }
  store_.owned_.push_back(zone);
  return store_.zones_.emplace_back(std::make_unique<IcsZone>(IcsZone::Defined{zone})).get();
}

const IcsZone* IcsZones::FindSystemZone(std::string_view name) {
  auto zone = store_.systemZones_.Find(name);
  return zone ? store_.zones_.emplace_back(std::make_unique<IcsZone>(*std::move(zone))).get()
              : nullptr;
}

}  // namespace velkor
