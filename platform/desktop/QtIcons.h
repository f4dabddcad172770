// platform/desktop/QtIcons.h: icons drawn for the size that they are shown in.
#pragma once

#include <QIcon>
#include <QPalette>

namespace velkor {

/// The picture with a number of toolbar_images. Its lines have the colour of the text of a window
/// with this palette, faded where it is disabled; a filter in force is filled in a colour. An
/// unknown number has an empty picture.
QIcon IconFor(int image, const QPalette& palette);

/// The program's own icon: a small year with bars.
QIcon ProgramIcon();

}  // namespace velkor
