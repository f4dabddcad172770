// platform/desktop/QtInputPeers.cpp: text boxes, check boxes, option buttons, combo boxes and check
// lists.
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/InputElements.h"
#include "platform/desktop/QtPeers.h"
#include "platform/desktop/QtText.h"
#include "values/Font.h"

namespace velkor {
namespace {

/// What an element's onKeyPress hears of a key; none for a key that types nothing.
std::optional<int> CodeOf(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) return key_codes::Enter;
  if (event.key() == Qt::Key_Escape) return key_codes::Escape;
  // Both together are what some keyboards send for the third level of a key.
  const bool control = event.modifiers().testFlag(Qt::ControlModifier);
  const bool alt = event.modifiers().testFlag(Qt::AltModifier);
  const QList<uint> typed = event.text().toUcs4();
  if (control != alt || typed.isEmpty() || !QChar::isPrint(typed.front())) return std::nullopt;
  return static_cast<int>(typed.front());
}

/// At the 96 dots to an inch that twips are turned into pixels by.
constexpr double PixelsPerPoint = 96.0 / 72;

class TextBoxPeer : public QtPeer<QLineEdit, TextBox> {
 public:
  TextBoxPeer(TextBox& box, QWidget* parent, Placement placement)
      : QtPeer(box, parent, placement), placement_(placement) {
    setMaxLength(std::numeric_limits<int>::max());
    // In a control it may be as low as a line of text; a thin line is all the frame it has then.
    setFrame(placement == Placement::Layout);
    if (placement == Placement::Bounds) {
      // As large as the texts that are painted around it.
      QFont small = font();
      small.setPixelSize(static_cast<int>(std::lround(Font().size * PixelsPerPoint)));
      setFont(small);
    }
    connect(this, &QLineEdit::textChanged, this,
            [this](const QString& typed) { Mirrored().SetText(typed.toStdString()); });
    Changed();
  }

  void SetFocus() override {
    QtPeer::SetFocus();
    selectAll();
  }

 protected:
  void Mirror() override {
    const QString wanted = ToQt(Mirrored().Text());
    if (text() == wanted) return;
    const QSignalBlocker silent(this);
    const auto cursor = hasFocus() ? std::min<qsizetype>(cursorPosition(), wanted.size()) : 0;
    setText(wanted);
    setCursorPosition(static_cast<int>(cursor));
  }
  void keyPressEvent(QKeyEvent* event) override {
    const auto code = CodeOf(*event);
    if (code && Mirrored().onKeyPress && !Mirrored().onKeyPress(*code)) {
      event->accept();
      return;
    }
    Take(*event);
    // What holds the box in a control has keys of its own.
    if (placement_ == Placement::Bounds) event->accept();
  }
  void paintEvent(QPaintEvent* event) override {
    QLineEdit::paintEvent(event);
    if (hasFrame()) return;
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
  /// Has the key do its work.
  virtual void Take(QKeyEvent& event) { QLineEdit::keyPressEvent(&event); }

  /// The keyboard leaves the box when it goes to another element, not to a menu or another window;
  /// a box that was hidden or disabled is through with its text.
  void focusOutEvent(QFocusEvent* event) override {
    QLineEdit::focusOutEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason) return;
    const bool usable = Mirrored().Visible() && Mirrored().Enabled();
    if (usable && Mirrored().onLostFocus) Mirrored().onLostFocus();
  }

 private:
  Placement placement_;
};

/// "99/99/9999" as at most 2 digits, a stroke, at most 2 digits, a stroke, at most 4 digits.
QString PatternOf(const std::string& mask) {
  QString pattern;
  for (const QChar c : ToQt(mask)) {
    pattern += c == u'9' ? QStringLiteral("[0-9]?") : QRegularExpression::escape(QString(c));
  }
  return pattern;
}

class MaskedBoxPeer : public TextBoxPeer {
 public:
  MaskedBoxPeer(MaskedBox& box, QWidget* parent, Placement placement)
      : TextBoxPeer(box, parent, placement), mask_(ToQt(box.Mask())) {
    auto* const shape = new QRegularExpressionValidator(this);
    shape->setRegularExpression(QRegularExpression(PatternOf(box.Mask())));
    setValidator(shape);
  }

