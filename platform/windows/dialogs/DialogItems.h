// platform/windows/dialogs/DialogItems.h: the items of a small dialog, and its size by them.
#pragma once

#include <string>
#include <vector>

#include "platform/windows/drawing/Density.h"

namespace velkor {

/// Items below one another in a dialog that is as large as they need at its density, in the font of
/// dialogs. Lives as long as the dialog.
class DialogItems {
 public:
  /// @param letters  how many letters of text an item of the dialog's whole width holds
  DialogItems(HWND dialog, int letters);

  /// Text that wraps, as high as it needs, at most half a screen; no character of it is special.
  void AddText(const std::wstring& text);
  /// An item of the whole width and a height of so many lines of text.
  /// @param lines  with the item's own frame
  void AddLine(const wchar_t* windowClass, DWORD style, DWORD extendedStyle, int id, double lines);
  struct Button {
    const wchar_t* text;
    int id;
  };
  /// The last row: buttons from left to right, at its right end. The first is what Enter presses.
  void AddButtons(const std::vector<Button>& buttons);

  /// Lays the items out and puts the dialog in the middle of its owner (see PutInMiddle).
  void Open(HWND owner);
  /// Answers what the system says of density and font: the items follow.
  /// @return whether the message was that
  bool Hear(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  struct Item {
    HWND window = nullptr;
    /// Of an item with a height of its own; 0 for one that is as high as its text.
    double lines = 0;
  };

  HWND Add(const wchar_t* windowClass, const std::wstring& text, DWORD style, DWORD extendedStyle,
           int id);
  /// Takes the font of dialogs at the density that the dialog has now.
  void TakeFont();
  /// @return the area that all of them take
  SIZE Arrange() const;
  void ArrangeButtons(int top, int width, int height) const;
  int HeightOf(const Item& item, int width) const;

  HWND dialog_;
  int letters_;
  Density density_;
  FontHandle font_;
  std::vector<Item> items_;
  std::vector<HWND> buttons_;
};

}  // namespace velkor
