// print/PrintOptionSet.h: the settings that shape a printed year, as they are held in memory.
#pragma once

#include <cstdint>
#include <string>

namespace velkor {

/// How subjects stand in their bars.
namespace print_formats {
inline constexpr std::int16_t Multiline = 0;
inline constexpr std::int16_t SingleLine = 1;
}  // namespace print_formats

/// Lengths in twips.
struct PrintOptionSet {
  std::int32_t LeftMargin = 1134;
  std::int32_t TopMargin = 1134;
  std::int32_t RightMargin = 1134;
  std::int32_t BottomMargin = 1134;
  std::int32_t LegendWidth = 2268;
  /// What the user entered plus one.
  std::int16_t MinBands = 4;
  float MinBandHeight = 142;
  std::string Header;
  /// "Inch" or "mm".
  std::string Units = "mm";
  bool ReprintLegend = true;
  /// Calendar months, 1 to 12; the start is not after the end in the order of the span.
  std::int16_t StartMonth = 1;
  std::int16_t EndMonth = 12;
  /// One of print_formats.
  std::int16_t PrintFormat = print_formats::SingleLine;
  bool VisibleText = false;
};

}  // namespace velkor
