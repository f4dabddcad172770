// platform/windows/system/AnsiText.h: texts of the system's functions that count in an ANSI code
// page.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// Characters that the system's ANSI code page lacks become '?'.
std::string ToAnsi(std::string_view utf8);
std::string FromAnsi(std::string_view bytes);

/// The bytes of a text in a code page; none where the page lacks a character of it or is no page of
/// this system. For callers that have another function for such texts.
std::optional<std::string> WholeInCodePage(std::string_view utf8, UINT page);
inline std::optional<std::string> WholeInAnsi(std::string_view utf8) {
  return WholeInCodePage(utf8, ::GetACP());
}

}  // namespace velkor
