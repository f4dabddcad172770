// platform/windows/elements/FittedFont.h: the font of a text that has to fit a place of its own.
#pragma once

#include <string>

#include "platform/windows/drawing/GdiHandles.h"

namespace velkor {

/// A font that one window has, as large as the window's text allows. Lives as long as the window.
class FittedFont {
 public:
  /// Gives the window a font, or the largest one below it in which a line of the text fits.
  /// @param room  in pixels; a window that has none yet takes the font as it is
  void Give(HWND window, const LOGFONTW& wanted, const std::wstring& text, SIZE room);
  /// Has the next call give the font whatever was given before.
  void Forget() { room_ = {}; }

 private:
  void Use(HWND window, const LOGFONTW& font);

  FontHandle font_;
  /// What the font was made for.
  std::wstring text_;
  SIZE room_{};
};

}  // namespace velkor
