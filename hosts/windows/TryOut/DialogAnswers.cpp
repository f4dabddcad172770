// hosts/windows/TryOut/DialogAnswers.cpp: looks for dialogs of this process until each is answered.
#include "hosts/windows/TryOut/DialogAnswers.h"

#include <algorithm>
#include <utility>

#include "platform/windows/system/Wide.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr const wchar_t* DialogClass = L"#32770";
constexpr const wchar_t* MenuClass = L"#32768";
constexpr DWORD PollTime = 15;
/// A dialog that stays after its last step may have a reason to.
constexpr ULONGLONG EndTime = 1500;
constexpr ULONGLONG StrayTime = 10000;

bool IsAnswerable(HWND window) {
  DWORD process = 0;
  ::GetWindowThreadProcessId(window, &process);
  return process == ::GetCurrentProcessId() && ::IsWindowVisible(window) &&
         ::IsWindowEnabled(window);
}

HWND FindDialog(const std::string& title) {
  const bool menu = title == DialogAnswers::PopupMenu;
  HWND window = nullptr;
  while ((window = ::FindWindowExW(nullptr, window, menu ? MenuClass : DialogClass, nullptr)) !=
         nullptr) {
    if (!IsAnswerable(window)) continue;
    if (menu || title == DialogAnswers::AnyDialog || TitleOf(window) == title) return window;
  }
  return nullptr;
}

std::string Quoted(const std::string& title) {
  return title.empty() ? "any dialog" : "\"" + title + "\"";
}

}  // namespace

DialogAnswers::DialogAnswers() : thread_([this](const std::stop_token& stop) { Work(stop); }) {}

void DialogAnswers::Expect(std::string title, std::string_view steps, int milliseconds,
                           bool required) {
  Expectation expected{std::move(title), ParseDialogSteps(steps), milliseconds, required};
  const std::scoped_lock lock(mutex_);
  expected_.push_back(std::move(expected));
}

bool DialogAnswers::IsDone() const {
  const std::scoped_lock lock(mutex_);
  return expected_.empty();
}

std::vector<std::string> DialogAnswers::Met() const {
  const std::scoped_lock lock(mutex_);
  return met_;
}

std::vector<std::string> DialogAnswers::TakeFailures() {
  const std::scoped_lock lock(mutex_);
  return std::exchange(failures_, {});
}

void DialogAnswers::Note(HWND dialog) {
  std::string text = TitleOf(dialog) + ": " + TextsOf(dialog);
  const std::scoped_lock lock(mutex_);
  met_.push_back(std::move(text));
}

void DialogAnswers::Fail(std::string failure) {
  const std::scoped_lock lock(mutex_);
  failures_.push_back(std::move(failure));
}

void DialogAnswers::Work(const std::stop_token& stop) {
  while (!stop.stop_requested()) {
    std::unique_lock lock(mutex_);
    if (expected_.empty()) {
      lock.unlock();
      CloseUnexpected();
      ::Sleep(PollTime);
      continue;
    }
    const Expectation next = expected_.front();
    lock.unlock();
    Meet(next, stop);
    lock.lock();
    expected_.pop_front();
  }
}

void DialogAnswers::Meet(const Expectation& expected, const std::stop_token& stop) {
  const ULONGLONG deadline =
      ::GetTickCount64() + static_cast<ULONGLONG>(std::max(expected.milliseconds, 0));
  HWND dialog = nullptr;
  while ((dialog = FindDialog(expected.title)) == nullptr) {
    if (stop.stop_requested()) return;
    if (::GetTickCount64() > deadline) {
      if (expected.required) Fail("The dialog " + Quoted(expected.title) + " never came.");
      return;
    }
    ::Sleep(PollTime);
  }
  Note(dialog);
  for (const DialogStep& step : expected.steps) {
    try {
      DoDialogStep(dialog, step, expected.milliseconds);
    } catch (const Error& error) {
      return Fail("In the dialog " + Quoted(expected.title) + ": " + error.Description());
    }
  }
  // So that the next expectation of the same title does not meet it again.
  const ULONGLONG end = ::GetTickCount64() + EndTime;
  while (!stop.stop_requested() && ::IsWindow(dialog) && IsAnswerable(dialog) &&
         ::GetTickCount64() < end) {
    ::Sleep(PollTime);
  }
}

void DialogAnswers::CloseUnexpected() {
  const HWND dialog = FindDialog(std::string(AnyDialog));
  if (dialog != stray_) {
    stray_ = dialog;
    straySince_ = ::GetTickCount64();
  }
  if (dialog == nullptr || ::GetTickCount64() - straySince_ < StrayTime) return;
  Note(dialog);
  Fail("Nobody expected the dialog " + Quoted(TitleOf(dialog)) + ": " + TextsOf(dialog));
  straySince_ = ::GetTickCount64();
  for (const int id : {IDCANCEL, IDNO, IDOK}) {
    ::PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id),
                   reinterpret_cast<LPARAM>(::GetDlgItem(dialog, id)));
  }
}

}  // namespace velkor
