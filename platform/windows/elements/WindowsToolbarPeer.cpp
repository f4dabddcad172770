// platform/windows/elements/WindowsToolbarPeer.cpp: toolbars of flat buttons.
#include <algorithm>
#include <vector>

#include "platform/windows/elements/MakePeer.h"
#include "platform/windows/elements/WindowsToolbarImages.h"
#include "support/ToolbarIcons.h"

namespace velkor {
namespace {

/// The class is the common controls'.
const wchar_t* ToolbarClass() {
  const INITCOMMONCONTROLSEX wanted{sizeof wanted, ICC_BAR_CLASSES};
  ::InitCommonControlsEx(&wanted);
  return TOOLBARCLASSNAMEW;
}

class ToolbarPeer : public WindowsPeer {
 public:
  ToolbarPeer(Toolbar& toolbar, HWND parent, Placement placement)
      : WindowsPeer(toolbar, parent, placement, ToolbarClass(),
                    WS_TABSTOP | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_NODIVIDER | CCS_NORESIZE |
                        CCS_NOPARENTALIGN),
        toolbar_(toolbar) {
    Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    Send(TB_SETUNICODEFORMAT, TRUE);
    Send(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DOUBLEBUFFER);
    FitToDensity();
    Changed();
  }
  ~ToolbarPeer() override {
    if (Window() == nullptr) return;
    Send(TB_SETIMAGELIST, 0, 0);
    Send(TB_SETDISABLEDIMAGELIST, 0, 0);
  }

 protected:
  void FitToDensity() override {
    side_ = 0;
    const auto toolTip = reinterpret_cast<HWND>(Send(TB_GETTOOLTIPS));
    ::SendMessageW(toolTip, WM_SETFONT, reinterpret_cast<WPARAM>(ParentFont()), FALSE);
  }
  void Mirror() override {
    SetSpokenText();
    FitButtons();
    const auto& buttons = toolbar_.Buttons();
    for (std::size_t i = 0; i < buttons.size(); ++i) {
      const ToolbarButton& button = buttons[i];
      TBBUTTONINFOW info{};
      info.cbSize = sizeof info;
      info.dwMask = TBIF_STATE | TBIF_IMAGE;
      Send(TB_GETBUTTONINFOW, i, reinterpret_cast<LPARAM>(&info));
      const BYTE state =
          (button.enabled ? TBSTATE_ENABLED : 0) | (button.checked ? TBSTATE_CHECKED : 0);
      constexpr BYTE Mirrored = TBSTATE_ENABLED | TBSTATE_CHECKED;
      if ((info.fsState & Mirrored) == state && info.iImage == button.image - 1) continue;
      info.fsState = static_cast<BYTE>((info.fsState & ~Mirrored) | state);
      info.iImage = button.image - 1;
      Send(TB_SETBUTTONINFOW, i, reinterpret_cast<LPARAM>(&info));
    }
  }

  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
      case WM_COMMAND + Reflected:
        Click(LOWORD(wParam));
        return 0;
      case WM_NOTIFY + Reflected:
        return OnNotify(lParam);
      case WM_ERASEBKGND: {
        const RECT area = Area();
        const auto dc = reinterpret_cast<HDC>(wParam);
        const SavedDc saved(dc);
        ::FillRect(dc, &area, Background(dc).brush);
        return TRUE;
      }
      case WM_SYSCOLORCHANGE:
        FitToDensity();
        Changed();
        return std::nullopt;
      case WM_GETDLGCODE:
        return wParam == VK_RETURN ? DLGC_WANTALLKEYS : DLGC_WANTARROWS;
      case WM_KEYDOWN:
        return OnKey(wParam) ? std::optional<LRESULT>(0) : std::nullopt;
      case WM_SETFOCUS:
        MoveHot(0, 1);
        return std::nullopt;
      case WM_KILLFOCUS:
        Send(TB_SETHOTITEM, static_cast<WPARAM>(-1));
        return std::nullopt;
      default:
        return std::nullopt;
    }
  }

