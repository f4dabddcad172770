// platform/desktop/PaperSizes.h: paper by its codes in the device mode and as Qt's page sizes.
#pragma once

#include <QPageLayout>
#include <QPageSize>
#include <QSizeF>

#include "platform/Printer.h"

namespace velkor {

/// The code of sheets that no other code names (DMPAPER_USER, wingdi.h).
inline constexpr int UserPaper = 256;

/// The sheet of a code, 1 to 41; not valid for other codes.
QPageSize PageSizeOfPaper(int paper);

/// True when the sheets' sides differ by at most 1 mm.
bool IsSameSheet(const QPageSize& a, const QPageSize& b);

/// The code of the nearest sheet within 1 mm on both sides: `preferred` when it names one as large,
/// otherwise the first; UserPaper when there is none.
int PaperOfPageSize(const QPageSize& size, int preferred);

/// Whether a number is one of the two orientations.
bool IsOrientation(int orientation);
QPageLayout::Orientation ToQtOrientation(int orientation);
int FromQtOrientation(QPageLayout::Orientation orientation);

}  // namespace velkor
