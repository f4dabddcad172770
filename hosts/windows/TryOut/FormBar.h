// hosts/windows/TryOut/FormBar.h: the fields and buttons above the control.
#pragma once

#include <string>
#include <vector>

#include "platform/windows/drawing/Density.h"

struct IDispatch;

namespace velkor {

/// Commands of the buttons, as the form's window gets them.
namespace form_commands {
inline constexpr int Apply = IDOK;
inline constexpr int Save = 101;
inline constexpr int Restore = 102;
}  // namespace form_commands

class BarLines;

/// One field for each property of the control, children of the form's window.
class FormBar {
 public:
  explicit FormBar(HWND form);
  FormBar(const FormBar&) = delete;
  FormBar& operator=(const FormBar&) = delete;

  /// Shows its texts in a font, at the form's density.
  void TakeFont(HFONT font, Density units);
  /// Lays the fields out over a width in pixels, in as many rows as it takes.
  /// @return the bar's height
  int Arrange(int width);

  /// Shows what the control's properties are.
  void Show(IDispatch& control) const;
  /// Gives the control the properties whose fields differ from what they are. Throws Error with the
  /// control's own text.
  void Apply(IDispatch& control) const;
  /// Fields and buttons only make sense with a control.
  void Enable(bool enabled) const;

 private:
  struct Field {
    const char* property;
    HWND label = nullptr;
    HWND window = nullptr;
  };
  HWND Make(const wchar_t* windowClass, const wchar_t* text, DWORD style, int id,
            DWORD extendedStyle = 0) const;
  int WidthOf(HWND window) const;
  void PlaceTexts(BarLines& lines) const;

  HWND form_;
  Density units_;
  std::vector<Field> texts_;
  std::vector<Field> truths_;
  std::vector<HWND> buttons_;
};

}  // namespace velkor
