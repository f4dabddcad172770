// platform/desktop/QtIcons.h: icons drawn as lines, sharp at any size.
#pragma once

#include <QIcon>
#include <QPalette>
#include <string_view>

namespace velkor {

/// The icon for a toolbar key: Back, Next, Filter, Print, Open, Save; its lines have the colour of
/// the text of a window with this palette, faded where it is disabled. An unknown key has an empty
/// icon.
QIcon IconFor(std::string_view key, const QPalette& palette);

/// The program's own icon: a small year with bars.
QIcon ProgramIcon();

}  // namespace velkor
