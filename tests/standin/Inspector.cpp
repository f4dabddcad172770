// tests/standin/Inspector.cpp: the dialog from the program's resources.
#include "tests/standin/Inspector.h"

#include <utility>

#include "platform/windows/system/Wide.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr int DialogResource = 100;
constexpr int SubjectEdit = 100;

/// Owned by its window.
struct OpenWindow {
  std::function<void(const std::string&)> save;
  std::shared_ptr<bool> closed;
};

std::string SubjectIn(HWND dialog) {
  const HWND edit = ::GetDlgItem(dialog, SubjectEdit);
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(edit)) + 1, L'\0');
  text.resize(
      static_cast<std::size_t>(::GetWindowTextW(edit, text.data(), static_cast<int>(text.size()))));
  return ToUtf8(text);
}

void Save(HWND dialog, const OpenWindow& window) {
  try {
    window.save(SubjectIn(dialog));
    ::DestroyWindow(dialog);
  } catch (const Error& error) {
    ::MessageBoxW(dialog, ToWide(error.Description()).c_str(), L"Calendar", MB_ICONWARNING);
  }
}

INT_PTR CALLBACK Handle(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* window = reinterpret_cast<OpenWindow*>(::GetWindowLongPtrW(dialog, DWLP_USER));
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    return TRUE;
  }
  if (window == nullptr) return FALSE;
  if (message == WM_COMMAND && LOWORD(wParam) == IDOK) {
    Save(dialog, *window);
  } else if (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL) {
    ::DestroyWindow(dialog);
  } else if (message == WM_DESTROY) {
    ::SetWindowLongPtrW(dialog, DWLP_USER, 0);
    *window->closed = true;
    delete window;
  } else {
    return FALSE;
  }
  return TRUE;
}

}  // namespace

Inspector OpenInspector(const std::string& subject, std::function<void(const std::string&)> save) {
  auto closed = std::make_shared<bool>(false);
  auto window = std::make_unique<OpenWindow>(OpenWindow{std::move(save), closed});
  const HWND dialog =
      ::CreateDialogParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(DialogResource), nullptr,
                           Handle, reinterpret_cast<LPARAM>(window.get()));
  if (dialog == nullptr) throw Error(errors::CalendarFailed, "The appointment cannot be shown.");
  window.release();
  ::SetDlgItemTextW(dialog, SubjectEdit, ToWide(subject).c_str());
  ::SetWindowTextW(dialog, ToWide(subject + " - Appointment").c_str());
  return closed;
}

void WaitForClose(const Inspector& inspector, ServerLoop& loop) {
  while (!*inspector) {
    if (loop.Step()) continue;
    // Also the loop around this one has to end.
    ::PostQuitMessage(0);
    return;
  }
}

}  // namespace velkor
