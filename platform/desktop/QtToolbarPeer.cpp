// platform/desktop/QtToolbarPeer.cpp: toolbars as a row of flat buttons.
#include <QEvent>
#include <QHBoxLayout>
#include <QToolButton>
#include <algorithm>
#include <vector>

#include "platform/desktop/QtIcons.h"
#include "platform/desktop/QtPeers.h"
#include "platform/desktop/QtText.h"
#include "support/ToolbarIcons.h"

namespace velkor {
namespace {

/// In pixels.
constexpr int LargestSide = static_cast<int>(ToolbarButtonSide / TwipsPerPixel);
constexpr int IconMargin = static_cast<int>(ToolbarImageMargin / TwipsPerPixel);

/// "PrintSetup" as "Print setup".
QString InWords(const std::string& key) {
  QString words;
  for (const QChar c : ToQt(key)) {
    const bool begins = c.isUpper() && !words.isEmpty();
    if (begins) words += u' ';
    words += begins ? c.toLower() : c;
  }
  return words;
}

class ToolbarPeer : public QtPeer<QWidget, Toolbar> {
 public:
  ToolbarPeer(Toolbar& toolbar, QWidget* parent, Placement placement)
      : QtPeer(toolbar, parent, placement) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    for (const ToolbarButton& button : toolbar.Buttons()) row->addWidget(MakeButton(button.key));
    row->addStretch();
    Changed();
  }

 protected:
  void changeEvent(QEvent* event) override {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) return;
    for (NativeButton& native : buttons_) ShowImage(native, native.image);
  }
  void Mirror() override {
    const int side = std::clamp(height(), 2 * IconMargin, LargestSide);
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
      const ToolbarButton& button = Mirrored().Buttons()[i];
      QToolButton& native = *buttons_[i].widget;
      if (buttons_[i].image != button.image) ShowImage(buttons_[i], button.image);
      native.setFixedSize(side, side);
      native.setIconSize(QSize(side - 2 * IconMargin, side - 2 * IconMargin));
      native.setEnabled(button.enabled);
      native.setCheckable(button.checked);
      native.setChecked(button.checked);
      SetToolTip(native, button.toolTip);
      native.setAccessibleName(button.toolTip.empty() ? InWords(button.key) : ToQt(button.toolTip));
    }
  }

 private:
  struct NativeButton {
    QToolButton* widget = nullptr;
    int image = 0;
  };

  void ShowImage(NativeButton& native, int image) {
    native.image = image;
    native.widget->setIcon(IconFor(image, palette()));
  }
  QToolButton* MakeButton(const std::string& key) {
    auto* const button = new QToolButton(this);
    button->setObjectName(QString::fromStdString(key));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, [this, key] {
      Mirrored().ClickButton(key);
      // Whether it stays pressed is the element's to say.
      Mirror();
    });
    buttons_.push_back({button});
    return button;
  }

  std::vector<NativeButton> buttons_;
};

}  // namespace

QWidget* MakePeer(Toolbar& toolbar, QWidget* parent, Placement placement) {
  return new ToolbarPeer(toolbar, parent, placement);
}

}  // namespace velkor
