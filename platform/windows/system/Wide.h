// platform/windows/system/Wide.h: UTF-8 to and from the system's UTF-16, and its error texts.
#pragma once

#include <string>
#include <string_view>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// Invalid bytes become U+FFFD.
std::wstring ToWide(std::string_view utf8);
/// Unpaired surrogates become U+FFFD.
std::string ToUtf8(std::wstring_view wide);

/// What the system says about one of its error codes.
std::string SystemMessage(DWORD code);

}  // namespace velkor
