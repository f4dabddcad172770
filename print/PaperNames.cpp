// print/PaperNames.cpp: what paper sizes and orientations are called.
#include "print/PaperNames.h"

#include <array>

namespace velkor {
namespace {

constexpr int UserDefinedPaper = 256;
/// By code less 1.
constexpr std::array<std::string_view, 41> PaperNames{
    "Letter, 8 1/2 x 11 in.",
    "Letter Small, 8 1/2 x 11 in.",
    "Tabloid, 11 x 17 in.",
    "Ledger, 17 x 11 in.",
    "Legal, 8 1/2 x 14 in.",
    "Statement, 5 1/2 x 8 1/2 in.",
    "Executive, 7 1/2 x 10 1/2 in.",
    "A3, 297 x 420 mm",
    "A4, 210 x 297 mm",
    "A4 Small, 210 x 297 mm",
    "A5, 148 x 210 mm",
    "B4, 250 x 354 mm",
    "B5, 182 x 257 mm",
    "Folio, 8 1/2 x 13 in.",
    "Quarto, 215 x 275 mm",
    "10 x 14 in.",
    "11 x 17 in.",
    "Note, 8 1/2 x 11 in.",
    "Envelope #9, 3 7/8 x 8 7/8 in.",
    "Envelope #10, 4 1/8 x 9 1/2 in.",
    "Envelope #11, 4 1/2 x 10 3/8 in.",
    "Envelope #12, 4 1/2 x 11 in.",
    "Envelope #14, 5 x 11 1/2 in.",
    "C size sheet",
    "D size sheet",
    "E size sheet",
    "Envelope DL, 110 x 220 mm",
    "Envelope C5, 162 x 229 mm",
    "Envelope C3, 324 x 458 mm",
    "Envelope C4, 229 x 324 mm",
    "Envelope C6, 114 x 162 mm",
    "Envelope C65, 114 x 229 mm",
    "Envelope B4, 250 x 353 mm",
    "Envelope B5, 176 x 250 mm",
    "Envelope B6, 176 x 125 mm",
    "Envelope, 110 x 230 mm",
    "Envelope Monarch, 3 7/8 x 7 1/2 in.",
    "Envelope, 3 5/8 x 6 1/2 in.",
    "U.S. Standard Fanfold, 14 7/8 x 11 in.",
    "German Standard Fanfold, 8 1/2 x 12 in.",
    "German Legal Fanfold, 8 1/2 x 13 in.",
};

}  // namespace

std::string_view PaperName(int paperSize) {
  if (paperSize == UserDefinedPaper) return "User-defined";
  const bool named = paperSize >= 1 && paperSize <= static_cast<int>(PaperNames.size());
  return named ? PaperNames[paperSize - 1] : std::string_view();
}

std::string_view OrientationName(int orientation) {
  if (orientation == 1) return "Portrait";
  return orientation == 2 ? "Landscape" : std::string_view();
}

}  // namespace velkor
