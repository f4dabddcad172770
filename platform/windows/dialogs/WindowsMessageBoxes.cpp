// platform/windows/dialogs/WindowsMessageBoxes.cpp: buttons, icons and answers as the system counts
// them.
#include "platform/windows/dialogs/WindowsMessageBoxes.h"

#include <algorithm>

#include "platform/windows/system/DialogOwner.h"
#include "platform/windows/system/Wide.h"

namespace velkor {
namespace {

UINT FlagsOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::Ok:
      return MB_OK;
    case MessageButtons::OkCancel:
      return MB_OKCANCEL;
    case MessageButtons::RetryCancel:
      return MB_RETRYCANCEL;
    case MessageButtons::YesNo:
      return MB_YESNO;
    case MessageButtons::YesNoCancel:
      return MB_YESNOCANCEL;
  }
  return MB_OK;
}

UINT FlagsOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::None:
      return 0;
    case MessageIcon::Stop:
      return MB_ICONSTOP;
    case MessageIcon::Question:
      return MB_ICONQUESTION;
    case MessageIcon::Exclamation:
      return MB_ICONEXCLAMATION;
    case MessageIcon::Information:
      return MB_ICONINFORMATION;
  }
  return 0;
}

MessageAnswer AnswerOf(int id) {
  switch (id) {
    case IDOK:
      return MessageAnswer::Ok;
    case IDABORT:
      return MessageAnswer::Abort;
    case IDRETRY:
      return MessageAnswer::Retry;
    case IDIGNORE:
      return MessageAnswer::Ignore;
    case IDYES:
      return MessageAnswer::Yes;
    case IDNO:
      return MessageAnswer::No;
    default:
      return MessageAnswer::Cancel;
  }
}

}  // namespace

MessageAnswer WindowsMessageBoxes::Show(const Message& message) {
  const UINT defaultButton = static_cast<UINT>(std::clamp(message.defaultButton, 1, 3) - 1) << 8;
  const std::string& title = message.title.empty() ? "OutlookVelkor" : message.title;
  const ModalScope modal(owner_);
  return AnswerOf(::MessageBoxW(modal.Window(), ToWide(message.text).c_str(), ToWide(title).c_str(),
                                FlagsOf(message.buttons) | FlagsOf(message.icon) | defaultButton));
}

}  // namespace velkor
