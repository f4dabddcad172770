// hosts/windows/OutlookVelkor/PageWindow.h: a form's rows as a window within a dialog of others.
#pragma once

#include <functional>
#include <memory>

#include "platform/windows/dialogs/WindowsFormRows.h"

namespace velkor {

/// Hidden until Show. The form outlives it; the window may be gone before it, with the dialog.
class PageWindow {
 public:
  /// @param parent  whose font it takes; null for a window that is only measured
  PageWindow(const Form& form, HWND parent);
  ~PageWindow();
  PageWindow(const PageWindow&) = delete;
  PageWindow& operator=(const PageWindow&) = delete;

  /// Null once it is gone.
  HWND Window() const { return window_; }
  /// The area in which everything is seen whole.
  SIZE WantedArea() const { return rows_->WantedArea(); }
  void Move(const RECT& place);
  void Show(bool visible);
  /// Has onTold called when no handler of an element is at work any more.
  void TellSoon();
  std::function<void()> onTold;
  /// Handles a key by the rules of dialogs, but for those that are the dialog's around it: Enter,
  /// Escape, and Tab past the first or the last field.
  bool TranslateKey(MSG& message) const;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR self);

  void LayOut(const RECT& place);
  void FitToDialog();

  RECT place_{};
  Density density_;
  FontHandle font_;
  HWND window_ = nullptr;
  std::unique_ptr<WindowsFormRows> rows_;
};

}  // namespace velkor
