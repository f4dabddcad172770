// model/CacheRecord.cpp: one record of the cache file, written and read.
#include "model/CacheRecord.h"

#include <bit>
#include <cstdint>
#include <utility>

#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::size_t LongestText = 0xFFFF;
constexpr std::size_t LengthSize = 2;
constexpr std::size_t DateSize = 8;

void AppendNumber(std::string& bytes, std::uint64_t value, std::size_t size) {
  for (std::size_t i = 0; i < size; ++i) bytes.push_back(static_cast<char>(value >> (8 * i)));
}

/// The size is a constant so that the bytes are read as one number.
template <std::size_t Size>
std::uint64_t NumberAt(std::string_view bytes) {
  std::uint64_t value = 0;
  for (std::size_t i = Size; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[i]);
  return value;
}

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
  AppendNumber(bytes, encoded.size(), LengthSize);
  bytes += encoded;
}

/// Takes a counted text off the front.
/// @return false when it is cut short; `bytes` is then without meaning
bool TakeText(std::string_view& bytes, std::string_view& text) {
  if (bytes.size() < LengthSize) return false;
  const std::size_t length = NumberAt<LengthSize>(bytes);
  bytes.remove_prefix(LengthSize);
  if (bytes.size() < length) return false;
  text = bytes.substr(0, length);
  bytes.remove_prefix(length);
  return true;
}

/// Takes a date off the front; false also for one that is not valid.
bool TakeDate(std::string_view& bytes, Date& date) {
  if (bytes.size() < DateSize) return false;
  date = Date(std::bit_cast<double>(NumberAt<DateSize>(bytes)));
  bytes.remove_prefix(DateSize);
  return date.IsValid();
}

}  // namespace

void AppendCacheRecord(std::string& bytes, std::string_view eventId, std::string_view subject,
                       std::string_view categories, Date start, Date end, LocaleApi& locale) {
  const CodePage page = locale.CachePage();
  AppendText(bytes, eventId, locale, page);
  AppendText(bytes, subject, locale, page);
  AppendText(bytes, categories, locale, page);
  AppendNumber(bytes, std::bit_cast<std::uint64_t>(start.Days()), DateSize);
  AppendNumber(bytes, std::bit_cast<std::uint64_t>(end.Days()), DateSize);
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
    if (bytes.size() < 2 * DateSize) return count;
    bytes.remove_prefix(2 * DateSize);
  }
}

}  // namespace velkor
