// platform/windows/elements/WindowText.cpp: text measured in a window's font.
#include "platform/windows/elements/WindowText.h"

#include <algorithm>

namespace velkor {
namespace {

/// The device context of a window with the window's font.
class FontDc {
 public:
  explicit FontDc(HWND window) : window_(window), dc_(::GetDC(window)) {
    const auto font = reinterpret_cast<HFONT>(::SendMessageW(window, WM_GETFONT, 0, 0));
    if (font != nullptr) before_ = ::SelectObject(dc_, font);
  }
  ~FontDc() {
    if (before_ != nullptr) ::SelectObject(dc_, before_);
    ::ReleaseDC(window_, dc_);
  }
  FontDc(const FontDc&) = delete;
  FontDc& operator=(const FontDc&) = delete;

  HDC Get() const { return dc_; }
  SIZE Measure(std::wstring_view text) const {
    SIZE size{};
    ::GetTextExtentPoint32W(dc_, text.data(), static_cast<int>(text.size()), &size);
    return size;
  }

 private:
  HWND window_;
  HDC dc_;
  HGDIOBJ before_ = nullptr;
};

}  // namespace

SIZE LineSize(HWND window, std::wstring_view text) {
  return FontDc(window).Measure(text);
}

SIZE TextSize(HWND window, const std::wstring& text, UINT format, int width) {
  const FontDc dc(window);
  RECT area{0, 0, width, 0};
  ::DrawTextW(dc.Get(), text.c_str(), static_cast<int>(text.size()), &area, format | DT_CALCRECT);
  return {area.right - area.left, area.bottom - area.top};
}

int WidestLine(HWND window, const std::vector<std::wstring>& lines) {
  const FontDc dc(window);
  LONG widest = 0;
  for (const std::wstring& line : lines) widest = std::max(widest, dc.Measure(line).cx);
  return static_cast<int>(widest);
}

TEXTMETRICW MetricsOfFont(HWND window) {
  const FontDc dc(window);
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(dc.Get(), &metrics);
  return metrics;
}

SIZE DialogUnits(HWND window, SIZE units) {
  const FontDc dc(window);
  constexpr std::wstring_view Letters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  const SIZE all = dc.Measure(Letters);
  const auto count = static_cast<int>(Letters.size());
  return {::MulDiv(static_cast<int>(units.cx), static_cast<int>(all.cx), 4 * count),
          ::MulDiv(static_cast<int>(units.cy), static_cast<int>(all.cy), 8)};
}

std::wstring ToCaption(std::string_view utf8) {
  std::wstring caption;
  for (const wchar_t c : ToWide(utf8)) caption.append(c == L'&' ? 2 : 1, c);
  return caption;
}

}  // namespace velkor
