// platform/desktop/TerminalMessageBoxes.cpp: the line that is printed, and the default answers.
#include "platform/desktop/TerminalMessageBoxes.h"

#include <vector>

namespace velkor {
namespace {

std::vector<MessageAnswer> AnswersOf(MessageButtons buttons) {
  using enum MessageAnswer;
  switch (buttons) {
    case MessageButtons::Ok:
      return {Ok};
    case MessageButtons::OkCancel:
      return {Ok, Cancel};
    case MessageButtons::RetryCancel:
      // Nobody mends anything meanwhile.
      return {Cancel};
    case MessageButtons::YesNo:
      return {Yes, No};
    case MessageButtons::YesNoCancel:
      return {Yes, No, Cancel};
  }
  return {Ok};
}

}  // namespace

MessageAnswer TerminalMessageBoxes::Show(const Message& message) {
  const std::string& title = message.title.empty() ? "yearplan" : message.title;
  stream_ << title << ": " << message.text << std::endl;
  const std::vector<MessageAnswer> answers = AnswersOf(message.buttons);
  const auto wanted = static_cast<std::size_t>(message.defaultButton - 1);
  return wanted < answers.size() ? answers[wanted] : answers.front();
}

}  // namespace velkor
