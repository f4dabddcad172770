// platform/windows/dialogs/WindowsFormWindow.h: the window of a form that places its elements
// itself.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "platform/Forms.h"
#include "platform/windows/dialogs/WindowsDialog.h"
#include "platform/windows/elements/WindowsPeer.h"

namespace velkor {

/// A modal window that the user may enlarge. It opens as large as the form wants, yet no larger
/// than the screen. The first picture that hears keys has the keyboard; Escape unloads the form,
/// Enter does nothing. The form outlives it.
class WindowsFormWindow {
 public:
  /// Makes the elements' windows. Throws Error for an element that no window mirrors, and for one
  /// whose holder was not placed before it.
  /// @param owner  window that it stands before; null for none
  WindowsFormWindow(Form& form, HWND owner);
  ~WindowsFormWindow();
  WindowsFormWindow(const WindowsFormWindow&) = delete;
  WindowsFormWindow& operator=(const WindowsFormWindow&) = delete;

  /// Shows the form until it is unloaded or its window is gone.
  void ShowModal();

 private:
  void MakePeers();
  void OpenInSize(Extent wanted);
  SIZE Least() const;
  void TakeDensity();
  std::optional<LRESULT> Hear(UINT message, WPARAM wParam);
  void FitSoon();
  void Fit();

  Form& form_;
  WindowsDialog dialog_;
  std::vector<std::unique_ptr<WindowsPeer>> peers_;
  Element* keyboard_ = nullptr;
  /// As the form arranged itself last, in pixels.
  SIZE fitted_{};
  bool fitting_ = false;
  bool due_ = false;
};

}  // namespace velkor
