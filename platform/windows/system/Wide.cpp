// platform/windows/system/Wide.cpp: conversions by code point.
#include "platform/windows/system/Wide.h"

#include "values/Text.h"

namespace velkor {

std::wstring ToWide(std::string_view utf8) {
  std::wstring wide;
  wide.reserve(utf8.size());
  while (!utf8.empty()) {
    const char32_t character = TakeCharacter(utf8);
    if (character < 0x10000) {
      wide.push_back(static_cast<wchar_t>(character));
    } else {
      wide.push_back(static_cast<wchar_t>(0xD7C0 + (character >> 10)));
      wide.push_back(static_cast<wchar_t>(0xDC00 + (character & 0x3FF)));
    }
  }
  return wide;
}

std::string ToUtf8(std::wstring_view wide) {
  std::string utf8;
  utf8.reserve(wide.size());
  for (std::size_t at = 0; at < wide.size(); ++at) {
    char32_t character = wide[at];
    const bool pair =
        (character & 0xFC00) == 0xD800 && at + 1 < wide.size() && (wide[at + 1] & 0xFC00) == 0xDC00;
    if (pair) character = 0x10000 + ((character & 0x3FF) << 10) + (wide[++at] & 0x3FF);
    AppendCharacter(utf8, character);
  }
  return utf8;
}

std::wstring TextOfWindow(HWND window) {
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = ::GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::string SystemMessage(DWORD code) {
  wchar_t text[512];
  const DWORD length = ::FormatMessageW(
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
      nullptr, code, 0, text, static_cast<DWORD>(std::size(text)), nullptr);
  const std::string message = ToUtf8({text, length});
  const std::string trimmed(Trim(message));
  return trimmed.empty() ? "system error " + std::to_string(code) : trimmed;
}

Error SystemError(DWORD code, std::string_view doing) {
  const HRESULT result = HRESULT_FROM_WIN32(code);
  return Error(FAILED(result) ? result : E_FAIL, std::string(doing) + ": " + SystemMessage(code));
}

}  // namespace velkor