  QSize sizeHint() const override {
    constexpr int Air = 24;
    return {fontMetrics().horizontalAdvance(mask_) + Air, TextBoxPeer::sizeHint().height()};
  }

 protected:
  /// A digit that finds its group full goes to the next one.
  void Take(QKeyEvent& event) override {
    const QString typed = event.text();
    const bool atEnd = cursorPosition() == text().size() && !hasSelectedText();
    if (atEnd && typed.size() == 1 && typed[0].isDigit() && !Fits(text() + typed)) {
      const QString separator = SeparatorBefore(typed);
      if (!separator.isEmpty()) insert(separator);
    }
    TextBoxPeer::Take(event);
  }

 private:
  bool Fits(QString text) const {
    int position = 0;
    return validator()->validate(text, position) != QValidator::Invalid;
  }
  /// The character of the mask that makes room for a digit at the end; empty when none does.
  QString SeparatorBefore(const QString& digit) const {
    for (const QChar c : mask_) {
      if (c != u'9' && Fits(text() + c + digit)) return c;
    }
    return {};
  }

  QString mask_;
};

class CheckBoxPeer : public QtPeer<QCheckBox, CheckBox> {
 public:
  CheckBoxPeer(CheckBox& box, QWidget* parent, Placement placement)
      : QtPeer(box, parent, placement) {
    connect(this, &QCheckBox::clicked, this, [this] {
      Mirrored().Toggle();
      Mirror();
    });
    Changed();
  }

 protected:
  void Mirror() override {
    setText(ToQt(Mirrored().Caption()));
    setChecked(Mirrored().Checked());
  }
};

class OptionButtonPeer : public QtPeer<QRadioButton, OptionButton> {
 public:
  OptionButtonPeer(OptionButton& button, QWidget* parent, Placement placement)
      : QtPeer(button, parent, placement) {
    // Which of them exclude one another is the element's to say.
    setAutoExclusive(false);
    connect(this, &QRadioButton::clicked, this, [this] {
      Mirrored().Choose();
      Mirror();
    });
    Changed();
  }

 protected:
  void Mirror() override {
    setText(ToQt(Mirrored().Caption()));
    setChecked(Mirrored().Chosen());
  }
  void nextCheckState() override { setChecked(true); }
  void keyPressEvent(QKeyEvent* event) override {
    switch (event->key()) {
      case Qt::Key_Up:
      case Qt::Key_Left:
        ChooseNeighbour(-1);
        break;
      case Qt::Key_Down:
      case Qt::Key_Right:
        ChooseNeighbour(1);
        break;
      default:
        QRadioButton::keyPressEvent(event);
    }
  }

 private:
  /// The next button of the group that can be chosen, beyond its end the first.
  void ChooseNeighbour(int step) {
    const std::vector<OptionButton*>& group = Mirrored().group;
    const auto count = static_cast<int>(group.size());
    const auto self = std::find(group.begin(), group.end(), &Mirrored());
    if (self == group.end()) return;
    for (int i = 1; i < count; ++i) {
      const auto place = (static_cast<int>(self - group.begin()) + step * i + count * i) % count;
      OptionButton& next = *group[static_cast<std::size_t>(place)];
      if (!next.Enabled() || !next.Visible()) continue;
      next.SetFocus();
      next.Choose();
      return;
    }
  }
};

class ComboBoxPeer : public QtPeer<QComboBox, ComboBox> {
 public:
  ComboBoxPeer(ComboBox& box, QWidget* parent, Placement placement)
      : QtPeer(box, parent, placement) {
    connect(this, &QComboBox::activated, this, [this](int index) {
      Mirrored().Choose(index);
      Mirror();
    });
    Changed();
  }

 protected:
  void Mirror() override {
    const std::vector<std::string>& items = Mirrored().Items();
    if (shown_ != items) {
      clear();
      for (const std::string& item : items) addItem(ToQt(item));
      shown_ = items;
    }
    setCurrentIndex(Mirrored().Index());
  }

