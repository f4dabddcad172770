// platform/Forms.h: forms as data, shown by a face until they are closed.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Elements.h"

namespace velkor {

/// One element of a form's row. `width` is its share of the room that a row has left over; 0 keeps
/// the element as wide as it needs to be.
struct FormCell {
  Element* element = nullptr;
  int width = 1;
};

/// How a row stands in its form.
enum class FormRowKind { Plain, Heading, Buttons };

struct FormRow {
  std::vector<FormCell> cells;
  FormRowKind kind = FormRowKind::Plain;
  /// Caption of the frame around this row and its neighbours of the same group; empty for none.
  std::string group = {};
};

/// A dialog: its elements are members of the class that derives from it. Either its layout is rows
/// from top to bottom, or it is a window that the user may enlarge, in which it places its elements
/// itself. A face shows it; the form closes itself.
class Form {
 public:
  Form(std::string name, std::string title) : name_(std::move(name)), title_(std::move(title)) {}
  virtual ~Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& Name() const { return name_; }
  const std::string& Title() const { return title_; }
  const std::vector<FormRow>& Rows() const { return rows_; }
  const std::vector<PlacedElement>& Placed() const { return placed_; }
  /// Size of the area of placed elements when the form is shown first.
  Extent OpeningSize() const { return openingSize_; }

  /// Places the elements. Called by the face when the form is on show, and whenever its area has
  /// another size; it may show other forms and messages, and unload this one.
  /// @param pixel  of the screen
  virtual void Form_Resize(Extent /*size*/, PixelSize /*pixel*/) {}

  /// Ends Forms::ShowModal. The user who closes the window or presses Escape does no more than
  /// this: what a form hands on is set by its own buttons.
  void Unload() {
    open_ = false;
    if (onUnload) onUnload();
  }
  /// Whether it is shown; the face that shows it opens it.
  bool IsOpen() const { return open_; }
  void Open() { open_ = true; }
  /// Set by the face that shows the form.
  std::function<void()> onUnload;

 protected:
  void AddRow(FormRow row) { rows_.push_back(std::move(row)); }
  void Place(std::vector<PlacedElement> elements, Extent openingSize) {
    placed_ = std::move(elements);
    openingSize_ = openingSize;
  }

 private:
  std::string name_;
  std::string title_;
  std::vector<FormRow> rows_;
  std::vector<PlacedElement> placed_;
  Extent openingSize_;
  bool open_ = false;
};

class Forms {
 public:
  virtual ~Forms() = default;
  /// Shows the form until it is unloaded or the user closes its window.
  virtual void ShowModal(Form& form) = 0;
};

}  // namespace velkor
