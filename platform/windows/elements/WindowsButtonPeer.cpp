// platform/windows/elements/WindowsButtonPeer.cpp: buttons that press their elements.
#include <algorithm>
#include <utility>

#include "platform/windows/elements/FittedFont.h"
#include "platform/windows/elements/MakePeer.h"

namespace velkor {
namespace {

class CommandButtonPeer : public WindowsPeer {
 public:
  CommandButtonPeer(CommandButton& button, HWND parent, Placement placement)
      : WindowsPeer(button, parent, placement, L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP),
        button_(button),
        takesFocus_(placement == Placement::Layout) {
    Changed();
  }

  SIZE NeededSize(int /*width*/) override {
    const SIZE least = DialogUnits(Window(), {50, 14});
    const SIZE margin = DialogUnits(Window(), {16, 6});
    const SIZE text = TextSize(Window(), ToWide(button_.Caption()), DT_SINGLELINE);
    return {std::max(least.cx, text.cx + margin.cx), std::max(least.cy, text.cy + margin.cy)};
  }

 protected:
  void FitToDensity() override { font_.Forget(); }
  void Mirror() override {
    SetText(ToWide(button_.Caption()));
    if (!takesFocus_) FitFont();
  }
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
      case WM_COMMAND + Reflected:
        if (HIWORD(wParam) == BN_CLICKED) button_.Click();
        return 0;
      case WM_LBUTTONDOWN:
      case WM_LBUTTONDBLCLK:
        if (!takesFocus_ && ::GetFocus() != Window()) focusBefore_ = ::GetFocus();
        return std::nullopt;
      case WM_LBUTTONUP:
        return Release(wParam, lParam);
      default:
        return std::nullopt;
    }
  }

 private:
  /// What has its place in a control shows its caption whole there.
  void FitFont() {
    LOGFONTW font{};
    if (::GetObjectW(ParentFont(), sizeof font, &font) == 0) return;
    const RECT area = Area();
    const int edge = Units().Length(4);
    font_.Give(Window(), font, ToWide(button_.Caption()),
               {area.right - 2 * edge, area.bottom - edge});
  }
  /// In a control a press leaves the keyboard where it was.
  LRESULT Release(WPARAM wParam, LPARAM lParam) {
    const LRESULT answer = Default(WM_LBUTTONUP, wParam, lParam);
    const HWND before = std::exchange(focusBefore_, nullptr);
    if (before != nullptr && Window() != nullptr && ::GetFocus() == Window()) ::SetFocus(before);
    return answer;
  }

  CommandButton& button_;
  bool takesFocus_;
  FittedFont font_;
  HWND focusBefore_ = nullptr;
};

}  // namespace

std::unique_ptr<WindowsPeer> MakePeer(CommandButton& button, HWND parent, Placement placement) {
  return std::make_unique<CommandButtonPeer>(button, parent, placement);
}

}  // namespace velkor