 private:
  std::vector<std::string> shown_;
};

/// Rows with some air; a press on an entry's text counts for its box.
class WholeRowDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    constexpr int Air = 4;
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, Air);
  }
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
    const bool pressed = event->type() == QEvent::MouseButtonRelease &&
                         static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton &&
                         index.flags().testFlag(Qt::ItemIsEnabled);
    if (!pressed) return QStyledItemDelegate::editorEvent(event, model, option, index);
    const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    return model->setData(index, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
  }
};

class CheckListBoxPeer : public QtPeer<QListWidget, CheckListBox> {
 public:
  CheckListBoxPeer(CheckListBox& list, QWidget* parent, Placement placement)
      : QtPeer(list, parent, placement) {
    setUniformItemSizes(true);
    setItemDelegate(new WholeRowDelegate(this));
    connect(this, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
      const auto row = static_cast<std::size_t>(this->row(item));
      const bool checked = item->checkState() == Qt::Checked;
      if (shown_[row].checked == checked) return;
      shown_[row].checked = checked;
      Mirrored().ToggleItem(row);
      // A disabled list toggles nothing.
      Mirror();
    });
    Changed();
  }

  QSize minimumSizeHint() const override {
    constexpr int LeastRows = 8;
    constexpr int LeastLetters = 30;
    return {fontMetrics().averageCharWidth() * LeastLetters,
            (fontMetrics().height() + 4) * LeastRows};
  }
  QSize sizeHint() const override { return minimumSizeHint() * 1.5; }

 protected:
  /// What stays the same is not touched, so that the list neither scrolls nor loses its row.
  void Mirror() override {
    const std::vector<CheckListBox::Item>& items = Mirrored().Items();
    if (shown_ == items) return;
    const QSignalBlocker silent(this);
    const std::string current = currentRow() < 0 ? std::string() : shown_[CurrentIndex()].text;
    const int scrolled = verticalScrollBar()->value();
    const std::size_t kept = std::min(shown_.size(), items.size());
    bool renamed = shown_.size() != items.size();
    for (std::size_t i = 0; i < kept; ++i) {
      if (shown_[i] == items[i]) continue;
      renamed = renamed || shown_[i].text != items[i].text;
      Show(*item(static_cast<int>(i)), items[i]);
    }
    if (shown_.size() > kept) {
      model()->removeRows(static_cast<int>(kept), static_cast<int>(shown_.size() - kept));
    }
    for (std::size_t i = kept; i < items.size(); ++i) {
      auto entry = std::make_unique<QListWidgetItem>();
      Show(*entry, items[i]);
      addItem(entry.release());
    }
    shown_ = items;
    if (renamed) FollowCurrent(current);
    verticalScrollBar()->setValue(scrolled);
  }

 private:
  static void Show(QListWidgetItem& entry, const CheckListBox::Item& item) {
    const QString text = ToQt(item.text);
    if (entry.text() != text) entry.setText(text);
    entry.setCheckState(item.checked ? Qt::Checked : Qt::Unchecked);
  }
  std::size_t CurrentIndex() const { return static_cast<std::size_t>(currentRow()); }
  /// The current row stays with its text where that is still offered.
  void FollowCurrent(const std::string& text) {
    if (text.empty()) return;
    const auto place = std::find_if(shown_.begin(), shown_.end(),
                                    [&](const auto& item) { return item.text == text; });
    if (place != shown_.end()) setCurrentRow(static_cast<int>(place - shown_.begin()));
  }

  std::vector<CheckListBox::Item> shown_;
};

}  // namespace

QWidget* MakePeer(TextBox& box, QWidget* parent, Placement placement) {
  if (auto* masked = dynamic_cast<MaskedBox*>(&box)) {
    return new MaskedBoxPeer(*masked, parent, placement);
  }
  return new TextBoxPeer(box, parent, placement);
}

QWidget* MakePeer(CheckBox& box, QWidget* parent, Placement placement) {
  return new CheckBoxPeer(box, parent, placement);
}

QWidget* MakePeer(OptionButton& button, QWidget* parent, Placement placement) {
  return new OptionButtonPeer(button, parent, placement);
}

QWidget* MakePeer(ComboBox& box, QWidget* parent, Placement placement) {
  return new ComboBoxPeer(box, parent, placement);
}

QWidget* MakePeer(CheckListBox& list, QWidget* parent, Placement placement) {
  return new CheckListBoxPeer(list, parent, placement);
}

}  // namespace velkor
