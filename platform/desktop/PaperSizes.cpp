// platform/desktop/PaperSizes.cpp: paper by its codes in the device mode and as Qt's page sizes.
#include "platform/desktop/PaperSizes.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velkor {
namespace {

struct Sheet {
  double width;
  double height;
};

constexpr Sheet Inches(double width, double height) {
  constexpr double Millimetres = 25.4;
  return {width * Millimetres, height * Millimetres};
}

/// In millimetres; code 1 first. Sizes as "DEVMODEA structure" (wingdi.h) words them.
constexpr std::array<Sheet, 41> Sheets{{
    Inches(8.5, 11),       // Letter
    Inches(8.5, 11),       // Letter Small
    Inches(11, 17),        // Tabloid
    Inches(17, 11),        // Ledger
    Inches(8.5, 14),       // Legal
    Inches(5.5, 8.5),      // Statement
    Inches(7.5, 10.5),     // Executive
    {297, 420},            // A3
    {210, 297},            // A4
    {210, 297},            // A4 Small
    {148, 210},            // A5
    {250, 354},            // B4
    {182, 257},            // B5
    Inches(8.5, 13),       // Folio
    {215, 275},            // Quarto
    Inches(10, 14),        // 10 x 14
    Inches(11, 17),        // 11 x 17
    Inches(8.5, 11),       // Note
    Inches(3.875, 8.875),  // Envelope #9
    Inches(4.125, 9.5),    // Envelope #10
    Inches(4.5, 10.375),   // Envelope #11
    Inches(4.5, 11),       // Envelope #12
    Inches(5, 11.5),       // Envelope #14
    Inches(17, 22),        // C sheet
    Inches(22, 34),        // D sheet
    Inches(34, 44),        // E sheet
    {110, 220},            // Envelope DL
    {162, 229},            // Envelope C5
    {324, 458},            // Envelope C3
    {229, 324},            // Envelope C4
    {114, 162},            // Envelope C6
    {114, 229},            // Envelope C65
    {250, 353},            // Envelope B4
    {176, 250},            // Envelope B5
    {176, 125},            // Envelope B6
    {110, 230},            // Envelope Italy
    Inches(3.875, 7.5),    // Envelope Monarch
    Inches(3.625, 6.5),    // Envelope 6 3/4
    Inches(14.875, 11),    // U.S. Standard Fanfold
    Inches(8.5, 12),       // German Standard Fanfold
    Inches(8.5, 13),       // German Legal Fanfold
}};

/// The side that differs more, in millimetres.
double Difference(const Sheet& a, const QSizeF& b) {
  return std::max(std::abs(a.width - b.width()), std::abs(a.height - b.height()));
}

/// Qt keeps sides in whole points, a third of a millimetre each.
constexpr double Tolerance = 1;

}  // namespace

QPageSize PageSizeOfPaper(int paper) {
  if (paper < 1 || paper > static_cast<int>(Sheets.size())) return {};
  const Sheet& sheet = Sheets.at(static_cast<std::size_t>(paper) - 1);
  return QPageSize(QSizeF(sheet.width, sheet.height), QPageSize::Millimeter, QString(),
                   QPageSize::FuzzyMatch);
}

bool IsSameSheet(const QPageSize& a, const QPageSize& b) {
  const QSizeF size = a.size(QPageSize::Millimeter);
  return Difference({size.width(), size.height()}, b.size(QPageSize::Millimeter)) <= Tolerance;
}

int PaperOfPageSize(const QPageSize& size, int preferred) {
  const QSizeF sides = size.size(QPageSize::Millimeter);
  int nearest = UserPaper;
  double least = Tolerance;
  for (std::size_t i = 0; i < Sheets.size(); ++i) {
    const double difference = Difference(Sheets.at(i), sides);
    const int paper = static_cast<int>(i) + 1;
    if (difference <= Tolerance && paper == preferred) return paper;
    if (difference > least || (nearest != UserPaper && difference >= least)) continue;
    nearest = paper;
    least = difference;
  }
  return nearest;
}

bool IsOrientation(int orientation) {
  return orientation == device_mode::Portrait || orientation == device_mode::Landscape;
}

QPageLayout::Orientation ToQtOrientation(int orientation) {
  return orientation == device_mode::Landscape ? QPageLayout::Landscape : QPageLayout::Portrait;
}

int FromQtOrientation(QPageLayout::Orientation orientation) {
  return orientation == QPageLayout::Landscape ? device_mode::Landscape : device_mode::Portrait;
}

}  // namespace velkor
