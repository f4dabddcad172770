// platform/desktop/QtPeers.h: widgets that mirror the elements of a control or form.
#pragma once

#include <QWidget>
#include <memory>

#include "platform/InputElements.h"

namespace velkor {

/// Who decides where a widget stands: its element's bounds, or the layout of a dialog.
enum class Placement { Bounds, Layout };

/// Whole pixels of an element's bounds, TwipsPerPixel to each.
QRect ToQtPixels(const Rect& bounds);

/// Plain text as a tool tip that wraps its lines and shows no markup; empty stays empty.
QString ToolTipText(std::string_view text);

/// Shows plain text as a widget's tool tip.
/// @param description  what screen readers get, as it is; empty: the tool tip's text
void SetToolTip(QWidget& widget, std::string_view text, std::string_view description = {});

/// Reads into the widget what all elements have.
void MirrorShared(QWidget& widget, const Element& element, Placement placement);

/// A widget attached to its element from here to its end. The element outlives it.
template <typename Widget, typename ElementType>
class QtPeer : public Widget, public ElementPeer {
 public:
  QtPeer(ElementType& element, QWidget* parent, Placement placement)
      : Widget(parent), element_(element), placement_(placement) {
    this->setObjectName(QString::fromStdString(element.Name()));
    element_.Attach(this);
  }
  ~QtPeer() override { element_.Attach(nullptr); }
  QtPeer(const QtPeer&) = delete;
  QtPeer& operator=(const QtPeer&) = delete;

  void Changed() override {
    MirrorShared(*this, element_, placement_);
    Mirror();
  }
  void SetFocus() override { this->setFocus(Qt::OtherFocusReason); }

 protected:
  /// Reads what only this kind of element has.
  virtual void Mirror() {}
  ElementType& Mirrored() const { return element_; }

 private:
  ElementType& element_;
  Placement placement_;
};

/// Each makes the widget of one element, a child of `parent` that is named as its element. The
/// element outlives the widget.
QWidget* MakePeer(Label& label, QWidget* parent, Placement placement = Placement::Bounds);
QWidget* MakePeer(CommandButton& button, QWidget* parent, Placement placement = Placement::Bounds);
QWidget* MakePeer(Image& image, QWidget* parent, Placement placement = Placement::Bounds);
QWidget* MakePeer(PictureBox& picture, QWidget* parent, Placement placement = Placement::Bounds);
QWidget* MakePeer(ScrollBar& scrollBar, QWidget* parent, Placement placement = Placement::Bounds);
QWidget* MakePeer(Toolbar& toolbar, QWidget* parent, Placement placement = Placement::Bounds);
/// A masked box takes only what fits its mask.
QWidget* MakePeer(TextBox& box, QWidget* parent, Placement placement = Placement::Bounds);
QWidget* MakePeer(CheckBox& box, QWidget* parent, Placement placement = Placement::Bounds);
QWidget* MakePeer(OptionButton& button, QWidget* parent, Placement placement = Placement::Bounds);
QWidget* MakePeer(ComboBox& box, QWidget* parent, Placement placement = Placement::Bounds);
QWidget* MakePeer(CheckListBox& list, QWidget* parent, Placement placement = Placement::Bounds);

/// These have no place of their own. `control` is the widget whose points a menu pops up at.
std::unique_ptr<ElementPeer> MakePeer(Menu& menu, QWidget* control);
std::unique_ptr<ElementPeer> MakePeer(Timer& timer);

}  // namespace velkor
