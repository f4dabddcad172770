// calendar/IcsZones.cpp: zone definitions by libical, zones of the system by Qt.
#include "calendar/IcsZones.h"

#include <libical/ical.h>

#include <QDateTime>
#include <algorithm>
#include <array>
#include <ctime>

#include "calendar/IcsLines.h"
#include "support/values/Date.h"
#include "support/values/Text.h"

namespace velkor {
namespace {

/// From the epoch of Date to that of time_t.
constexpr std::int64_t EpochDistance = std::int64_t{25569} * SecondsPerDay;
constexpr int AnyCalendar = -2;

/// True for the rules that zone definitions are made of: once or a few days a year. Anything else
/// could keep the library busy for ever.
bool IsOrdinaryZoneRule(std::string_view rule) {
  constexpr std::size_t Longest = 200;
  static constexpr std::array<std::string_view, 8> Known{
      "FREQ", "BYMONTH", "BYDAY", "BYMONTHDAY", "UNTIL", "COUNT", "INTERVAL", "WKST"};
  if (rule.size() > Longest) return false;
  bool yearly = false;
  while (!rule.empty()) {
    std::string_view value = TakePart(rule, ';');
    const std::string_view name = TakePart(value, '=');
    const bool known = std::any_of(Known.begin(), Known.end(),
                                   [&](std::string_view part) { return SameName(name, part); });
    if (!known) return false;
    if (SameName(name, "FREQ")) yearly = SameName(value, "YEARLY");
  }
  return yearly;
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

WallSeconds IcsZone::ToLocal(WallSeconds wall, std::int64_t exact) const {
  if (std::holds_alternative<Floating>(kind_)) return wall + exact;
  const std::int64_t utc = wall - OffsetAt(wall) + exact;
  const std::time_t time = static_cast<std::time_t>(utc - EpochDistance);
  std::tm fields{};
  return localtime_r(&time, &fields) ? utc + fields.tm_gmtoff : utc;
}

std::optional<WallSeconds> IcsZone::FromLocal(WallSeconds local) const {
  // Each step corrects by the distance of the two clocks; a change of either needs one more.
  constexpr int Steps = 4;
  WallSeconds wall = local;
  for (int step = 0; step < Steps && IsInCalendar(wall); ++step) {
    const std::int64_t distance = local - ToLocal(wall);
    if (distance == 0) return wall;
    wall += distance;
  }
  return std::nullopt;
}

std::int64_t IcsZone::OffsetAt(WallSeconds wall) const {
  if (const auto* defined = std::get_if<Defined>(&kind_)) {
    icaltimetype time = ToIcalTime(wall);
    int daylight = 0;
    return icaltimezone_get_utc_offset(defined->zone, &time, &daylight);
  }
  if (const auto* zone = std::get_if<QTimeZone>(&kind_)) {
    const DateFields fields = Date::FromSeconds(wall).Fields();
    const QDateTime time(QDate(fields.year, fields.month, fields.day),
                         QTime(fields.hour, fields.minute, fields.second), *zone);
    return wall - EpochDistance - time.toSecsSinceEpoch();
  }
  return 0;
}

IcsZones::IcsZones(std::string_view bytes, const IcsScan& scan, const IcsLimits& limits,
                   Diagnostics& diagnostics)
    : bytes_(bytes), limits_(limits), diagnostics_(diagnostics) {
  for (const IcsComponent& component : scan.components) {
    if (component.name != "VTIMEZONE") continue;
    IcsLines lines(bytes_, component.begin, component.end, component.line, limits_.lineLength);
    IcsLine line;
    while (lines.Next(line)) {
      const auto property = ReadProperty(line);
      if (!property || !property->Is("TZID")) continue;
      const std::string tzid(property->value);
      definitions_.push_back({&component});
      byName_.try_emplace({component.calendar, tzid}, definitions_.size() - 1);
      byName_.try_emplace({AnyCalendar, tzid}, definitions_.size() - 1);
      break;
    }
  }
}

IcsZones::~IcsZones() {
  for (icaltimezone* zone : owned_) icaltimezone_free(zone, 1);
}

const IcsZone& IcsZones::Find(int calendar, std::string_view tzid, int line) {
  const std::pair<int, std::string> key{calendar, std::string(tzid)};
  if (const auto known = found_.find(key); known != found_.end()) return *known->second;

  const IcsZone* zone = nullptr;
  for (const int place : {calendar, AnyCalendar}) {
    const auto defined = byName_.find({place, key.second});
    if (!zone && defined != byName_.end()) zone = Read(definitions_[defined->second]);
  }
  if (!zone) {
    const auto [known, isNew] = system_.try_emplace(key.second, nullptr);
    if (isNew) {
      known->second = FindSystemZone(key.second);
      if (!known->second) {
        known->second = &floating_;
        diagnostics_.Warn(line, "the time zone " + Quoted(tzid) +
                                    " is not known; its times are taken as local time");
      }
    }
    zone = known->second;
  }
  found_.emplace(key, zone);
  return *zone;
}

const IcsZone* IcsZones::Read(Definition& definition) {
  if (!definition.read) {
    const IcsComponent& component = *definition.component;
    const std::string_view text = bytes_.substr(component.begin, component.end - component.begin);
    const auto [known, isNew] = byText_.try_emplace(text, nullptr);
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
  owned_.push_back(zone);
  return zones_.emplace_back(std::make_unique<IcsZone>(IcsZone::Defined{zone})).get();
}

const IcsZone* IcsZones::FindSystemZone(const std::string& tzid) {
  constexpr std::size_t LongestName = 200;
  if (tzid.empty() || tzid.size() > LongestName) return nullptr;
  // Every tail of a prefixed name, the longest first.
  for (std::size_t at = 0; at < tzid.size();) {
    const QByteArray name = QByteArray::fromStdString(tzid.substr(at));
    for (const QByteArray& id : {name, QTimeZone::windowsIdToDefaultIanaId(name)}) {
      // A zone object would also take an unknown name for a POSIX rule.
      if (id.isEmpty() || !QTimeZone::isTimeZoneIdAvailable(id)) continue;
      if (QTimeZone zone(id); zone.isValid()) {
        return zones_.emplace_back(std::make_unique<IcsZone>(std::move(zone))).get();
      }
    }
    const std::size_t slash = tzid.find('/', at);
    at = slash == std::string::npos ? tzid.size() : slash + 1;
  }
  return nullptr;
}

}  // namespace velkor
