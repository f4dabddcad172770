// bench/CacheFigures.cpp: loading and rewriting a cache file over converting its texts.
#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "bench/AllocationMeter.h"
#include "bench/Comparison.h"
#include "bench/Figures.h"
#include "bench/SampleEvents.h"
#include "model/CacheFile.h"
#include "model/CacheRecord.h"
#include "platform/headless/FixedLocale.h"
#include "platform/headless/MemoryFiles.h"

namespace velkor {
namespace {

constexpr std::size_t Records = 200'000;
constexpr std::size_t LongId = 48;
constexpr std::size_t ShortId = 14;
constexpr double ConversionLimit = 3;
constexpr double PeakLimit = 4;
constexpr double GrowthLimit = 2.5;
constexpr int Iterations = 15;

/// The texts of a cache file, in the code page and where they lie in its bytes.
std::vector<std::string_view> TextsOf(std::string_view bytes) {
  constexpr std::size_t DatesSize = 16;
  std::vector<std::string_view> texts;
  while (!bytes.empty()) {
    for (int i = 0; i < 3; ++i) {
      const auto low = static_cast<unsigned char>(bytes[0]);
      const std::size_t length = std::size_t{static_cast<unsigned char>(bytes[1])} << 8 | low;
      texts.push_back(bytes.substr(2, length));
      bytes.remove_prefix(2 + length);
    }
    bytes.remove_prefix(DatesSize);
  }
  return texts;
}

/// A cache file in memory. Reading copies it once, as from a disk.
class CacheFixture {
 public:
  explicit CacheFixture(const std::vector<CalEvent>& events) {
    for (const CalEvent& event : events) {
      AppendCacheRecord(bytes_, event.EventID, event.Subject, event.Categories, event.StartDate,
                        event.EndDate, locale_);
    }
    texts_ = TextsOf(bytes_);
    files_.contents[paths_.cacheFile] = bytes_;
    Load(collection_);
  }
  CacheFixture(const CacheFixture&) = delete;
  CacheFixture& operator=(const CacheFixture&) = delete;

  std::size_t Loaded() const { return collection_.Count(); }
  std::size_t FileSize() const { return bytes_.size(); }

  void Load(EventCollection& events) { cache_.Load(paths_.cacheFile, fields_, events); }

  double SecondsOfLoad() {
    // Makes the allocator join what the last load's events left, which is not this load's work.
    benchmark::DoNotOptimize(std::vector<char>(1 << 20));
    EventCollection events;
    return SecondsOf([&] { Load(events); });
  }
  double SecondsOfRewrite() {
    return SecondsOf([&] { cache_.Rewrite(paths_, collection_); });
  }

  /// Decodes every text and lets it go.
  double SecondsOfDecoding() {
    return SecondsOf([&] {
      for (const std::string_view text : texts_) {
        benchmark::DoNotOptimize(locale_.FromCodePage(text, page_));
      }
    });
  }
  /// Decodes every text and keeps it, as whoever wants to use the texts must.
  double SecondsOfDecodingAndKeeping() {
    std::vector<std::string> texts;
    return SecondsOf([&] {
      texts.reserve(texts_.size());
      for (const std::string_view text : texts_) {
        texts.push_back(locale_.FromCodePage(text, page_));
      }
    });
  }
  /// Encodes every text and lets it go.
  double SecondsOfEncoding() {
    return SecondsOf([&] {
      for (const CalEvent& event : collection_) {
        for (const std::string* text : {&event.EventID, &event.Subject, &event.Categories}) {
          benchmark::DoNotOptimize(locale_.ToCodePage(*text, page_));
        }
      }
    });
  }

