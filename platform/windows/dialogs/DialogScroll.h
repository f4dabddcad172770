// platform/windows/dialogs/DialogScroll.h: the scroll bars of a dialog that the screen is too small
// for.
#pragma once

#include "platform/windows/drawing/Density.h"

namespace velkor {

/// Bars for what a dialog's area does not show; none while it shows all. The windows in the dialog
/// are moved with them.
class DialogScroll {
 public:
  explicit DialogScroll(HWND dialog) : dialog_(dialog) {}

  /// Sets the bars by the size of the content. The dialog's area has another size afterwards where
  /// bars come or go.
  /// @return where the content begins in the dialog; neither below nor right of its corner
  POINT Fit(SIZE content);
  /// Scrolls by a message of the bars or of the wheel.
  /// @return whether it was one
  bool Hear(UINT message, WPARAM wParam);
  /// Scrolls as far as it takes to show a window in the dialog.
  void Show(HWND item);

 private:
  int Position(int bar) const;
  void FitBar(int bar, int content, int area) const;
  int Wanted(int bar, WORD request) const;
  void MoveTo(int bar, int position);

  HWND dialog_;
};

}  // namespace velkor
