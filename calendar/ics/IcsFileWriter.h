// calendar/ics/IcsFileWriter.h: saves appointments into an iCalendar file.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "calendar/PlaceWriter.h"
#include "calendar/ics/file/CalendarFile.h"
#include "calendar/ics/write/IcsEditor.h"

namespace velkor {

/// Several of these, in one process or in many, may be open on one file: each save takes in what
/// the file holds by then.
class IcsFileWriter : public PlaceWriter {
 public:
  /// @param path     UTF-8, absolute
  /// @param options  as for CalendarFile
  explicit IcsFileWriter(const std::string& path, const CalendarFileOptions& options = {})
      : file_(path, options) {}

  PlaceMark Mark() const override;
  bool IsReadOnly() const override { return file_.IsProtected(); }
  const States& LastSave() const override { return lastSave_; }

  CalendarItem WriteNew(const CalendarItem& item, bool reminder) override;
  CalendarItem WriteChange(const CalendarItem& after, const ItemChange& change) override;
  void WriteDeletion(const CalendarItem& item) override;
  void WriteCategory(std::string_view from, std::string_view to, Date now) override;
  std::shared_ptr<const void> Hold() override { return file_.Hold(); }
  std::string WholeOf(const std::string& entryId) override;
  CalendarItem TakeWhole(std::string_view whole, Date now) override;

 private:
  CalendarItem Save(const std::function<IcsEdit(const std::string& bytes)>& edit);

  CalendarFile file_;
  States lastSave_;
};

}  // namespace velkor
