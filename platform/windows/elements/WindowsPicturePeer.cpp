// platform/windows/elements/WindowsPicturePeer.cpp: pictures: painted at once, and hearing pointer
// and keys.
#include <cmath>

#include "platform/windows/drawing/GdiSurface.h"
#include "platform/windows/elements/MakePeer.h"
#include "platform/windows/elements/PaintedWindow.h"
// After windows.h.
#include <windowsx.h>

namespace velkor {
namespace {

std::optional<Key> KeyOf(WPARAM virtualKey) {
  if (::GetKeyState(VK_CONTROL) < 0) return std::nullopt;
  switch (virtualKey) {
    case VK_LEFT:
      return Key::Left;
    case VK_RIGHT:
      return Key::Right;
    case VK_UP:
      return Key::Up;
    case VK_DOWN:
      return Key::Down;
    case VK_HOME:
      return Key::Home;
    case VK_END:
      return Key::End;
    case VK_PRIOR:
      return Key::PageUp;
    case VK_NEXT:
      return Key::PageDown;
    case VK_RETURN:
      return Key::Enter;
    case VK_SPACE:
      return Key::Space;
    case VK_DELETE:
      return Key::Delete;
    default:
      return std::nullopt;
  }
}

POINT PositionOf(LPARAM position) {
  return {GET_X_LPARAM(position), GET_Y_LPARAM(position)};
}

/// The same size of pixels as a device context has, without its being shown.
class PaintBuffer {
 public:
  /// @param area  of `target` that can be drawn on, at its own coordinates
  PaintBuffer(HDC target, const RECT& area) : target_(target), area_(area) {
    dc_.reset(::CreateCompatibleDC(target));
    bitmap_.reset(::CreateCompatibleBitmap(target, area.right - area.left, area.bottom - area.top));
    if (!dc_ || !bitmap_) return;
    before_ = ::SelectObject(dc_.get(), bitmap_.get());
    ::SetViewportOrgEx(dc_.get(), -area.left, -area.top, nullptr);
  }
  ~PaintBuffer() {
    if (before_ != nullptr) ::SelectObject(dc_.get(), before_);
  }
  PaintBuffer(const PaintBuffer&) = delete;
  PaintBuffer& operator=(const PaintBuffer&) = delete;

  /// Without memory for a buffer this is the target itself.
  HDC Dc() const { return before_ != nullptr ? dc_.get() : target_; }
  void Show() const {
    if (before_ == nullptr) return;
    ::BitBlt(target_, area_.left, area_.top, area_.right - area_.left, area_.bottom - area_.top,
             dc_.get(), area_.left, area_.top, SRCCOPY);
  }

 private:
  HDC target_;
  RECT area_;
  BitmapHandle bitmap_;
  MemoryDc dc_;
  HGDIOBJ before_ = nullptr;
};

class PicturePeer : public WindowsPeer {
 public:
  PicturePeer(PictureBox& picture, HWND parent, Placement placement)
      : WindowsPeer(picture, parent, placement, PaintedWindowClass(),
                    WS_CLIPCHILDREN | (picture.onKeyDown ? WS_TABSTOP : 0),
                    // The Tab key goes into it, to what it holds.
                    picture.onKeyDown ? 0 : WS_EX_CONTROLPARENT),
        picture_(picture) {
    Changed();
  }

  void Invalidate(const Rect& part) override {
    const PixelSize pixel = Units().Pixel();
    const auto edge = [](Twips length, float side, auto round) {
      // Beyond any window, so that no length leaves the range.
      constexpr double Far = 1 << 24;
      const double position = round(length / static_cast<double>(side));
      return static_cast<LONG>(std::fmin(std::fmax(position, -Far), Far));
    };
    const auto floor = [](double value) { return std::floor(value); };
    const auto ceil = [](double value) { return std::ceil(value); };
    const RECT pixels{edge(part.left, pixel.width, floor), edge(part.top, pixel.height, floor),
                      edge(part.right, pixel.width, ceil), edge(part.bottom, pixel.height, ceil)};
    if (Window() != nullptr && !::IsRectEmpty(&pixels)) {
      ::InvalidateRect(Window(), &pixels, FALSE);
    }
  }

 protected:
  void Mirror() override { SetSpokenText(); }
  bool HasToolTip() const override { return picture_.onToolTip || WindowsPeer::HasToolTip(); }
  std::string ToolTipText() override {
    shownToolTip_ = picture_.onToolTip ? picture_.onToolTip() : WindowsPeer::ToolTipText();
    return *shownToolTip_;
  }

  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
      case WM_ERASEBKGND:
        return TRUE;
      case WM_PAINT:
        OnPaint();
        return 0;
      case WM_PRINTCLIENT:
        Paint(reinterpret_cast<HDC>(wParam), Area());
        return 0;
      case WM_CTLCOLORSTATIC:
        // What it holds has behind it what this has.
        return ::SendMessageW(::GetParent(Window()), message, wParam, lParam);
      case WM_SIZE:
        ::InvalidateRect(Window(), nullptr, FALSE);
        return std::nullopt;
      default:
        return HandlePointer(message, wParam, lParam);
    }
  }

