// tests/standin/Inspector.cpp: the dialog from the program's resources.
#include "tests/standin/Inspector.h"

#include "platform/windows/system/Wide.h"

namespace velkor {
namespace {

constexpr int DialogResource = 100;
constexpr int SubjectEdit = 100;

INT_PTR CALLBACK Handle(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    const std::string subject = reinterpret_cast<OutlookItem*>(lParam)->Subject();
    ::SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    ::SetDlgItemTextW(dialog, SubjectEdit, ToWide(subject).c_str());
    ::SetWindowTextW(dialog, ToWide(subject + " - Appointment").c_str());
    return TRUE;
  }
  if (message != WM_COMMAND || (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL)) return FALSE;
  if (LOWORD(wParam) == IDOK) {
    auto& item = *reinterpret_cast<OutlookItem*>(::GetWindowLongPtrW(dialog, DWLP_USER));
    wchar_t text[256] = L"";
    ::GetDlgItemTextW(dialog, SubjectEdit, text, static_cast<int>(std::size(text)));
    item.SetSubject(ToUtf8(text));
    item.Save();
  }
  ::EndDialog(dialog, 0);
  return TRUE;
}

}  // namespace

void ShowInspector(OutlookItem& item) {
  ::DialogBoxParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(DialogResource), nullptr, Handle,
                    reinterpret_cast<LPARAM>(&item));
}

}  // namespace velkor
