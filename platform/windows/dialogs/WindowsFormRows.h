// platform/windows/dialogs/WindowsFormRows.h: the rows of a form as windows, and where they stand.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Forms.h"
#include "platform/windows/elements/WindowsPeer.h"

namespace velkor {

/// Makes the windows of a form's rows and lays them out in an area of any size: labels that keep
/// their width and begin a row are as wide as each other, a row with a check list takes the height
/// that is left over, the Buttons rows stand at the bottom right. The form and the dialog's window
/// outlive it.
class WindowsFormRows {
 public:
  /// Throws Error for an element that no window mirrors.
  WindowsFormRows(const Form& form, HWND dialog);

  /// The area in which everything is seen whole.
  SIZE WantedArea() const;
  /// The area below which something would be cut off.
  SIZE LeastArea() const;
  /// @param corner  where the area begins in the dialog
  void Arrange(SIZE area, POINT corner);
  /// The dialog has another density or font.
  void TakeDensity(Density density);

  /// The element that has the keyboard first: an input, of a choice the chosen one, else the first
  /// button; null without any.
  Element* First() const;
  /// What Enter presses; null without Buttons rows.
  CommandButton* DefaultButton() const { return default_; }

 private:
  struct Cell {
    Element* element = nullptr;
    WindowsPeer* peer = nullptr;
    int share = 0;
    /// In pixels, with all of its text in one line.
    int width = 0;
    /// What it can do with at the least.
    int leastWidth = 0;
    bool takesHeight = false;
  };
  struct Row {
    FormRowKind kind = FormRowKind::Plain;
    std::vector<Cell> cells;
  };
  /// Rows that stand in one frame, or in none.
  struct Block {
    std::string group;
    HWND frame = nullptr;
    std::vector<Row> rows;
  };
  struct Box {
    int left = 0;
    int top = 0;
    int width = 0;
  };

  void AddRow(const FormRow& row);
  void EnterGroup(const std::string& group);
  Cell MakeCell(const FormRow& row, const FormCell& described);
  void TakeFont(HWND window) const;
  void Measure();
  void MeasureCell(const Row& row, Cell& cell);
  void MakeHeading(HWND window);
  void AlignLabels();
  void GroupKeys();

  Box Inside(const Block& block, Box box) const;
  int FrameHeight(const Block& block) const;
  int LeastRowWidth(const Row& row) const;
  std::vector<int> Widths(const Row& row, int room) const;
  int RowHeight(const Row& row, const std::vector<int>& widths) const;
  int GapAbove(const Row& row) const;
  static bool TakesHeight(const Row& row);
  int HeightAt(int width) const;
  int LeastWidth() const;
  int ArrangeRow(const Row& row, Box box, int extra) const;

  HWND dialog_;
  Density units_;
  /// What a text has at the least to break its lines in, in pixels.
  int textWidth_ = 0;
  FontHandle headingFont_;
  std::vector<std::unique_ptr<WindowsPeer>> peers_;
  std::vector<Block> blocks_;
  CommandButton* default_ = nullptr;
};

}  // namespace velkor
