// platform/windows/elements/PressablePeer.h: a window that is drawn here and may be pressed.
#pragma once

#include "platform/windows/elements/WindowsPeer.h"

namespace velkor {

/// The window of an element that can be pressed, by the keyboard too, when its onClick is set.
class PressablePeer : public WindowsPeer {
 protected:
  PressablePeer(ClickableElement& element, HWND parent, Placement placement,
                const wchar_t* windowClass, DWORD style);

  bool IsPressable() const { return static_cast<bool>(clickable_.onClick); }
  /// Draws all of the window; its font is selected, the background is there.
  virtual void Draw(HDC dc, const RECT& area) = 0;
  /// Background, drawing and, while it has the keyboard, the frame that says so.
  void DrawAll(HDC dc);
  void Mirror() override;
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void Release(LPARAM position);

  ClickableElement& clickable_;
  bool pressed_ = false;
};

}  // namespace velkor
