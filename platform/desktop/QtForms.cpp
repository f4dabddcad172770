// platform/desktop/QtForms.cpp: the rows of a form, laid out as a dialog.
#include "platform/desktop/QtForms.h"

#include <QApplication>
#include <QDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "platform/desktop/QtElementWidgets.h"
#include "platform/desktop/QtFormWindow.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

constexpr int LeastTextWidth = 360;
constexpr double HeadingScale = 1.6;

bool IsInput(const Element& element) {
  return dynamic_cast<const TextBox*>(&element) || dynamic_cast<const CheckBox*>(&element) ||
         dynamic_cast<const OptionButton*>(&element) || dynamic_cast<const ComboBox*>(&element) ||
         dynamic_cast<const CheckListBox*>(&element);
}

/// Lays out the rows of one form in its dialog.
class FormLayout {
 public:
  FormLayout(const Form& form, QDialog& dialog) : dialog_(dialog), rows_(new QVBoxLayout(&dialog)) {
    constexpr int Margin = 16;
    rows_->setContentsMargins(Margin, Margin, Margin, Margin);
    rows_->setSpacing(Margin / 2);
    for (const FormRow& row : form.Rows()) AddRow(row);
    AlignLabels();
  }

  /// The element that has the keyboard first: an input, of a choice the chosen one.
  Element* FirstInput() const {
    for (Element* element : inputs_) {
      const auto* const option = dynamic_cast<OptionButton*>(element);
      const bool waits = option && !option->Chosen() &&
                         std::any_of(option->group.begin(), option->group.end(),
                                     [](const OptionButton* other) { return other->Chosen(); });
      if (!waits && element->Visible() && element->Enabled()) return element;
    }
    return nullptr;
  }

 private:
  void AddRow(const FormRow& row) {
    EnterGroup(row.group);
    auto* const line = new QHBoxLayout;
    if (row.kind == FormRowKind::Buttons) {
      rows_->addStretch();
      line->addStretch();
    }
    int shares = 0;
    bool grows = false;
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      Element& element = *row.cells[i].element;
      QWidget* const widget =
          MakePeerOf<Label, CommandButton, Image, TextBox, CheckBox, OptionButton, ComboBox,
                     CheckListBox>(element, &dialog_, Placement::Layout);
      const int share = ShareOf(row, row.cells[i]);
      shares += share;
      Fit(*widget, row, share);
      Connect(element, *widget, row);
      if (i == 0) Begin(*widget, row);
      if (IsLeading(*widget, row, i)) leading_[i].push_back(qobject_cast<QLabel*>(widget));
      grows = grows || dynamic_cast<CheckListBox*>(&element);
      line->addWidget(widget, share);
    }
    if (row.kind == FormRowKind::Plain && shares == 0) line->addStretch();
    QVBoxLayout* const lines = frame_ ? frame_ : rows_;
    lines->addLayout(line, grows ? 1 : 0);
  }

  /// What follows stands in the frame with this caption, a new one unless the last row stands
  /// there.
  void EnterGroup(const std::string& group) {
    if (group == group_) return;
    AlignLabels();
    group_ = group;
    frame_ = nullptr;
    if (group.empty()) return;
    auto* const frame = new QGroupBox(ToQt(group), &dialog_);
    frame_ = new QVBoxLayout(frame);
    rows_->addWidget(frame);
  }

  /// Pictures and the buttons at the bottom keep their size.
  static int ShareOf(const FormRow& row, const FormCell& cell) {
    const bool keeps =
        row.kind == FormRowKind::Buttons || dynamic_cast<const Image*>(cell.element) != nullptr;
    return keeps ? 0 : cell.width;
  }

  static void Fit(QWidget& widget, const FormRow& row, int share) {
    auto* const label = qobject_cast<QLabel*>(&widget);
    if (row.kind == FormRowKind::Heading) {
      QFont font = widget.font();
      font.setPointSizeF(font.pointSizeF() * HeadingScale);
      font.setBold(true);
      widget.setFont(font);
    } else if (row.kind == FormRowKind::Plain && share == 0) {
      if (label) label->setWordWrap(false);
      widget.setSizePolicy(QSizePolicy::Fixed, widget.sizePolicy().verticalPolicy());
    }
  }

  /// A label leads to the input that follows it, in its row or below.
  void Connect(Element& element, QWidget& widget, const FormRow& row) {
    if (auto* const label = dynamic_cast<Label*>(&element)) {
      const bool names = row.kind == FormRowKind::Plain && !label->onClick;
      pending_ = names ? qobject_cast<QLabel*>(&widget) : nullptr;
    } else if (IsInput(element)) {
      inputs_.push_back(&element);
      const bool hasCaption = dynamic_cast<CaptionedElement*>(&element) != nullptr;
      if (pending_ && !hasCaption) pending_->setBuddy(&widget);
      pending_ = nullptr;
    }
  }

  static void Begin(QWidget& first, const FormRow& row) {
    if (row.kind != FormRowKind::Buttons) return;
    if (auto* const button = qobject_cast<QPushButton*>(&first)) button->setDefault(true);
  }

  /// Whether this is a label in front of something else.
  static bool IsLeading(const QWidget& widget, const FormRow& row, std::size_t place) {
    const auto* const label = qobject_cast<const QLabel*>(&widget);
    return label && !label->wordWrap() && row.kind != FormRowKind::Buttons &&
           place + 1 < row.cells.size();
  }

  /// What follows the labels of a frame, or of the rows between two frames, stands in columns.
  void AlignLabels() {
    for (const auto& [place, labels] : leading_) {
      int widest = 0;
      for (const QLabel* label : labels) widest = std::max(widest, label->sizeHint().width());
      for (QLabel* label : labels) label->setMinimumWidth(widest);
    }
    leading_.clear();
  }

  QDialog& dialog_;
  QVBoxLayout* rows_;
  /// The rows of the frame in hand; null outside of one.
  QVBoxLayout* frame_ = nullptr;
  std::string group_;
  QLabel* pending_ = nullptr;
  /// By their places in their rows.
  std::map<std::size_t, std::vector<QLabel*>> leading_;
  std::vector<Element*> inputs_;
};

}  // namespace

void QtForms::ShowModal(Form& form) {
  QWidget* const open = QApplication::activeModalWidget();
  QWidget* const parent = open ? open : parent_.data();
  if (!form.Placed().empty()) return QtFormWindow(form, parent).ShowModal();
  QDialog dialog(parent);
  dialog.setObjectName(ToQt(form.Name()));
  dialog.setWindowTitle(ToQt(form.Title()));
  dialog.setAccessibleName(ToQt(form.Title()));
  dialog.setMinimumWidth(LeastTextWidth);
  dialog.setSizeGripEnabled(true);
  const FormLayout layout(form, dialog);

  form.onUnload = [&dialog] { dialog.reject(); };
  form.Open();
  if (Element* const first = layout.FirstInput()) first->SetFocus();
  dialog.exec();
  form.onUnload = nullptr;
  if (form.IsOpen()) form.Unload();
}

}  // namespace velkor
