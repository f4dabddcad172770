// platform/Elements.h: says what a control or form consists of, whatever shows it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "values/Colour.h"
#include "values/Twips.h"

namespace velkor {

class Surface;

/// The native window of an element, where there is one. It mirrors the element and turns what the
/// user does into the element's own calls; it decides nothing.
class ElementPeer {
 public:
  virtual ~ElementPeer() = default;
  /// Something of the element has another value: read it again.
  virtual void Changed() = 0;
  /// A part of a picture has to be painted again, in the element's coordinates.
  virtual void Invalidate(const Rect& /*part*/) {}
  /// Shows a menu at a point of the control.
  virtual void PopUp(Point /*position*/) {}
  /// Takes the keyboard to the element.
  virtual void SetFocus() {}
};

/// What all elements share. An element stays where it is for as long as a peer is attached.
class Element {
 public:
  explicit Element(std::string name) : name_(std::move(name)) {}
  virtual ~Element() = default;
  Element(const Element&) = delete;
  Element& operator=(const Element&) = delete;

  const std::string& Name() const { return name_; }

  /// In the coordinates of what holds the element: the control, the form, or a picture (see
  /// PlacedElement).
  const Rect& Bounds() const { return bounds_; }
  void SetBounds(const Rect& bounds) { Set(bounds_, bounds); }
  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { Set(visible_, visible); }
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Set(enabled_, enabled); }
  const std::string& ToolTip() const { return toolTip_; }
  void SetToolTip(std::string_view text) { SetText(toolTip_, text); }
  /// Its name for people, which a screen reader says; empty where its text is its name. Set before
  /// there is a peer.
  const std::string& AccessibleName() const { return accessibleName_; }
  void SetAccessibleName(std::string_view name) { accessibleName_ = name; }
  /// What a screen reader says about it beside its name.
  const std::string& Description() const { return description_; }
  void SetDescription(std::string_view text) { SetText(description_, text); }

  /// Has the keyboard from now on.
  void SetFocus() {
    if (peer_) peer_->SetFocus();
  }

  /// The peer outlives its attachment; null detaches it.
  void Attach(ElementPeer* peer) { peer_ = peer; }
  /// Null when there is none.
  ElementPeer* Peer() const { return peer_; }

 protected:
  template <typename Value>
  void Set(Value& field, const Value& value) {
    if (field == value) return;
    field = value;
    Notify();
  }
  /// Keeps the memory of the text that it replaces.
  void SetText(std::string& field, std::string_view text) {
    if (field == text) return;
    field.assign(text);
    Notify();
  }
  void Notify() {
    if (peer_) peer_->Changed();
  }

 private:
  std::string name_;
  Rect bounds_;
  bool visible_ = true;
  bool enabled_ = true;
  std::string toolTip_;
  std::string accessibleName_;
  std::string description_;
  ElementPeer* peer_ = nullptr;
};

/// An element that stands where its bounds say.
struct PlacedElement {
  Element* element = nullptr;
  /// A picture, placed before it, that its bounds count from and that clips it; null for the form
  /// or control itself.
  Element* holder = nullptr;
};

/// An element that can be pressed.
class ClickableElement : public Element {
 public:
  using Element::Element;
  std::function<void()> onClick;
  /// A disabled element does nothing.
  void Click() {
    if (Enabled() && onClick) onClick();
  }
};

class CaptionedElement : public ClickableElement {
 public:
  using ClickableElement::ClickableElement;
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view caption) { SetText(caption_, caption); }

 private:
  std::string caption_;
};

/// How a text is written.
struct TextStyle {
  double points = 0;
  bool bold = false;
};

/// A text; onClick is set for one that can be pressed.
class Label : public CaptionedElement {
 public:
  using CaptionedElement::CaptionedElement;
  /// How its text is written; none: as the face writes its texts. Set before there is a peer.
  std::optional<TextStyle> style;
};

class CommandButton : public CaptionedElement {
 public:
  using CaptionedElement::CaptionedElement;
  /// The capital letter that presses it together with Alt, where the program around it passes keys
  /// on; 0 for none.
  char accessKey = 0;
};

/// A picture of a fixed kind: a filled mark or a logo.
class Image : public ClickableElement {
 public:
  using ClickableElement::ClickableElement;
  Colour FillColour() const { return fill_; }
  void SetFillColour(Colour colour) { Set(fill_, colour); }

 private:
  Colour fill_ = colours::White;
};

enum class MouseButton { Left, Right };

/// Keys that a picture hears.
enum class Key { Left, Right, Up, Down, Home, End, PageUp, PageDown, Enter, Space, Delete, Menu };

/// A surface that its owner paints and that hears the pointer; positions count from its top left
/// corner, in twips.
class PictureBox : public Element {
 public:
  using Element::Element;
  /// Draws the part `visible`, both in the picture's coordinates.
  std::function<void(Surface&, const Rect& visible)> onPaint;
  std::function<void(Point)> onMouseMove;
  std::function<void(MouseButton, Point)> onMouseDown;
  std::function<void(MouseButton, Point)> onMouseUp;
  /// The pointer left the picture.
  std::function<void()> onMouseLeave;
  /// Notches of the wheel, fractions included; above 0: away from the user.
  std::function<void(double notches)> onMouseWheel;
  /// A key went down; false when the picture has no use for it.
  std::function<bool(Key)> onKeyDown;
  /// What to show about the place under the pointer; asked when a tool tip is due.
  std::function<std::string()> onToolTip;

