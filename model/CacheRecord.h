// model/CacheRecord.h: one record of the cache file, written and read.
#pragma once

#include <string>
#include <string_view>

#include "model/CalEvent.h"
#include "platform/LocaleApi.h"

namespace velkor {

/// Appends a record: EventID, Subject and Categories, each as a 16-bit length and that many bytes
/// of the cache's code page, then StartDate and EndDate as 8-byte doubles; all little-endian. A
/// text longer than 65535 bytes is cut at a character.
void AppendCacheRecord(std::string& bytes, std::string_view eventId, std::string_view subject,
                       std::string_view categories, Date start, Date end, LocaleApi& locale);

/// Takes records off the front of a cache file's bytes.
class CacheRecordReader {
 public:
  /// `bytes` must outlive the reader.
  CacheRecordReader(std::string_view bytes, LocaleApi& locale)
      : rest_(bytes), locale_(locale), codePage_(locale.CachePage()) {}

  /// Reads the texts and dates of one record.
  /// @return false at the end, and before a record that is cut short, holds a date that is no
  ///         number or outside the years 100 to 9999, or texts of another code page; `event` is
  ///         then without meaning
  bool Next(CalEvent& event);
  /// Next came upon bytes that are no UTF-8 where the cache is kept in that.
  bool IsOfOtherPage() const { return isOfOtherPage_; }

  /// How many records the bytes hold at most, by their lengths alone; decodes nothing.
  std::size_t CountAhead() const;

  /// Bytes not taken yet; above 0 after Next gave false: what follows could not be read.
  std::size_t Remaining() const { return rest_.size(); }

 private:
  std::string Text(std::string_view bytes);

  std::string_view rest_;
  LocaleApi& locale_;
  CodePage codePage_;
  bool isOfOtherPage_ = false;
};

}  // namespace velkor
