// platform/windows/dialogs/EmptyDialog.h: dialogs of our own, filled by code when they open.
#pragma once

#include <initializer_list>
#include <string>

#include "platform/windows/drawing/GdiHandles.h"

namespace velkor {

/// A dialog template in memory: a frame with a title bar and a close button, no items, no size. It
/// lives as long as the dialogs made of it.
class EmptyDialog {
 public:
  /// @param style  beside that of every dialog
  explicit EmptyDialog(DWORD style = DS_MODALFRAME);

  /// Of the dialogs' items.
  HFONT Font() const { return font_.get(); }
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

  FontHandle font_;
  Template template_{};
};

/// Lays items below one another in a dialog and fits the dialog to them. Lengths are in twips and
/// become pixels of the screen (ScreenPixel).
class DialogFiller {
 public:
  static constexpr double Margin = 150;
  static constexpr double ButtonWidth = 1200;

  /// @param width  of an item that takes the dialog's whole width
  DialogFiller(HWND dialog, const EmptyDialog& kind, double width);

  /// Text that wraps, as high as it needs, at most half a screen; no character of it is special.
  void AddText(const std::wstring& text);
  /// An item of the whole width and a height of so many lines of text.
  /// @param lines  with the item's own frame
  HWND AddLine(const wchar_t* windowClass, DWORD style, DWORD extendedStyle, int id, double lines);
  struct Button {
    const wchar_t* text;
    int id;
  };
  /// The last row: buttons from left to right, at its right end. The first is what Enter presses.
  void AddButtons(std::initializer_list<Button> buttons);
  /// Gives the dialog its size (see PutInMiddle).
  void Fit(HWND owner);

 private:
  HWND Add(const wchar_t* windowClass, const std::wstring& text, DWORD style, DWORD extendedStyle,
           int id, RECT place);
  /// Height that a text takes, in pixels.
  int HeightOf(const std::wstring& text) const;

  HWND dialog_;
  HFONT font_;
  SIZE margin_;
  int width_;
  int top_;
  int lineHeight_;
};

}  // namespace velkor