 private:
  const CachePaths paths_{"cache", "work"};
  MemoryFiles files_;
  FixedLocale locale_;
  const CodePage page_ = locale_.AnsiCodePage();
  CacheFile cache_{files_, locale_};
  const YearGrid grid_ = SampleGrid();
  const EventFields fields_ = grid_.Fields();
  std::string bytes_;
  std::vector<std::string_view> texts_;
  EventCollection collection_;
};

std::vector<CalEvent> InOrder(std::size_t records, std::size_t idLength = LongId) {
  return SampleEvents(records, Spread::Random, idLength);
}

std::vector<CalEvent> Shuffled(std::size_t records, std::size_t idLength = LongId) {
  std::vector<CalEvent> events = InOrder(records, idLength);
  std::shuffle(events.begin(), events.end(), std::mt19937(2));
  return events;
}

/// False, with the state marked, when the fixture did not load what it should measure.
bool Usable(benchmark::State& state, const CacheFixture& cache, std::size_t records = Records) {
  if (cache.Loaded() == records) return true;
  state.SkipWithError("not all records were loaded");
  return false;
}

using Seconds = double (CacheFixture::*)();

RunFigure OnOneFile(std::vector<CalEvent> (*events)(std::size_t, std::size_t), double limit,
                    Seconds base, Seconds subject) {
  return [=](benchmark::State& state) {
    CacheFixture cache(events(Records, LongId));
    if (!Usable(state, cache)) return;
    Compare(
        state, limit, [&] { return (cache.*base)(); }, [&] { return (cache.*subject)(); });
  };
}

RunFigure Growth(Seconds subject) {
  return [=](benchmark::State& state) {
    CacheFixture half(InOrder(Records / 2));
    CacheFixture whole(InOrder(Records));
    if (!Usable(state, half, Records / 2) || !Usable(state, whole)) return;
    Compare(
        state, GrowthLimit, [&] { return (half.*subject)(); }, [&] { return (whole.*subject)(); });
  };
}

RunFigure PeakOfLoad(std::size_t idLength) {
  return [=](benchmark::State& state) {
    CacheFixture cache(Shuffled(Records, idLength));
    if (!Usable(state, cache)) return;
    std::size_t peak = 0;
    for (auto iteration : state) {
      static_cast<void>(iteration);
      EventCollection events;
      peak = AllocationMeter::PeakOf([&] { cache.Load(events); });
      state.SetIterationTime(0);
    }
    LeaveFigure(state, static_cast<double>(peak) / static_cast<double>(cache.FileSize()),
                PeakLimit);
  };
}

}  // namespace

void RegisterCacheFigures() {
  using Fixture = CacheFixture;
  RegisterFigure(
      "load 200,000 records over decoding their texts", Iterations,
      OnOneFile(InOrder, ConversionLimit, &Fixture::SecondsOfDecoding, &Fixture::SecondsOfLoad));
  RegisterFigure("load 200,000 records over decoding and keeping their texts", Iterations,
                 OnOneFile(InOrder, ConversionLimit, &Fixture::SecondsOfDecodingAndKeeping,
                           &Fixture::SecondsOfLoad));
  RegisterFigure(
      "load 200,000 records out of order over decoding their texts", Iterations,
      OnOneFile(Shuffled, Unbounded, &Fixture::SecondsOfDecoding, &Fixture::SecondsOfLoad));
  RegisterFigure("load: 200,000 records over 100,000", Iterations, Growth(&Fixture::SecondsOfLoad));
  RegisterFigure("peak memory of a load over the file, EventIDs of 48", 1, PeakOfLoad(LongId));
  RegisterFigure("peak memory of a load over the file, EventIDs of 14", 1, PeakOfLoad(ShortId));
  RegisterFigure(
      "rewrite 200,000 records over encoding their texts", Iterations,
      OnOneFile(InOrder, ConversionLimit, &Fixture::SecondsOfEncoding, &Fixture::SecondsOfRewrite));
  RegisterFigure("rewrite: 200,000 records over 100,000", Iterations,
                 Growth(&Fixture::SecondsOfRewrite));
}

}  // namespace velkor
