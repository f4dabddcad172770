// tests/fuzz/FuzzCache.cpp: bytes as a cache file: loaded, laid out, asked, written and read again.
#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "model/CacheFile.h"
#include "platform/headless/FixedLocale.h"
#include "platform/headless/MemoryFiles.h"
#include "view/YearGrid.h"

namespace velkor {
namespace {

void Require(bool condition, const char* claim) {
  if (condition) return;
  std::fprintf(stderr, "Does not hold: %s\n", claim);
  std::abort();
}

/// The planner that the first byte of an input asks for; the other bytes are the cache file.
YearGrid GridFor(unsigned char choice) {
  const DisplaySpan span{.ViewYear = 2026, .FirstMonth = (choice & 0x0F) % 12 + 1};
  const PlannerProperties options{.AllEvents = (choice & 0x10) != 0,
                                  .HideNonCategoryItems = (choice & 0x20) != 0};
  CategoryFilter filter;
  if ((choice & 0x40) != 0) filter.SetCategoryFilter("Leave, Trip");
  return {span, CategoryTable({{"Leave", {}}, {"Trip", {}}, {"Other", {}}}), filter, options};
}

bool Equal(const CalEvent& a, const CalEvent& b) {
  const auto bits = [](Date date) { return std::bit_cast<std::uint64_t>(date.Days()); };
  return a.EventID == b.EventID && a.Subject == b.Subject && a.Categories == b.Categories &&
         bits(a.StartDate) == bits(b.StartDate) && bits(a.EndDate) == bits(b.EndDate) &&
         a.CatIndex == b.CatIndex && a.StartDay == b.StartDay && a.EndDay == b.EndDay &&
         a.StartMonth == b.StartMonth && a.EndMonth == b.EndMonth;
}

void CheckBar(const YearGrid& grid, const Bar& bar) {
  const BandLayout& layout = grid.Layout();
  const CalEvent& event = grid.Events()[bar.event];
  Require(bar.row >= 1 && bar.row <= MonthRows, "a bar lies in a row of the grid");
  Require(bar.first >= 0 && bar.first < bar.last && bar.last <= GridColumns + 1,
          "a bar covers columns of the grid");
  Require(bar.band == event.Band && bar.band >= FirstBand && bar.band <= layout.BandsOf(bar.row),
          "a bar lies in its event's band, and the row is high enough");

  const GridGeometry& geometry = grid.Geometry();
  const Rect rect = BarRect(bar, geometry, layout);
  const Point inFirstCell{rect.left + double{geometry.ColumnWidth} / 2,
                          (rect.top + rect.bottom) / 2};
  const auto hit = grid.HitTestAt(inFirstCell);
  if (bar.first == GridColumns) {
    Require(!hit, "nothing can be hit beyond the grid");
    return;
  }
  Require(hit && hit->row == bar.row && hit->band == bar.band && hit->cellColumn == bar.first + 1,
          "a point in a bar's first cell hits that cell");
  const auto found = grid.EventAt(*hit);
  Require(found && *found >= bar.event && grid.Events()[*found].Band == bar.band,
          "a cell names the last event that lies there");
}

void LayOutAndAsk(YearGrid& grid) {
  constexpr Extent PicParent{15000, 9000};
  constexpr Twips ScrollBarWidth = 255;
  grid.Resize(PicParent, ScrollBarWidth, {});
  for (const Bar& bar : grid.Layout().bars) CheckBar(grid, bar);
  for (const Point corner : {Point{0, 0}, Point{-1, -1}, Point{PicParent.width, PicParent.height},
                             Point{0, grid.Geometry().GridHeight(grid.Layout())}}) {
    if (const auto hit = grid.HitTestAt(corner)) grid.EventAt(*hit);
  }
}

void CheckBytes(unsigned char choice, std::string bytes) {
  constexpr CodePage Utf8Page = 65001;
  const CachePaths paths{"cache", "work"};
  MemoryFiles files;
  files.contents[paths.cacheFile] = std::move(bytes);
  FixedLocale locale;
  if ((choice & 0x80) != 0) locale.ansiCodePage = Utf8Page;
  CacheFile cache(files, locale);

  YearGrid grid = GridFor(choice);
  EventCollection events;
  cache.Load(paths.cacheFile, grid.Fields(), events);
  grid.SetEvents(std::move(events));
  LayOutAndAsk(grid);
  Require(cache.Rewrite(paths, grid.Events()), "a loaded collection can be written");

  EventCollection again;
  const LoadOutcome outcome = cache.Load(paths.cacheFile, grid.Fields(), again);
  Require(outcome == LoadOutcome::Loaded, "what was written can be read whole");
  Require(std::equal(grid.Events().begin(), grid.Events().end(), again.begin(), again.end(), Equal),
          "what was written is what is read");
}

}  // namespace
}  // namespace velkor

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  velkor::CheckBytes(data[0], std::string(data + 1, data + size));
  return 0;
}
