// platform/windows/dialogs/EmptyDialog.h: dialogs of our own, filled by code when they open.
#pragma once

#include "platform/windows/system/Win32.h"

namespace velkor {

/// A dialog template in memory: a frame with a title bar and a close button, no items, no size. It
/// lives as long as the dialogs made of it. Their sizes follow no template, so each says so when it
/// opens (KeepDialogUnscaled).
class EmptyDialog {
 public:
  /// @param style  beside that of every dialog
  explicit EmptyDialog(DWORD style = DS_MODALFRAME);

  /// Opens it over `owner`, which is disabled meanwhile, and waits for its end. The system posts a
  /// WM_QUIT that arrives meanwhile again (DialogBox).
  /// @param procedure  gets `parameter` with WM_INITDIALOG
  /// @return what EndDialog was given; 0 or below when it ended otherwise or never opened
  INT_PTR ShowModal(HWND owner, DLGPROC procedure, LPARAM parameter) const;
  /// Opens it, hidden.
  /// @return null when it could not be made
  HWND Open(HWND owner, DLGPROC procedure, LPARAM parameter) const;

 private:
  struct alignas(DWORD) Template {
    DLGTEMPLATE header;
    WORD menu;
    WORD windowClass;
    WORD title;
  };

  Template template_{};
};

}  // namespace velkor
