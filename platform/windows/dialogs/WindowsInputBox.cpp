// platform/windows/dialogs/WindowsInputBox.cpp: a prompt, a line and two buttons.
#include "platform/windows/dialogs/WindowsInputBox.h"

#include <optional>

#include "platform/windows/dialogs/DialogItems.h"
#include "platform/windows/dialogs/EmptyDialog.h"
#include "platform/windows/system/DialogOwner.h"
#include "platform/windows/system/Wide.h"

namespace velkor {
namespace {

struct Question {
  std::wstring prompt;
  std::wstring title;
  HWND owner;
  EmptyDialog kind;
  std::wstring answer;
  std::optional<DialogItems> items;
};

void Fill(HWND dialog, Question& question) {
  constexpr int Letters = 56;
  KeepDialogUnscaled(dialog);
  ::SetWindowTextW(dialog, question.title.c_str());
  DialogItems& items = question.items.emplace(dialog, Letters);
  items.AddText(question.prompt);
  items.AddLine(L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, WindowsInputBoxes::LineId,
                1.6);
  items.AddButtons({{L"OK", IDOK}, {L"Cancel", IDCANCEL}});
  items.Open(question.owner);
  ::SetFocus(::GetDlgItem(dialog, WindowsInputBoxes::LineId));
}

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    Fill(dialog, *reinterpret_cast<Question*>(lParam));
    // The focus is where it should be.
    return FALSE;
  }
  auto* const asked = reinterpret_cast<Question*>(::GetWindowLongPtrW(dialog, DWLP_USER));
  if (asked == nullptr || !asked->items) return FALSE;
  Question& question = *asked;
  if (question.items->Hear(message, wParam, lParam)) return TRUE;
  if (message != WM_COMMAND) return FALSE;
  const int id = LOWORD(wParam);
  if (id != IDOK && id != IDCANCEL) return FALSE;
  if (id == IDOK) question.answer = TextOfWindow(::GetDlgItem(dialog, WindowsInputBoxes::LineId));
  ::EndDialog(dialog, id);
  return TRUE;
}

}  // namespace

std::string WindowsInputBoxes::Ask(const std::string& prompt, const std::string& title) {
  const ModalScope modal(owner_);
  Question question{ToWide(prompt), ToWide(title), modal.Window(), EmptyDialog(), {}, {}};
  const INT_PTR ended =
      question.kind.ShowModal(modal.Window(), Procedure, reinterpret_cast<LPARAM>(&question));
  return ended == IDOK ? ToUtf8(question.answer) : std::string();
}

}  // namespace velkor
