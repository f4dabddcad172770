// platform/windows/elements/WindowsLabelPeers.cpp: labels and marks.
#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>

#include "platform/windows/elements/FittedFont.h"
#include "platform/windows/elements/MakePeer.h"
#include "platform/windows/elements/PaintedWindow.h"
#include "platform/windows/elements/PressablePeer.h"
#include "values/Twips.h"

namespace velkor {
namespace {

/// Of texts that are as large as the user set it in the system.
constexpr double OrdinaryPoints = 9;

/// The system's colour of links, unless it is too near to what lies behind it.
COLORREF LinkColour(COLORREF back) {
  constexpr int LeastDistance = 200;
  const COLORREF colour = ::GetSysColor(COLOR_HOTLIGHT);
  const int distance = std::abs(GetRValue(colour) - GetRValue(back)) +
                       std::abs(GetGValue(colour) - GetGValue(back)) +
                       std::abs(GetBValue(colour) - GetBValue(back));
  return distance >= LeastDistance ? colour : RGB(0x00, 0x66, 0xCC);
}

/// A text of one line in an element's bounds, of as many as it needs in a layout.
class LabelPeer : public PressablePeer {
 public:
  LabelPeer(Label& label, HWND parent, Placement placement)
      : PressablePeer(label, parent, placement, L"STATIC", SS_OWNERDRAW | SS_NOTIFY),
        label_(label),
        wraps_(placement == Placement::Layout) {
    Changed();
  }

  SIZE NeededSize(int width) override {
    const UINT wrapped = width > 0 ? DT_WORDBREAK : 0;
    return TextSize(Window(), ToWide(label_.Caption()), DT_NOPREFIX | wrapped, width);
  }

 protected:
  void FitToDensity() override { font_.Forget(); }
  void Mirror() override {
    PressablePeer::Mirror();
    SetText(ToWide(label_.Caption()));
    if (!wraps_) FitFont();
  }
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (message == WM_DRAWITEM + Reflected) {
      DrawAll(reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)->hDC);
      return TRUE;
    }
    return PressablePeer::Handle(message, wParam, lParam);
  }
  void Draw(HDC dc, const RECT& area) override {
    if (!label_.Enabled()) {
      ::SetTextColor(dc, ::GetSysColor(COLOR_GRAYTEXT));
    } else if (IsPressable()) {
      ::SetTextColor(dc, LinkColour(::GetBkColor(dc)));
    }
    const std::wstring text = ToWide(label_.Caption());
    RECT place = area;
    UINT format = DT_NOPREFIX | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS;
    if (wraps_) {
      format = DT_NOPREFIX | DT_WORDBREAK;
      const int spare = static_cast<int>(area.bottom) - NeededSize(area.right).cy;
      place.top += std::max(0, spare / 2);
    }
    ::DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &place, format);
  }
  /// What does not fit can be read in the tool tip.
  bool HasToolTip() const override { return WindowsPeer::HasToolTip() || IsTooLong(); }
  std::string ToolTipText() override {
    return WindowsPeer::HasToolTip() ? WindowsPeer::ToolTipText() : label_.Caption();
  }

 private:
  /// The parent's font in the label's style, as much larger than that as the style is than ordinary
  /// texts. A text with a style is seen whole.
  void FitFont() {
    LOGFONTW font{};
    if (::GetObjectW(ParentFont(), sizeof font, &font) == 0) return;
    if (label_.style) {
      font.lfHeight =
          static_cast<LONG>(std::lround(font.lfHeight * label_.style->points / OrdinaryPoints));
      font.lfWeight = label_.style->bold ? FW_BOLD : FW_NORMAL;
    }
    const RECT area = Area();
    font_.Give(Window(), font, ToWide(label_.Caption()),
               {label_.style ? area.right : LONG_MAX, area.bottom});
  }
  bool IsTooLong() const {
    if (wraps_) return false;
    const RECT area = Area();
    return TextSize(Window(), ToWide(label_.Caption()), DT_NOPREFIX | DT_SINGLELINE).cx >
           area.right;
  }

  Label& label_;
  bool wraps_;
  FittedFont font_;
};

/// A filled mark within a frame.
class ImagePeer : public PressablePeer {
 public:
  ImagePeer(Image& image, HWND parent, Placement placement)
      : PressablePeer(image, parent, placement, PaintedWindowClass(), 0), image_(image) {
    Changed();
  }

  SIZE NeededSize(int /*width*/) override {
    constexpr Twips UsualSide = 720;
    const PixelRect wanted = Units().ToPixels(image_.Bounds());
    if (wanted.Width() > 0 && wanted.Height() > 0) return {wanted.Width(), wanted.Height()};
    const POINT usual = Units().ToPixels(Point{UsualSide, UsualSide});
    return {usual.x, usual.y};
  }

 protected:
  void Mirror() override {
    PressablePeer::Mirror();
    SetSpokenText();
  }
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
      case WM_ERASEBKGND:
        return TRUE;
      case WM_PAINT: {
        PAINTSTRUCT paint{};
        DrawAll(::BeginPaint(Window(), &paint));
        ::EndPaint(Window(), &paint);
        return 0;
      }
      case WM_PRINTCLIENT:
        DrawAll(reinterpret_cast<HDC>(wParam));
        return 0;
      default:
        return PressablePeer::Handle(message, wParam, lParam);
    }
  }
  void Draw(HDC dc, const RECT& area) override {
    const int rounding = Units().Length(5);
    const Colour fill = image_.FillColour();
    ::SelectObject(dc, ::GetStockObject(DC_PEN));
    ::SelectObject(dc, ::GetStockObject(DC_BRUSH));
    ::SetDCPenColor(dc, ::GetSysColor(COLOR_BTNSHADOW));
    ::SetDCBrushColor(dc, RGB(fill.Red(), fill.Green(), fill.Blue()));
    ::RoundRect(dc, area.left, area.top, area.right, area.bottom, rounding, rounding);
  }

 private:
  Image& image_;
};

}  // namespace

std::unique_ptr<WindowsPeer> MakePeer(Label& label, HWND parent, Placement placement) {
  return std::make_unique<LabelPeer>(label, parent, placement);
}

std::unique_ptr<WindowsPeer> MakePeer(Image& image, HWND parent, Placement placement) {
  return std::make_unique<ImagePeer>(image, parent, placement);
}

}  // namespace velkor
