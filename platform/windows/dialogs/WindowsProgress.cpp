// platform/windows/dialogs/WindowsProgress.cpp: when the window opens, what it shows, and what it
// lets by.
#include "platform/windows/dialogs/WindowsProgress.h"

#include <algorithm>
#include <optional>
#include <string>

#include "platform/windows/dialogs/DialogItems.h"
#include "platform/windows/dialogs/EmptyDialog.h"
#include "platform/windows/system/DialogOwner.h"
#include "platform/windows/system/MessagePump.h"
#include "platform/windows/system/Wide.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {
namespace {

constexpr int TextId = 100;
constexpr int BarId = 101;

/// In milliseconds, as the next.
constexpr ULONGLONG UpdateInterval = 40;
constexpr ULONGLONG Moment = 500;

/// The window while it is open. Its owner is enabled again before it goes, so that the owner, not
/// some other program, becomes active.
class ProgressWindow {
 public:
  ProgressWindow(DialogOwner& owner, const std::wstring& title)
      : modal_(owner), owner_(modal_.Window()) {
    window_ = kind_.Open(owner_, Procedure, reinterpret_cast<LPARAM>(this));
    if (window_ == nullptr) return;
    Fill(title);
    ownerWasEnabled_ = owner_ != nullptr && !::EnableWindow(owner_, FALSE);
    ::ShowWindow(window_, SW_SHOW);
  }

  ~ProgressWindow() {
    if (ownerWasEnabled_) ::EnableWindow(owner_, TRUE);
    if (window_ != nullptr) ::DestroyWindow(window_);
  }

  ProgressWindow(const ProgressWindow&) = delete;
  ProgressWindow& operator=(const ProgressWindow&) = delete;

  bool IsCancelled() const { return cancelled_; }
  /// Null once it is gone, with its owner.
  HWND Window() const { return window_; }

  void Show(int done, int total, std::string_view text) {
    if (window_ == nullptr) return;
    if (text != text_) {
      text_ = text;
      std::wstring line = ToWide(text);
      std::replace_if(
          line.begin(), line.end(), [](wchar_t c) { return c < L' '; }, L' ');
      ::SetDlgItemTextW(window_, TextId, line.c_str());
    }
    ::SendDlgItemMessageW(window_, BarId, PBM_SETRANGE32, 0, total);
    ::SendDlgItemMessageW(window_, BarId, PBM_SETPOS, static_cast<WPARAM>(done), 0);
  }

 private:
  void Fill(const std::wstring& title) {
    constexpr int Letters = 66;
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_PROGRESS_CLASS};
    ::InitCommonControlsEx(&classes);
    ::SetWindowTextW(window_, title.c_str());
    DialogItems& items = items_.emplace(window_, Letters);
    items.AddLine(L"STATIC", SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, 0, TextId, 1);
    items.AddLine(PROGRESS_CLASSW, 0, 0, BarId, 1.25);
    items.AddButtons({{L"Cancel", IDCANCEL}});
    items.Open(owner_);
  }

  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) ::SetWindowLongPtrW(window, DWLP_USER, lParam);
    auto* const self = reinterpret_cast<ProgressWindow*>(::GetWindowLongPtrW(window, DWLP_USER));
    if (self == nullptr) return FALSE;
    if (self->items_ && self->items_->Hear(message, wParam, lParam)) return TRUE;
    switch (message) {
      case WM_INITDIALOG:
        KeepDialogUnscaled(window);
        return TRUE;
      case WM_COMMAND:
        // Enter and Escape come with these identifiers.
        if (LOWORD(wParam) == IDCANCEL) self->cancelled_ = true;
        return TRUE;
      case WM_CLOSE:
        self->cancelled_ = true;
        return TRUE;
      case WM_NCDESTROY:
        self->window_ = nullptr;
        self->cancelled_ = true;
        return FALSE;
      default:
        return FALSE;
    }
  }

  ModalScope modal_;
  HWND owner_;
  EmptyDialog kind_;
  HWND window_ = nullptr;
  std::optional<DialogItems> items_;
  bool ownerWasEnabled_ = false;
  bool cancelled_ = false;
  std::string text_;
};

class Report : public ProgressReport {
 public:
  Report(DialogOwner& owner, std::string_view title)
      : owner_(owner), title_(ToWide(title)), begin_(::GetTickCount64()), lastUpdate_(begin_) {}

  bool Step(int done, int total, std::string_view text) override {
    if (cancelled_ || processing_) return !cancelled_;
    const ULONGLONG now = ::GetTickCount64();
    if (now - lastUpdate_ < UpdateInterval) return true;
    processing_ = true;
    if (now - begin_ >= Moment) {
      if (!window_) window_.emplace(owner_, title_);
      window_->Show(done, total, text);
    }
    ProcessMessages();
    if (window_ && window_->IsCancelled()) cancelled_ = true;
    if (cancelled_) window_.reset();
    processing_ = false;
    lastUpdate_ = ::GetTickCount64();
    return !cancelled_;
  }

 private:
  /// For at most one interval: a window that never stops painting must not stop the operation.
  void ProcessMessages() {
    const BusyScope busy(owner_);
    // Before the window is open, nothing keeps the user from the other windows.
    const UINT kinds = window_ ? 0 : PM_QS_PAINT | PM_QS_POSTMESSAGE | PM_QS_SENDMESSAGE;
    const ULONGLONG begin = ::GetTickCount64();
    const auto forDialog = [this](MSG& message) {
      return window_ && window_->Window() != nullptr &&
             ::IsDialogMessageW(window_->Window(), &message);
    };
    Pumped last = Pumped::Message;
    while (last == Pumped::Message && ::GetTickCount64() - begin < UpdateInterval) {
      last = ProcessMessage(forDialog, kinds);
    }
    if (last == Pumped::End) cancelled_ = true;
  }

  DialogOwner& owner_;
  std::wstring title_;
  ULONGLONG begin_;
  ULONGLONG lastUpdate_;
  std::optional<ProgressWindow> window_;
  bool cancelled_ = false;
  bool processing_ = false;
};

}  // namespace

std::unique_ptr<ProgressReport> WindowsProgress::Begin(std::string_view title) {
  return std::make_unique<Report>(owner_, title);
}

}  // namespace velkor
