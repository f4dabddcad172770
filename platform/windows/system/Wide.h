// platform/windows/system/Wide.h: UTF-8 to and from the UTF-16 in which the system has its texts.
#pragma once

#include <string>
#include <string_view>

#include "platform/windows/system/Win32.h"
#include "values/Error.h"

namespace velkor {

/// Invalid bytes become U+FFFD.
std::wstring ToWide(std::string_view utf8);
/// Unpaired surrogates become U+FFFD.
std::string ToUtf8(std::wstring_view wide);

/// The text of a window, whole; empty for a window that is gone.
std::wstring TextOfWindow(HWND window);

/// What the system says about one of its error codes.
std::string SystemMessage(DWORD code);

/// What failed because of one of its error codes; the number is the code's HRESULT.
/// @param doing  the beginning of the description
Error SystemError(DWORD code, std::string_view doing);

}  // namespace velkor
