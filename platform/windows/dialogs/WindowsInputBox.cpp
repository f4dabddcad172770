// platform/windows/dialogs/WindowsInputBox.cpp: a prompt, a line and two buttons.
#include "platform/windows/dialogs/WindowsInputBox.h"

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
};

void Fill(HWND dialog, const Question& question) {
  constexpr double Width = 5400;
  ::SetWindowTextW(dialog, question.title.c_str());
  DialogFiller filler(dialog, question.kind, Width);
  filler.AddText(question.prompt);
  filler.AddLine(L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, WindowsInputBoxes::LineId,
                 1.6);
  filler.AddButtons({{L"OK", IDOK}, {L"Cancel", IDCANCEL}});
  filler.Fit(question.owner);
  ::SetFocus(::GetDlgItem(dialog, WindowsInputBoxes::LineId));
}

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    Fill(dialog, *reinterpret_cast<const Question*>(lParam));
    // The focus is where it should be.
    return FALSE;
  }
  if (message != WM_COMMAND) return FALSE;
  const int id = LOWORD(wParam);
  if (id != IDOK && id != IDCANCEL) return FALSE;
  auto& question = *reinterpret_cast<Question*>(::GetWindowLongPtrW(dialog, DWLP_USER));
  if (id == IDOK) question.answer = TextOfWindow(::GetDlgItem(dialog, WindowsInputBoxes::LineId));
  ::EndDialog(dialog, id);
  return TRUE;
}

}  // namespace

std::string WindowsInputBoxes::Ask(const std::string& prompt, const std::string& title) {
  const ModalScope modal(owner_);
  Question question{ToWide(prompt), ToWide(title), modal.Window(), EmptyDialog(), {}};
  const INT_PTR ended =
      question.kind.ShowModal(modal.Window(), Procedure, reinterpret_cast<LPARAM>(&question));
  return ended == IDOK ? ToUtf8(question.answer) : std::string();
}

}  // namespace velkor