  /// Has all of it, or a part, painted again soon.
  void Refresh() { RefreshPart({0, 0, Bounds().Width(), Bounds().Height()}); }
  void RefreshPart(const Rect& part) {
    if (Peer()) Peer()->Invalidate(part);
  }
};

/// A button of a toolbar, known by its key.
struct ToolbarButton {
  std::string key;
  std::string toolTip;
  bool enabled = true;
  /// Pressed in, as a button whose command is in force.
  bool checked = false;
  /// Its picture in the toolbar's image list, counted from 1 (see toolbar_images).
  int image = 0;
  /// Can be pressed only while the toolbar has something to work on (see SetLive).
  bool liveOnly = false;
};

/// The pictures of the toolbar's image list.
namespace toolbar_images {
inline constexpr int Back = 1;
inline constexpr int Next = 2;
inline constexpr int Print = 3;
inline constexpr int Filter = 4;
/// A filter in force.
inline constexpr int ActiveFilter = 5;
inline constexpr int Open = 6;
inline constexpr int Save = 7;
inline constexpr int PrintSetup = 8;
inline constexpr int PageSetup = 9;
inline constexpr int Zoom = 10;
/// The greatest of them.
inline constexpr int Last = Zoom;
}  // namespace toolbar_images

class Toolbar : public Element {
 public:
  Toolbar(std::string name, std::vector<ToolbarButton> buttons)
      : Element(std::move(name)), buttons_(std::move(buttons)) {}

  const std::vector<ToolbarButton>& Buttons() const { return buttons_; }
  /// The button with this key; null when there is none.
  const ToolbarButton* Button(std::string_view key) const {
    for (const ToolbarButton& button : buttons_) {
      if (button.key == key) return &button;
    }
    return nullptr;
  }
  void SetButtonToolTip(std::string_view key, std::string_view text) {
    for (ToolbarButton& button : buttons_) {
      if (button.key == key) SetText(button.toolTip, text);
    }
  }
  void SetButtonEnabled(std::string_view key, bool enabled) {
    for (ToolbarButton& button : buttons_) {
      if (button.key == key) Set(button.enabled, enabled);
    }
  }
  void SetLive(bool live) {
    for (ToolbarButton& button : buttons_) {
      if (button.liveOnly) Set(button.enabled, live);
    }
  }
  void SetButtonImage(std::string_view key, int image) {
    for (ToolbarButton& button : buttons_) {
      if (button.key == key) Set(button.image, image);
    }
  }
  void SetButtonChecked(std::string_view key, bool checked) {
    for (ToolbarButton& button : buttons_) {
      if (button.key == key) Set(button.checked, checked);
    }
  }
  std::function<void(std::string_view key)> onButtonClick;
  /// A disabled button does nothing.
  void ClickButton(std::string_view key) {
    const ToolbarButton* button = Button(key);
    if (Enabled() && button && button->enabled && onButtonClick) onButtonClick(key);
  }

 private:
  std::vector<ToolbarButton> buttons_;
};

/// An entry of a menu; with `entries` it opens a menu of its own. An empty caption is a separator.
class MenuItem : public ClickableElement {
 public:
  MenuItem(std::string name, std::string caption, int index = 0)
      : ClickableElement(std::move(name)), caption_(std::move(caption)), index_(index) {}

  const std::string& Caption() const { return caption_; }
  /// Tells apart entries that share one name.
  int Index() const { return index_; }
  bool Checked() const { return checked_; }
  void SetChecked(bool checked) { Set(checked_, checked); }
  std::vector<MenuItem*> entries;

 private:
  std::string caption_;
  int index_;
  bool checked_ = false;
};

/// A menu that pops up at a point; its entries live beside it.
class Menu : public Element {
 public:
  using Element::Element;
  std::vector<MenuItem*> entries;
  /// Shows it at a point of the control.
  void PopUp(Point position) {
    if (Peer()) Peer()->PopUp(position);
  }
};

/// Ticks every `Interval` milliseconds while it is enabled. Without a peer it never ticks by
/// itself.
class Timer : public Element {
 public:
  Timer(std::string name, int interval) : Element(std::move(name)), interval_(interval) {
    SetEnabled(false);
  }

  int Interval() const { return interval_; }
  std::function<void()> onTimer;
  void Tick() {
    if (Enabled() && onTimer) onTimer();
  }

 private:
  int interval_;
};

/// Values from 0 to Max, in steps.
class ScrollBar : public Element {
 public:
  using Element::Element;
  int Max() const { return max_; }
  int Value() const { return value_; }
  int SmallChange() const { return smallChange_; }
  int LargeChange() const { return largeChange_; }
  void SetRange(int max, int smallChange, int largeChange) {
    max_ = max < 0 ? 0 : max;
    smallChange_ = smallChange;
    largeChange_ = largeChange;
    if (value_ > max_) {
      SetValue(max_);
    } else {
      Notify();
    }
  }
  /// Kept within the range; onChange follows when it is another value.
  void SetValue(int value) {
    const int kept = value < 0 ? 0 : (value > max_ ? max_ : value);
    if (kept == value_) return;
    value_ = kept;
    Notify();
    if (onChange) onChange();
  }
  std::function<void()> onChange;

 private:
  int max_ = 0;
  int value_ = 0;
  int smallChange_ = 1;
  int largeChange_ = 1;
};

}  // namespace velkor
