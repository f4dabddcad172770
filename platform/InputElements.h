// platform/InputElements.h: the elements of a form or control that take the user's input.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Elements.h"

namespace velkor {

/// Character codes of the keys that a text box hears beside characters.
namespace key_codes {
inline constexpr int Enter = 13;
inline constexpr int Escape = 27;
}  // namespace key_codes

/// One line of text.
class TextBox : public Element {
 public:
  using Element::Element;
  const std::string& Text() const { return text_; }
  /// Both for the owner and for the user; onChange follows when it is another text.
  void SetText(std::string_view text) {
    if (text_ == text) return;
    Element::SetText(text_, text);
    if (onChange) onChange();
  }
  std::function<void()> onChange;
  /// A character was typed, key_codes included; false keeps it from the text. Enter and Escape that
  /// are not kept go on to the form.
  std::function<bool(int code)> onKeyPress;
  std::function<void()> onLostFocus;

 private:
  std::string text_;
};

/// A text box that takes what fits its mask: each '9' is a digit or left out, every other character
/// stands for itself. What its owner sets is taken as it is.
class MaskedBox : public TextBox {
 public:
  MaskedBox(std::string name, std::string mask)
      : TextBox(std::move(name)), mask_(std::move(mask)) {}
  const std::string& Mask() const { return mask_; }

 private:
  std::string mask_;
};

class CheckBox : public CaptionedElement {
 public:
  using CaptionedElement::CaptionedElement;
  bool Checked() const { return checked_; }
  void SetChecked(bool checked) { Set(checked_, checked); }
  /// What the user does: the other state, then onClick. A disabled box does nothing.
  void Toggle() {
    if (!Enabled()) return;
    SetChecked(!checked_);
    Click();
  }

 private:
  bool checked_ = false;
};

/// One of several choices.
class OptionButton : public CaptionedElement {
 public:
  using CaptionedElement::CaptionedElement;
  /// All buttons of one choice, this one among them; only one of them is chosen. They live as long
  /// as each other.
  std::vector<OptionButton*> group;

  bool Chosen() const { return chosen_; }
  void SetChosen() {
    for (OptionButton* button : group) {
      if (button != this) button->Set(button->chosen_, false);
    }
    Set(chosen_, true);
  }
  /// What the user does. A disabled button does nothing.
  void Choose() {
    if (!Enabled()) return;
    SetChosen();
    Click();
  }

 private:
  bool chosen_ = false;
};

/// A list of texts of which one may be selected.
class ComboBox : public Element {
 public:
  using Element::Element;
  static constexpr int None = -1;

  const std::vector<std::string>& Items() const { return items_; }
  /// Replaces all entries; none is selected then.
  void SetItems(std::vector<std::string> items) {
    items_ = std::move(items);
    index_ = None;
    Notify();
  }
  /// Counted from 0; None without a selection.
  int Index() const { return index_; }
  /// An index that no entry has selects none.
  void SetIndex(int index) {
    Set(index_, index >= 0 && index < static_cast<int>(items_.size()) ? index : int{None});
  }
  /// What the user does: selects an entry, then onClick. A disabled box does nothing.
  void Choose(int index) {
    if (!Enabled()) return;
    SetIndex(index);
    if (onClick) onClick();
  }
  std::function<void()> onClick;

 private:
  std::vector<std::string> items_;
  int index_ = None;
};

/// A list whose entries each have a check box.
class CheckListBox : public Element {
 public:
  using Element::Element;
  struct Item {
    std::string text;
    bool checked = false;

    friend bool operator==(const Item&, const Item&) = default;
  };

  const std::vector<Item>& Items() const { return items_; }
  /// Replaces all entries.
  void SetItems(std::vector<Item> items) {
    if (items_ == items) return;
    items_ = std::move(items);
    Notify();
  }
  /// What the user does to an entry, counted from 0: it gets the other state, then onItemCheck
  /// hears of it. Nothing happens where there is no such entry or the list is disabled.
  void ToggleItem(std::size_t index) {
    if (!Enabled() || index >= items_.size()) return;
    items_[index].checked = !items_[index].checked;
    Notify();
    if (onItemCheck) onItemCheck(index);
  }
  std::function<void(std::size_t index)> onItemCheck;

 private:
  std::vector<Item> items_;
};

}  // namespace velkor
