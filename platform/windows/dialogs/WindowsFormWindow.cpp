// platform/windows/dialogs/WindowsFormWindow.cpp: the window of a form that places its elements
// itself.
#include "platform/windows/dialogs/WindowsFormWindow.h"

#include <algorithm>

#include "platform/windows/elements/MakePeer.h"
#include "values/FlagScope.h"

namespace velkor {
namespace {

/// Asks the form to arrange itself; a message, so that all sizes that the window took meanwhile
/// are done with once.
constexpr UINT FitMessage = WM_APP;

/// Pixels of 96 to the inch.
constexpr SIZE LeastSize{400, 300};

}  // namespace

WindowsFormWindow::WindowsFormWindow(Form& form, HWND owner)
    : form_(form), dialog_(owner, form.Title(), WS_THICKFRAME | WS_MAXIMIZEBOX | WS_CLIPCHILDREN) {
  MakePeers();
  OpenInSize(form.OpeningSize());
  dialog_.onClose = [this] { form_.Unload(); };
  dialog_.onMessage = [this](UINT message, WPARAM wParam, LPARAM) { return Hear(message, wParam); };
  // The elements have uses of their own for the other keys.
  dialog_.isDialogKey = [](const MSG& message) {
    return message.message == WM_KEYDOWN &&
           (message.wParam == VK_TAB || message.wParam == VK_ESCAPE);
  };
  dialog_.onDensity = [this] { TakeDensity(); };
  form_.onUnload = [this] { dialog_.Close(); };
}

WindowsFormWindow::~WindowsFormWindow() {
  form_.onUnload = nullptr;
}

void WindowsFormWindow::MakePeers() {
  std::map<const Element*, HWND> windows{{nullptr, dialog_.Window()}};
  for (const PlacedElement& placed : form_.Placed()) {
    const auto holder = windows.find(placed.holder);
    if (holder == windows.end()) {
      throw Error(errors::InvalidProcedureCall,
                  "The holder of the element " + placed.element->Name() + " is not placed",
                  "WindowsForms");
    }
    peers_.push_back(MakePeerOf<Toolbar, PictureBox, Label, ScrollBar, CommandButton>(
        *placed.element, holder->second, Placement::Bounds));
    windows[placed.element] = peers_.back()->Window();
    auto* const picture = dynamic_cast<PictureBox*>(placed.element);
    if (picture != nullptr && picture->onKeyDown && keyboard_ == nullptr) keyboard_ = picture;
  }
}

void WindowsFormWindow::OpenInSize(Extent wanted) {
  const POINT size = dialog_.Units().ToPixels(Point{wanted.width, wanted.height});
  const SIZE least = Least();
  dialog_.Place({std::max(size.x, least.cx), std::max(size.y, least.cy)}, least);
}

SIZE WindowsFormWindow::Least() const {
  return {dialog_.Units().Length(LeastSize.cx), dialog_.Units().Length(LeastSize.cy)};
}

void WindowsFormWindow::TakeDensity() {
  for (const auto& peer : peers_) peer->TakeDensity(dialog_.Units());
  dialog_.SetLeast(Least());
  fitted_ = {};
  FitSoon();
}

void WindowsFormWindow::ShowModal() {
  form_.Open();
  dialog_.Run([this] {
    if (keyboard_ != nullptr) keyboard_->SetFocus();
    FitSoon();
  });
}

std::optional<LRESULT> WindowsFormWindow::Hear(UINT message, WPARAM wParam) {
  switch (message) {
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED) FitSoon();
      return 0;
    case FitMessage:
      due_ = false;
      Fit();
      return 0;
    // Enter does nothing.
    case WM_COMMAND:
      return 0;
  }
  return std::nullopt;
}

void WindowsFormWindow::FitSoon() {
  if (due_ || !::IsWindowVisible(dialog_.Window())) return;
  due_ = true;
  ::PostMessageW(dialog_.Window(), FitMessage, 0, 0);
}

void WindowsFormWindow::Fit() {
  if (fitting_) return;
  const FlagScope fitting(fitting_);
  const auto isOther = [this](SIZE area) { return area.cx != fitted_.cx || area.cy != fitted_.cy; };
  for (SIZE area = dialog_.Area(); form_.IsOpen() && isOther(area); area = dialog_.Area()) {
    fitted_ = area;
    const Density& units = dialog_.Units();
    form_.Form_Resize(units.ToTwips(area), units.Pixel());
  }
}

}  // namespace velkor
