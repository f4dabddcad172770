// platform/windows/AnsiText.h: texts of the system's functions that count in the ANSI code page.
#pragma once

#include <string>
#include <string_view>

#include "platform/windows/WindowsLocale.h"

namespace velkor {

/// Characters that the code page lacks become '?'.
inline std::string ToAnsi(std::string_view utf8) {
  WindowsLocale locale;
  return locale.ToCodePage(utf8, locale.AnsiCodePage());
}

inline std::string FromAnsi(std::string_view bytes) {
  WindowsLocale locale;
  return locale.FromCodePage(bytes, locale.AnsiCodePage());
}

}  // namespace velkor
