// platform/windows/dialogs/WindowsForms.cpp: the rows of a form as a dialog.
#include "platform/windows/dialogs/WindowsForms.h"

#include "platform/windows/dialogs/WindowsDialog.h"
#include "platform/windows/dialogs/WindowsFormRows.h"
#include "platform/windows/dialogs/WindowsFormWindow.h"
#include "platform/windows/system/DialogOwner.h"

namespace velkor {
namespace {

void ShowRows(Form& form, HWND owner) {
  WindowsDialog dialog(owner, form.Title(), WS_THICKFRAME);
  WindowsFormRows rows(form, dialog.Window());
  dialog.onClose = [&] { form.Unload(); };
  dialog.onMessage = [&](UINT message, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
    if (message == WM_SIZE && wParam != SIZE_MINIMIZED) rows.Arrange(dialog.Area());
    if (message != WM_COMMAND || LOWORD(wParam) != IDOK) return std::nullopt;
    if (CommandButton* const button = rows.DefaultButton()) button->Click();
    return 0;
  };
  dialog.Place(rows.WantedArea(), rows.LeastArea());
  rows.Arrange(dialog.Area());
  form.onUnload = [&] { dialog.Close(); };
  form.Open();
  dialog.Run([&] {
    if (Element* const first = rows.First()) first->SetFocus();
  });
  form.onUnload = nullptr;
}

}  // namespace

void WindowsForms::ShowModal(Form& form) {
  const ModalScope modal(owner_);
  if (form.Placed().empty()) {
    ShowRows(form, modal.Window());
  } else {
    WindowsFormWindow(form, modal.Window()).ShowModal();
  }
  if (form.IsOpen()) form.Unload();
}

}  // namespace velkor
