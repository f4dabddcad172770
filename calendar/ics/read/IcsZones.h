// calendar/ics/read/IcsZones.h: the time zones of an iCalendar file, and the way to local
// wall-clock time.
#pragma once

#include <QTimeZone>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

#include "calendar/ics/read/Diagnostics.h"
#include "calendar/ics/read/IcsLimits.h"
#include "calendar/ics/read/IcsScanner.h"
#include "calendar/ics/read/SystemZones.h"
#include "values/Date.h"

struct _icaltimezone;
struct icaltimetype;

namespace velkor {

/// Seconds since 30 December 1899, 00:00, of a clock on some wall, as Date::Seconds counts them.
using WallSeconds = std::int64_t;

/// The first second of the year 100 and the last one of 9999, between which a Date is valid.
inline constexpr WallSeconds FirstWall = std::int64_t{-657'434} * SecondsPerDay;
inline constexpr WallSeconds LastWall = std::int64_t{2'958'466} * SecondsPerDay - 1;

constexpr bool IsInCalendar(WallSeconds wall) {
  return wall >= FirstWall && wall <= LastWall;
}

/// What a clock shows, as libical has it. @param wall  between FirstWall and LastWall
icaltimetype ToIcalTime(WallSeconds wall, bool isDate = false);

/// Where a wall clock hangs.
class IcsZone {
 public:
  struct Floating {};
  struct Utc {};
  /// A zone that the file itself defines; the object belongs to IcsZones.
  struct Defined {
    _icaltimezone* zone;
  };
  using Kind = std::variant<Floating, Utc, Defined, QTimeZone>;

  explicit IcsZone(Kind kind) : kind_(std::move(kind)) {}

  /// The moment at which this clock shows `wall`, as Greenwich's clock shows it: of a time that
  /// comes twice the first, of one that is skipped by the offset before the gap (RFC 5545 section
  /// 3.3.5). A floating clock is the system's.
  /// @param wall  between FirstWall and LastWall; the result may lie outside
  WallSeconds ToUtc(WallSeconds wall) const;
  /// What this clock shows when Greenwich's shows `utc`.
  WallSeconds FromUtc(WallSeconds utc) const { return utc + OffsetAt(utc); }
  /// The clock of the system's zone (variable TZ) when `exact` seconds have passed since this
  /// zone's clock showed `wall`. A floating time shows the same on every clock.
  /// @param wall  between FirstWall and LastWall; the result may lie outside
  WallSeconds ToLocal(WallSeconds wall, std::int64_t exact = 0) const;
  /// What this zone's clock shows when the system's shows `local`; none for a time that one of the
  /// clocks skips or shows for the second time, or outside the calendar's years.
  std::optional<WallSeconds> FromLocal(WallSeconds local) const;

 private:
  /// Seconds east of Greenwich when its clock shows `utc`.
  std::int64_t OffsetAt(WallSeconds utc) const;

  Kind kind_;
};

/// The zones that were made from definitions and names, for as many texts as share them: a
/// definition that is the same in all of them is read once.
class IcsZoneStore {
 public:
  IcsZoneStore() = default;
  ~IcsZoneStore();
  IcsZoneStore(const IcsZoneStore&) = delete;
  IcsZoneStore& operator=(const IcsZoneStore&) = delete;

 private:
  friend class IcsZones;

  std::vector<std::unique_ptr<IcsZone>> zones_;
  std::vector<_icaltimezone*> owned_;
  /// By the text of the definition; null for one that cannot be used.
  std::unordered_map<std::string, const IcsZone*> byText_;
  /// By name; the floating zone for one that is not known.
  std::unordered_map<std::string, const IcsZone*> system_;
  SystemZones systemZones_;
  IcsZone floating_{IcsZone::Floating{}};
  IcsZone utc_{IcsZone::Utc{}};
};

/// Finds zones by TZID, which may be quoted, escaped or in another case: the definition in the same
/// calendar, then one anywhere in the file, then a zone of the system. An unknown zone is reported
/// once; its times then count as floating.
class IcsZones {
 public:
  /// @param store  outlives this
  IcsZones(std::string_view bytes, const IcsScan& scan, const IcsLimits& limits,
           Diagnostics& diagnostics, IcsZoneStore& store);
  IcsZones(const IcsZones&) = delete;
  IcsZones& operator=(const IcsZones&) = delete;

  const IcsZone& FloatingZone() const { return store_.floating_; }
  const IcsZone& UtcZone() const { return store_.utc_; }
  /// @param calendar  which calendar of the file the time stands in
  /// @param line      of the time, for the report
  /// The zone stays where it is as long as the store lives.
  const IcsZone& Find(int calendar, std::string_view tzid, int line);

 private:
  struct Definition {
    const IcsComponent* component;
    const IcsZone* zone = nullptr;
    bool read = false;
  };
  const IcsZone* Read(Definition& definition);
  const IcsZone* ReadDefinition(const IcsComponent& component);
  const IcsZone* FindDefined(int calendar, const std::string& name);
  const IcsZone* FindSystemZone(std::string_view name);

  std::string_view bytes_;
  const IcsLimits& limits_;
  Diagnostics& diagnostics_;
  IcsZoneStore& store_;
  std::vector<Definition> definitions_;
  /// By calendar (-2 for the first one anywhere) and TZID: as it stands, and by SpellingKey.
  std::map<std::pair<int, std::string>, std::size_t> byName_;
  std::map<std::pair<int, std::string>, const IcsZone*> found_;
};

}  // namespace velkor
