// platform/windows/dialogs/EmptyDialog.cpp: the template in memory.
#include "platform/windows/dialogs/EmptyDialog.h"

#include "platform/windows/system/Modules.h"

namespace velkor {

EmptyDialog::EmptyDialog(DWORD style) {
  template_.header.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | style;
}

INT_PTR EmptyDialog::ShowModal(HWND owner, DLGPROC procedure, LPARAM parameter) const {
  return ::DialogBoxIndirectParamW(ThisModule(), &template_.header, owner, procedure, parameter);
}

HWND EmptyDialog::Open(HWND owner, DLGPROC procedure, LPARAM parameter) const {
  return ::CreateDialogIndirectParamW(ThisModule(), &template_.header, owner, procedure, parameter);
}

}  // namespace velkor
