// platform/windows/system/AnsiText.cpp: conversions that tell what a code page lacks.
#include "platform/windows/system/AnsiText.h"

#include <algorithm>

#include "platform/windows/system/Wide.h"
#include "platform/windows/system/WindowsLocale.h"

namespace velkor {

std::string ToAnsi(std::string_view utf8) {
  return WindowsLocale().ToCodePage(utf8, ::GetACP());
}

std::string FromAnsi(std::string_view bytes) {
  return WindowsLocale().FromCodePage(bytes, ::GetACP());
}

std::optional<std::string> WholeInCodePage(std::string_view utf8, UINT page) {
  if (page == 0) return std::nullopt;
  // Most texts; they are the same bytes in every ANSI code page.
  const bool isAscii =
      std::all_of(utf8.begin(), utf8.end(), [](char c) { return (c & 0x80) == 0; });
  if (isAscii) return std::string(utf8);
  const std::wstring wide = ToWide(utf8);
  std::string bytes(wide.size() * 4, '\0');
  BOOL lacking = FALSE;
  const int length =
      ::WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, wide.data(), static_cast<int>(wide.size()),
                            bytes.data(), static_cast<int>(bytes.size()), nullptr, &lacking);
  if (length == 0 || lacking) return std::nullopt;
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

}  // namespace velkor
