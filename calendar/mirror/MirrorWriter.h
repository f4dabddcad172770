// calendar/mirror/MirrorWriter.h: saves into a mirror: each save waits to be sent and is shown from
// now on.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "calendar/CalendarFolder.h"
#include "calendar/mirror/Mirror.h"

namespace velkor {

/// The writer of a folder over a mirror. Items are known by the names of their objects. A calendar
/// that is read-only on its server refuses; so do further appointments of one object ("NAME-ID").
/// Throws Error: CalendarFailed, or a file error number for what keeps the disk from taking it;
/// nothing has changed then.
class MirrorWriter : public CalendarWriter {
 public:
  /// @param mirror   outlives this
  /// @param title    what messages call the calendar
  /// @param refresh  brings the folder up to date with the mirror
  MirrorWriter(Mirror& mirror, std::string title, std::function<void()> refresh = {})
      : mirror_(mirror), title_(std::move(title)), refresh_(std::move(refresh)) {}

  CalendarItem WriteNew(const CalendarItem& item, bool reminder) override;
  CalendarItem WriteChange(const CalendarItem& after, const ItemChange& change) override;
  void WriteDeletion(const CalendarItem& item) override;
  void WriteCategory(std::string_view from, std::string_view to, Date now) override;
  [[nodiscard]] std::shared_ptr<const void> Hold() override;
  void Refresh() override {
    if (refresh_) refresh_();
  }

  /// Takes over an appointment of another calendar, with every property that it has. One that is
  /// here already, just so, stays; another one of the same UID throws.
  /// @param bytes  a calendar of this one appointment (its changed occurrences too) and its zones
  /// @param now    local time of saving
  /// @return the item as it is here, without the occurrences of a recurring one
  CalendarItem TakeWhole(std::string_view bytes, Date now);
  /// The counterpart: the whole object of an item, with the edits that wait.
  std::string WholeOf(const std::string& entryId) const;

 private:
  void ExpectWritable() const;
  static void ExpectOwnObject(const std::string& entryId);

  Mirror& mirror_;
  std::string title_;
  std::function<void()> refresh_;
};

}  // namespace velkor