 private:
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageW(Window(), message, wParam, lParam);
  }

  /// Buttons as high as the toolbar, so that their pictures stand in its middle, and as wide as the
  /// pictures that are drawn for them need.
  void FitButtons() {
    const auto height = static_cast<int>(Area().bottom);
    const int margin = Units().ToPixels(ToolbarImageMargin);
    const int side = std::clamp(height, 3 * margin, Units().ToPixels(ToolbarButtonSide));
    if (side == side_ && height == height_) return;
    side_ = side;
    height_ = height;
    // What buttons are large enough for is known when they are made.
    while (Send(TB_BUTTONCOUNT) > 0) Send(TB_DELETEBUTTON, 0);
    const int imageSide = side - 2 * margin;
    // The common controls leave two pixels above an image, whatever the button's height is, so the
    // images are as high as the buttons.
    constexpr int Edges = 4;
    const int imageHeight = std::max(imageSide, height - Edges);
    Send(TB_SETBITMAPSIZE, 0, MAKELPARAM(imageSide, imageHeight));
    Send(TB_SETPADDING, 0, MAKELPARAM(side - imageSide, Edges));
    SetImages(imageSide, imageHeight);
    AddButtons();
    Send(TB_SETBUTTONSIZE, 0, MAKELPARAM(side, imageHeight + Edges));
  }

  void SetImages(int side, int height) {
    const HDC dc = ::GetDC(Window());
    const COLORREF back = Background(dc).colour;
    const COLORREF lines = ::GetTextColor(dc);
    ::ReleaseDC(Window(), dc);
    ImageListHandle images = MakeToolbarImages(side, height, lines, back, false);
    ImageListHandle faded = MakeToolbarImages(side, height, lines, back, true);
    Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images.get()));
    Send(TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(faded.get()));
    images_ = std::move(images);
    faded_ = std::move(faded);
  }

  /// The command of a button is its place, counted from 0.
  void AddButtons() const {
    std::vector<TBBUTTON> natives;
    for (const ToolbarButton& button : toolbar_.Buttons()) {
      TBBUTTON native{};
      native.iBitmap = button.image - 1;
      native.idCommand = static_cast<int>(natives.size());
      native.fsStyle = BTNS_BUTTON;
      natives.push_back(native);
    }
    Send(TB_ADDBUTTONSW, natives.size(), reinterpret_cast<LPARAM>(natives.data()));
  }

  std::optional<LRESULT> OnNotify(LPARAM notice) const {
    if (reinterpret_cast<const NMHDR*>(notice)->code != TBN_GETINFOTIPW) return std::nullopt;
    auto& asked = *reinterpret_cast<NMTBGETINFOTIPW*>(notice);
    const auto place = static_cast<std::size_t>(asked.iItem);
    if (place >= toolbar_.Buttons().size() || asked.cchTextMax <= 0) return 0;
    const std::wstring text = ToWide(toolbar_.Buttons()[place].toolTip);
    const std::size_t length =
        text.copy(asked.pszText, static_cast<std::size_t>(asked.cchTextMax) - 1);
    asked.pszText[length] = L'\0';
    return 0;
  }

  void Click(std::size_t place) {
    if (place >= toolbar_.Buttons().size()) return;
    const std::string key = toolbar_.Buttons()[place].key;
    toolbar_.ClickButton(key);
  }

  /// The keyboard goes from button to button and presses them.
  bool OnKey(WPARAM virtualKey) {
    const auto hot = static_cast<int>(Send(TB_GETHOTITEM));
    switch (virtualKey) {
      case VK_LEFT:
        MoveHot(hot - 1, -1);
        return true;
      case VK_RIGHT:
        MoveHot(hot + 1, 1);
        return true;
      case VK_SPACE:
      case VK_RETURN:
        if (hot >= 0) Click(static_cast<std::size_t>(hot));
        return true;
      default:
        return false;
    }
  }

  /// To the first button from here on that can be pressed.
  void MoveHot(int place, int step) const {
    const auto& buttons = toolbar_.Buttons();
    while (place >= 0 && place < static_cast<int>(buttons.size())) {
      if (buttons[static_cast<std::size_t>(place)].enabled) {
        Send(TB_SETHOTITEM, static_cast<WPARAM>(place));
        ::NotifyWinEvent(EVENT_OBJECT_FOCUS, Window(), OBJID_CLIENT, place + 1);
        return;
      }
      place += step;
    }
  }

  Toolbar& toolbar_;
  int side_ = 0;
  int height_ = 0;
  ImageListHandle images_;
  ImageListHandle faded_;
};

}  // namespace

std::unique_ptr<WindowsPeer> MakePeer(Toolbar& toolbar, HWND parent, Placement placement) {
  return std::make_unique<ToolbarPeer>(toolbar, parent, placement);
}

}  // namespace velkor