 private:
  std::optional<LRESULT> HandlePointer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
      case WM_MOUSEMOVE:
        OnMove(PositionOf(lParam));
        return 0;
      case WM_MOUSELEAVE:
        tracks_ = false;
        shownToolTip_.reset();
        if (picture_.onMouseLeave) picture_.onMouseLeave();
        return 0;
      // The second press of a quick pair is a press like any other.
      case WM_LBUTTONDOWN:
      case WM_LBUTTONDBLCLK:
        return OnDown(MouseButton::Left, lParam);
      case WM_RBUTTONDOWN:
      case WM_RBUTTONDBLCLK:
        return OnDown(MouseButton::Right, lParam);
      case WM_LBUTTONUP:
        return OnUp(MouseButton::Left, wParam, lParam);
      case WM_RBUTTONUP:
        return OnUp(MouseButton::Right, wParam, lParam);
      case WM_MOUSEWHEEL:
        if (!picture_.onMouseWheel) return std::nullopt;
        picture_.onMouseWheel(static_cast<double>(GET_WHEEL_DELTA_WPARAM(wParam)) / WHEEL_DELTA);
        return 0;
      default:
        return HandleKeys(message, wParam, lParam);
    }
  }

  std::optional<LRESULT> HandleKeys(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!picture_.onKeyDown) return std::nullopt;
    switch (message) {
      case WM_GETDLGCODE:
        return wParam == VK_RETURN ? DLGC_WANTALLKEYS : DLGC_WANTARROWS;
      case WM_KEYDOWN: {
        const auto key = KeyOf(wParam);
        if (!key) return std::nullopt;
        const HWND parent = ::GetParent(Window());
        if (!picture_.onKeyDown(*key)) ::SendMessageW(parent, message, wParam, lParam);
        return 0;
      }
      case WM_CONTEXTMENU:
        // By the mouse it follows a press that was heard.
        if (lParam != -1) return 0;
        return picture_.onKeyDown(Key::Menu) ? std::optional<LRESULT>(0) : std::nullopt;
      default:
        return std::nullopt;
    }
  }

  void OnPaint() {
    PAINTSTRUCT paint{};
    const HDC dc = ::BeginPaint(Window(), &paint);
    if (!::IsRectEmpty(&paint.rcPaint)) Paint(dc, paint.rcPaint);
    ::EndPaint(Window(), &paint);
  }

  void Paint(HDC target, const RECT& part) {
    const PaintBuffer buffer(target, part);
    {
      const SavedDc saved(buffer.Dc());
      ::FillRect(buffer.Dc(), &part, Background(buffer.Dc()).brush);
    }
    if (picture_.onPaint) {
      GdiSurface surface(buffer.Dc(), Units().Pixel());
      const Point from = Units().ToTwips(POINT{part.left, part.top});
      const Point to = Units().ToTwips(POINT{part.right, part.bottom});
      picture_.onPaint(surface, {from.x, from.y, to.x, to.y});
    }
    buffer.Show();
  }

  void OnMove(POINT position) {
    if (!tracks_) {
      TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, Window(), 0};
      tracks_ = ::TrackMouseEvent(&leave);
    }
    if (picture_.onMouseMove) picture_.onMouseMove(Units().ToTwips(position));
    // Asked again only once it was shown, or was empty where the pointer rested.
    if (!shownToolTip_ || !picture_.onToolTip || picture_.onToolTip() == *shownToolTip_) return;
    shownToolTip_.reset();
    RearmToolTip();
  }

  std::optional<LRESULT> OnDown(MouseButton button, LPARAM lParam) {
    shownToolTip_.reset();
    if (picture_.onKeyDown) ::SetFocus(Window());
    if (!picture_.onMouseDown) return std::nullopt;
    ::SetCapture(Window());
    picture_.onMouseDown(button, Units().ToTwips(PositionOf(lParam)));
    return 0;
  }

  std::optional<LRESULT> OnUp(MouseButton button, WPARAM wParam, LPARAM lParam) {
    const bool others = (wParam & (MK_LBUTTON | MK_RBUTTON)) != 0;
    if (!others && ::GetCapture() == Window()) ::ReleaseCapture();
    if (!picture_.onMouseDown && !picture_.onMouseUp) return std::nullopt;
    if (picture_.onMouseUp) picture_.onMouseUp(button, Units().ToTwips(PositionOf(lParam)));
    return 0;
  }

  PictureBox& picture_;
  bool tracks_ = false;
  /// What the tool tip told about the place where the pointer rested; none before it asks.
  std::optional<std::string> shownToolTip_;
};

}  // namespace

std::unique_ptr<WindowsPeer> MakePeer(PictureBox& picture, HWND parent, Placement placement) {
  return std::make_unique<PicturePeer>(picture, parent, placement);
}

}  // namespace velkor
