// platform/windows/dialogs/WindowsForms.cpp: the rows of a form as a dialog.
#include "platform/windows/dialogs/WindowsForms.h"

#include <algorithm>
#include <optional>

#include "platform/windows/dialogs/DialogScroll.h"
#include "platform/windows/dialogs/WindowsDialog.h"
#include "platform/windows/dialogs/WindowsFormRows.h"
#include "platform/windows/dialogs/WindowsFormWindow.h"
#include "platform/windows/system/DialogOwner.h"
#include "values/FlagScope.h"

namespace velkor {
namespace {

/// A form's rows in a dialog of their size; where the screen is smaller, they scroll.
class RowsDialog {
 public:
  RowsDialog(Form& form, HWND owner)
      : form_(form),
        dialog_(owner, form.Title(), WS_THICKFRAME),
        rows_(form, dialog_.Window()),
        scroll_(dialog_.Window()) {
    dialog_.onClose = [this] { form_.Unload(); };
    dialog_.onFocus = [this](HWND item) { scroll_.Show(item); };
    dialog_.onDensity = [this] { TakeDensity(); };
    dialog_.onMessage = [this](UINT message, WPARAM wParam, LPARAM) {
      return Hear(message, wParam);
    };
    dialog_.Place(rows_.WantedArea(), rows_.LeastArea());
    Arrange();
    form_.onUnload = [this] { dialog_.Close(); };
  }
  ~RowsDialog() { form_.onUnload = nullptr; }
  RowsDialog(const RowsDialog&) = delete;
  RowsDialog& operator=(const RowsDialog&) = delete;

  void ShowModal() {
    form_.Open();
    dialog_.Run([this] {
      if (Element* const first = rows_.First()) first->SetFocus();
    });
  }

 private:
  std::optional<LRESULT> Hear(UINT message, WPARAM wParam) {
    if (scroll_.Hear(message, wParam)) return 0;
    if (message == WM_SIZE && wParam != SIZE_MINIMIZED) Arrange();
    if (message != WM_COMMAND || LOWORD(wParam) != IDOK) return std::nullopt;
    if (CommandButton* const button = rows_.DefaultButton()) button->Click();
    return 0;
  }

  void TakeDensity() {
    rows_.TakeDensity(dialog_.Units());
    dialog_.SetLeast(rows_.LeastArea());
    Arrange();
  }

  /// Bars that come or go change the dialog's area.
  void Arrange() {
    if (arranging_) return;
    const FlagScope arranging(arranging_);
    const SIZE least = rows_.LeastArea();
    const POINT corner = scroll_.Fit(least);
    const SIZE area = dialog_.Area();
    rows_.Arrange({std::max(area.cx, least.cx), std::max(area.cy, least.cy)}, corner);
  }

  Form& form_;
  WindowsDialog dialog_;
  WindowsFormRows rows_;
  DialogScroll scroll_;
  bool arranging_ = false;
};

}  // namespace

void WindowsForms::ShowModal(Form& form) {
  const ModalScope modal(owner_);
  if (form.Placed().empty()) {
    RowsDialog(form, modal.Window()).ShowModal();
  } else {
    WindowsFormWindow(form, modal.Window()).ShowModal();
  }
  if (form.IsOpen()) form.Unload();
}

}  // namespace velkor
