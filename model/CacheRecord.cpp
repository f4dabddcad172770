// model/CacheRecord.cpp: one record of the cache file, written and read.
#include "model/CacheRecord.h"

#include <bit>
#include <cstdint>
#include <utility>

#include "values/LittleEndian.h"
#include "values/Text.h"

namespace velkor {
namespace {

using TextLength = std::uint16_t;
constexpr std::size_t LongestText = 0xFFFF;

/// The encoding of the longest start of a text that fits a record. A character has no fixed size
/// in a code page, so the cut is searched for.
std::string EncodeStart(std::string_view text, LocaleApi& locale, CodePage page) {
  std::string longest;
  std::size_t fits = 0;
  std::size_t tooLong = text.size();
  while (tooLong - fits > 1) {
    const std::size_t middle = fits + (tooLong - fits) / 2;
    std::string encoded = locale.ToCodePage(CutAtCharacter(text, middle), page);
    if (encoded.size() > LongestText) {
      tooLong = middle;
    } else {
      fits = middle;
      longest = std::move(encoded);
    }
  }
  return longest;
}

void AppendText(std::string& bytes, std::string_view text, LocaleApi& locale, CodePage page) {
  std::string encoded = locale.ToCodePage(text, page);
  if (encoded.size() > LongestText) encoded = EncodeStart(text, locale, page);
  AppendLittleEndian(bytes, static_cast<TextLength>(encoded.size()));
  bytes += encoded;
}

/// Takes a counted text off the front.
/// @return false when it is cut short; `bytes` is then without meaning
bool TakeText(std::string_view& bytes, std::string_view& text) {
  if (bytes.size() < sizeof(TextLength)) return false;
  const std::size_t length = ReadLittleEndian<TextLength>(bytes);
  bytes.remove_prefix(sizeof(TextLength));
  if (bytes.size() < length) return false;
  text = bytes.substr(0, length);
  bytes.remove_prefix(length);
  return true;
}

/// Takes a date off the front; false also for one that is not valid.
bool TakeDate(std::string_view& bytes, Date& date) {
  if (bytes.size() < sizeof(std::uint64_t)) return false;
  date = Date(std::bit_cast<double>(ReadLittleEndian<std::uint64_t>(bytes)));
  bytes.remove_prefix(sizeof(std::uint64_t));
  return date.IsValid();
}

}  // namespace

void AppendCacheRecord(std::string& bytes, std::string_view eventId, std::string_view subject,
                       std::string_view categories, Date start, Date end, LocaleApi& locale) {
  const CodePage page = locale.CachePage();
  AppendText(bytes, eventId, locale, page);
  AppendText(bytes, subject, locale, page);
  AppendText(bytes, categories, locale, page);
  AppendLittleEndian(bytes, std::bit_cast<std::uint64_t>(start.Days()));
  AppendLittleEndian(bytes, std::bit_cast<std::uint64_t>(end.Days()));
}

bool CacheRecordReader::Next(CalEvent& event) {
  std::string_view bytes = rest_;
  std::string_view eventId;
  std::string_view subject;
  std::string_view categories;
  const bool whole = TakeText(bytes, eventId) && TakeText(bytes, subject) &&
                     TakeText(bytes, categories) && TakeDate(bytes, event.StartDate) &&
                     TakeDate(bytes, event.EndDate);
  if (!whole) return false;
  event.EventID = Text(eventId);
  event.Subject = Text(subject);
  event.Categories = Text(categories);
  if (isOfOtherPage_) return false;
  rest_ = bytes;
  return true;
}

std::string CacheRecordReader::Text(std::string_view bytes) {
  std::string text = locale_.FromCodePage(bytes, codePage_);
  if (codePage_ == code_pages::Utf8 && text != bytes) isOfOtherPage_ = true;
  return text;
}

std::size_t CacheRecordReader::CountAhead() const {
  std::size_t count = 0;
  std::string_view text;
  for (std::string_view bytes = rest_;; ++count) {
    if (!TakeText(bytes, text) || !TakeText(bytes, text) || !TakeText(bytes, text)) return count;
    if (bytes.size() < 2 * sizeof(std::uint64_t)) return count;
    bytes.remove_prefix(2 * sizeof(std::uint64_t));
  }
}

}  // namespace velkor
