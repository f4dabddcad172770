// tests/model/CacheRecordTest.cpp: the bytes of a record, and files that are cut or damaged.
#include "model/CacheRecord.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/headless/FixedLocale.h"

namespace velkor {
namespace {

using namespace std::string_literals;

std::string Record(FixedLocale& locale, std::string_view subject, double start = 2,
                   double end = 2.5) {
  std::string bytes;
  AppendCacheRecord(bytes, "ID", subject, "Leave", Date(start), Date(end), locale);
  return bytes;
}

/// The subjects of all records that can be read.
std::vector<std::string> Read(std::string_view bytes, FixedLocale& locale,
                              std::size_t* remaining = nullptr) {
  CacheRecordReader reader(bytes, locale);
  EXPECT_LE(reader.CountAhead(), bytes.size() / 22);
  std::vector<std::string> subjects;
  for (CalEvent event; reader.Next(event);) subjects.push_back(event.Subject);
  if (remaining != nullptr) *remaining = reader.Remaining();
  return subjects;
}

TEST(CacheRecord, ATextOverTheLongestLengthIsCutAtACharacter) {
  const struct {
    CodePage page;
    std::string text;
    std::string kept;
  } cases[] = {
      {1252, std::string(65535, 'x'), std::string(65535, 'x')},
      {1252, std::string(65536, 'x'), std::string(65535, 'x')},
      {65001, std::string(65534, 'x') + "éy", std::string(65534, 'x')},
      {65001, std::string(65533, 'x') + "éy", std::string(65533, 'x') + "é"},
      {65001, std::string(65533, 'x') + "😀", std::string(65533, 'x')},
  };
  for (const auto& [page, text, kept] : cases) {
    FixedLocale locale;
    locale.ansiCodePage = page;
    const std::string bytes = Record(locale, text) + Record(locale, "next");
    EXPECT_EQ(Read(bytes, locale), (std::vector{kept, "next"s})) << page;
  }
  FixedLocale locale;
  std::string umlauts;
  for (int i = 0; i < 70000; ++i) umlauts += "ü";
  EXPECT_EQ(Read(Record(locale, umlauts), locale).at(0), umlauts.substr(0, 2 * 65535));
}

TEST(CacheRecord, AFileCutAnywhereKeepsTheWholeRecordsBeforeTheCut) {
  FixedLocale locale;
  const std::string first = Record(locale, "first");
  const std::string bytes = first + Record(locale, "second");
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    std::size_t remaining = 0;
    const std::vector<std::string> read = Read(bytes.substr(0, size), locale, &remaining);
    const bool one = size >= first.size();
    ASSERT_EQ(read, one ? std::vector{"first"s} : std::vector<std::string>()) << size;
    ASSERT_EQ(remaining, one ? size - first.size() : size);
  }
}

TEST(CacheRecord, TextsThatAreNoUtf8EndTheReadingOfACacheInUtf8Only) {
  FixedLocale old;
  const std::string bytes = Record(old, "plain") + Record(old, "Köln") + Record(old, "after");
  EXPECT_EQ(Read(bytes, old), (std::vector{"plain"s, "Köln"s, "after"s}));
  FixedLocale locale;
  locale.ansiCodePage = 65001;
  CacheRecordReader reader(bytes, locale);
  CalEvent event;
  EXPECT_TRUE(reader.Next(event));
  EXPECT_FALSE(reader.IsOfOtherPage());
  EXPECT_FALSE(reader.Next(event));
  EXPECT_TRUE(reader.IsOfOtherPage());
}

TEST(CacheRecord, ADateThatIsNoneEndsTheReading) {
  FixedLocale locale;
  using Limits = std::numeric_limits<double>;
  const double firstDay = Date::FromYmd(100, 1, 1).Days();
  const double lastDay = Date::FromFields({9999, 12, 31, 23, 59, 59}).Days();
  for (const double bad : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                           Limits::max(), firstDay - 1, lastDay + 1, 1e10}) {
    for (const std::string& record : {Record(locale, "bad", bad), Record(locale, "bad", 2, bad)}) {
      const std::string bytes = Record(locale, "good") + record + Record(locale, "after");
      EXPECT_EQ(Read(bytes, locale), std::vector{"good"s}) << bad;
    }
  }
  EXPECT_EQ(Read(Record(locale, "edges", firstDay, lastDay), locale), std::vector{"edges"s});
}

}  // namespace
}  // namespace velkor
