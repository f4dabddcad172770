// calendar/set/MirrorPlace.h: a calendar on a server as a place of a set: its mirror.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "calendar/PlaceWriter.h"
#include "calendar/mirror/Mirror.h"
#include "calendar/mirror/MirrorWriter.h"

namespace velkor {

/// What is saved waits in the mirror to be sent.
class MirrorPlace : public PlaceWriter {
 public:
  /// @param folder  of the mirror
  /// @param title   what messages call the calendar
  MirrorPlace(const std::string& folder, std::string title)
      : mirror_(folder), writer_(mirror_, std::move(title)) {}

  PlaceMark Mark() const override;
  bool IsReadOnly() const override { return mirror_.State().readOnly; }
  const States& LastSave() const override { return lastSave_; }

  CalendarItem WriteNew(const CalendarItem& item, bool reminder) override;
  CalendarItem WriteChange(const CalendarItem& after, const ItemChange& change) override;
  void WriteDeletion(const CalendarItem& item) override;
  void WriteCategory(std::string_view from, std::string_view to, Date now) override;
  std::shared_ptr<const void> Hold() override { return writer_.Hold(); }
  std::string WholeOf(const std::string& entryId) override { return writer_.WholeOf(entryId); }
  CalendarItem TakeWhole(std::string_view whole, Date now) override;

 private:
  template <typename Write>
  CalendarItem Save(const Write& write);

  Mirror mirror_;
  MirrorWriter writer_;
  States lastSave_;
};

}  // namespace velkor
