// platform/windows/dialogs/WindowsDialog.h: a dialog window that is filled by its owner, and its
// loop.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/windows/dialogs/EmptyDialog.h"
#include "platform/windows/drawing/Density.h"

namespace velkor {

/// A window of the system's dialog class, made hidden and without content. It hands on what its
/// children tell it (see ReflectMessage). Children are made with its font. When its owner goes it
/// goes too, and the loop ends.
class WindowsDialog {
 public:
  /// @param owner  window that it stands before; null for none
  WindowsDialog(HWND owner, const std::string& title, DWORD style);
  ~WindowsDialog();
  WindowsDialog(const WindowsDialog&) = delete;
  WindowsDialog& operator=(const WindowsDialog&) = delete;

  /// Null once it is gone.
  HWND Window() const { return window_; }

  /// A message that is not for a child; none leaves it to the system.
  std::function<std::optional<LRESULT>(UINT message, WPARAM wParam, LPARAM lParam)> onMessage;
  /// Its density or its font is another one, and in force: what it holds has to be sized anew.
  std::function<void()> onDensity;
  /// The user wants the window closed, by its frame or by Escape.
  std::function<void()> onClose;
  /// The keyboard went to a window in the dialog.
  std::function<void(HWND item)> onFocus;
  /// Whether a key is for moving about in a dialog; unset: every key is.
  std::function<bool(const MSG& message)> isDialogKey;

  /// Makes the window's area this large, or as large as the screen allows, in front of the middle
  /// of its owner. The user can make it no smaller than `least`.
  void Place(SIZE area, SIZE least);
  /// The same without moving it.
  void SetLeast(SIZE least);
  SIZE Area() const;
  const Density& Units() const { return density_; }

  /// Shows it, with its owner disabled, until it is closed. A message that ends the program is left
  /// to the loops around this one.
  /// @param shown  called when it is on show and active
  void Run(const std::function<void()>& shown);
  /// Ends Run.
  void Close();

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam);
  void TakeFont();
  void TakeDensity(const RECT& place);
  SIZE Fitted(SIZE area) const;
  void Loop();
  void FollowFocus();
  void GiveBack(HWND focus);

  EmptyDialog kind_;
  Density density_;
  FontHandle font_;
  HWND owner_;
  HWND window_ = nullptr;
  SIZE least_{};
  HWND focus_ = nullptr;
  bool closed_ = false;
};

}  // namespace velkor
