// platform/desktop/QtMessageBoxes.cpp: buttons and icons of message boxes.
#include "platform/desktop/QtMessageBoxes.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <array>
#include <utility>
#include <vector>

#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

using Button = QMessageBox::StandardButton;

/// In the order in which a default button is counted.
std::vector<Button> ButtonsOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::Ok:
      return {QMessageBox::Ok};
    case MessageButtons::OkCancel:
      return {QMessageBox::Ok, QMessageBox::Cancel};
    case MessageButtons::RetryCancel:
      return {QMessageBox::Retry, QMessageBox::Cancel};
    case MessageButtons::YesNo:
      return {QMessageBox::Yes, QMessageBox::No};
    case MessageButtons::YesNoCancel:
      return {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
  }
  return {QMessageBox::Ok};
}

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::None:
      return QMessageBox::NoIcon;
    case MessageIcon::Stop:
      return QMessageBox::Critical;
    case MessageIcon::Question:
      return QMessageBox::Question;
    case MessageIcon::Exclamation:
      return QMessageBox::Warning;
    case MessageIcon::Information:
      return QMessageBox::Information;
  }
  return QMessageBox::NoIcon;
}

MessageAnswer AnswerOf(int button) {
  constexpr std::array<std::pair<Button, MessageAnswer>, 4> Answers{{
      {QMessageBox::Cancel, MessageAnswer::Cancel},
      {QMessageBox::Retry, MessageAnswer::Retry},
      {QMessageBox::Yes, MessageAnswer::Yes},
      {QMessageBox::No, MessageAnswer::No},
  }};
  for (const auto& [native, answer] : Answers) {
    if (native == button) return answer;
  }
  return MessageAnswer::Ok;
}

}  // namespace

MessageAnswer QtMessageBoxes::Show(const Message& message) {
  QWidget* const dialog = QApplication::activeModalWidget();
  QMessageBox box(dialog ? dialog : parent_.data());
  box.setTextFormat(Qt::PlainText);
  QString text = ToQt(message.text);
  text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
  box.setText(text);
  box.setWindowTitle(ToQt(message.title.empty() ? ProgramName : message.title));
  box.setIcon(IconOf(message.icon));
  const std::vector<Button> buttons = ButtonsOf(message.buttons);
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    QPushButton* const button = box.addButton(buttons[i]);
    if (static_cast<int>(i) + 1 == message.defaultButton) box.setDefaultButton(button);
  }
  return AnswerOf(box.exec());
}

}  // namespace velkor
