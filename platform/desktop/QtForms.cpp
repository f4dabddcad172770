// platform/desktop/QtForms.cpp: the rows of a form, laid out as a dialog.
#include "platform/desktop/QtForms.h"

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/desktop/QtPeers.h"
#include "platform/desktop/QtText.h"
#include "support/values/Error.h"

namespace velkor {
namespace {

constexpr int LeastTextWidth = 360;
constexpr double HeadingScale = 1.6;

QWidget* MakeWidget(Element& element, QWidget* parent) {
  if (auto* label = dynamic_cast<Label*>(&element)) {
    return MakePeer(*label, parent, Placement::Layout);
  }
  if (auto* button = dynamic_cast<CommandButton*>(&element)) {
    return MakePeer(*button, parent, Placement::Layout);
  }
  if (auto* image = dynamic_cast<Image*>(&element)) {
    return MakePeer(*image, parent, Placement::Layout);
  }
  throw Error(errors::InvalidProcedureCall, "A form cannot show the element " + element.Name(),
              "QtForms");
}

void MakeHeading(QWidget& widget) {
  QFont font = widget.font();
  font.setPointSizeF(font.pointSizeF() * HeadingScale);
  font.setBold(true);
  widget.setFont(font);
}

void AddRow(QVBoxLayout& rows, const FormRow& row, QDialog& dialog) {
  auto* const line = new QHBoxLayout;
  if (row.kind == FormRowKind::Buttons) {
    rows.addStretch();
    line->addStretch();
  }
  bool first = true;
  for (const FormCell& cell : row.cells) {
    QWidget* const widget = MakeWidget(*cell.element, &dialog);
    if (row.kind == FormRowKind::Heading) MakeHeading(*widget);
    auto* const button = qobject_cast<QPushButton*>(widget);
    if (button && first && row.kind == FormRowKind::Buttons) button->setDefault(true);
    const bool grows = row.kind != FormRowKind::Buttons && qobject_cast<QLabel*>(widget);
    line->addWidget(widget, grows ? cell.width : 0, Qt::Alignment());
    first = false;
  }
  rows.addLayout(line);
}

}  // namespace

void QtForms::ShowModal(Form& form) {
  QWidget* const above = QApplication::activeModalWidget();
  QDialog dialog(above ? above : parent_.data());
  dialog.setObjectName(ToQt(form.Name()));
  dialog.setWindowTitle(ToQt(form.Title()));
  dialog.setMinimumWidth(LeastTextWidth);
  auto* const rows = new QVBoxLayout(&dialog);
  constexpr int Margin = 16;
  rows->setContentsMargins(Margin, Margin, Margin, Margin);
  rows->setSpacing(Margin / 2);
  for (const FormRow& row : form.Rows()) AddRow(*rows, row, dialog);

  form.onUnload = [&dialog] { dialog.reject(); };
  form.Open();
  dialog.exec();
  form.onUnload = nullptr;
  if (form.IsOpen()) form.Unload();
}

}  // namespace velkor
