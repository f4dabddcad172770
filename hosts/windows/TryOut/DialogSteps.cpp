// hosts/windows/TryOut/DialogSteps.cpp: finds items of a dialog and works them by messages.
#include "hosts/windows/TryOut/DialogSteps.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <functional>
#include <optional>
// After windows.h.
#include <commctrl.h>

#include "hosts/windows/TryOut/WindowInput.h"
#include "platform/windows/system/Wide.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr UINT AnswerTime = 5000;
/// The name of a file dialog, as an edit of its own or within a drop-down list (dlgs.h: edt1,
/// cmb13).
constexpr std::array<int, 2> FileNameItems = {0x0480, 0x047C};
constexpr std::array<std::string_view, 8> Verbs = {"press", "edit",   "check", "select",
                                                   "row",   "button", "key",   "wait"};
constexpr std::array<std::string_view, 3> NumberVerbs = {"button", "key", "wait"};

struct Item {
  HWND window = nullptr;
  std::string windowClass;
  std::string caption;
  int id = 0;
};

std::optional<int> NumberOf(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  DWORD_PTR answer = 0;
  if (!::SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, AnswerTime, &answer)) {
    throw Error(errors::InvalidProcedureCall, "The dialog does not answer.");
  }
  return static_cast<LRESULT>(answer);
}

std::string Unmarked(std::string caption) {
  std::erase(caption, '&');
  return caption;
}

BOOL CALLBACK Collect(HWND window, LPARAM items) {
  std::array<wchar_t, 64> name{};
  const int length = ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  std::string windowClass =
      ToUtf8(std::wstring_view(name.data(), static_cast<std::size_t>(length)));
  std::ranges::transform(windowClass, windowClass.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
  if (::IsWindowVisible(window)) {
    reinterpret_cast<std::vector<Item>*>(items)->push_back(
        {window, std::move(windowClass), Unmarked(TitleOf(window)), ::GetDlgCtrlID(window)});
  }
  return TRUE;
}

std::vector<Item> ItemsOf(HWND dialog) {
  std::vector<Item> items;
  ::EnumChildWindows(dialog, Collect, reinterpret_cast<LPARAM>(&items));
  return items;
}

std::optional<Item> Find(HWND dialog, const std::string& wanted) {
  const std::vector<Item> items = ItemsOf(dialog);
  const auto first = [&](const std::function<bool(const Item&)>& fits) -> std::optional<Item> {
    const auto found = std::ranges::find_if(items, fits);
    return found == items.end() ? std::nullopt : std::optional(*found);
  };
  if (wanted == "file") {
    for (const int id : FileNameItems) {
      if (const auto found = first([&](const Item& item) { return item.id == id; })) return found;
    }
    return std::nullopt;
  }
  if (const std::optional<int> id = NumberOf(wanted)) {
    // The identifiers of a window within the dialog are its own affair.
    const auto own = first(
        [&](const Item& item) { return item.id == *id && ::GetParent(item.window) == dialog; });
    return own ? own : first([&](const Item& item) { return item.id == *id; });
  }
  constexpr std::string_view Behind = "text:";
  if (!wanted.starts_with(Behind)) {
    return first([&](const Item& item) { return item.caption == wanted; });
  }
  const std::string label = wanted.substr(Behind.size());
  auto next = std::ranges::find_if(items, [&](const Item& item) { return item.caption == label; });
  while (next != items.end() && (next->windowClass == "static" || next->windowClass == "button")) {
    ++next;
  }
  return next == items.end() ? std::nullopt : std::optional(*next);
}

Item WaitFor(HWND dialog, const DialogStep& step, int milliseconds) {
  const ULONGLONG end = ::GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
  for (;;) {
    if (const auto item = Find(dialog, step.item)) return *item;
    if (::GetTickCount64() > end) {
      throw Error(errors::InvalidProcedureCall,
                  "there is no item \"" + step.item + "\" for " + step.verb);
    }
    ::Sleep(10);
  }
}

void Tell(const Item& item, WORD notice) {
  ::PostMessageW(::GetParent(item.window), WM_COMMAND,
                 MAKEWPARAM(static_cast<WORD>(item.id), notice),
                 reinterpret_cast<LPARAM>(item.window));
}

void Select(const Item& item, const std::string& value) {
  const bool combo = item.windowClass == "combobox";
  const std::wstring text = ToWide(value);
  const LRESULT place = Ask(item.window, combo ? CB_FINDSTRINGEXACT : LB_FINDSTRINGEXACT,
                            static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str()));
  if (place < 0) {
    throw Error(errors::InvalidProcedureCall, "\"" + value + "\" is not in the list");
  }
  Ask(item.window, combo ? CB_SETCURSEL : LB_SETCURSEL, static_cast<WPARAM>(place));
  Tell(item, combo ? WORD{CBN_SELCHANGE} : WORD{LBN_SELCHANGE});
}

/// By the keyboard, as what a list asks of its own thread only it can answer.
void ClickRow(const Item& item, int row) {
  ::PostMessageW(item.window, WM_KEYDOWN, VK_HOME, 0);
  for (int i = 0; i < row; ++i) ::PostMessageW(item.window, WM_KEYDOWN, VK_DOWN, 0);
  ::PostMessageW(item.window, WM_KEYDOWN, VK_SPACE, 0);
  ::PostMessageW(item.window, WM_KEYUP, VK_SPACE, 0);
  Ask(item.window, WM_NULL);
}

void PressKey(HWND dialog, WPARAM virtualKey) {
  GUITHREADINFO state{};
  state.cbSize = sizeof state;
  HWND target = dialog;
  const DWORD thread = ::GetWindowThreadProcessId(dialog, nullptr);
  if (::GetGUIThreadInfo(thread, &state) && state.hwndFocus != nullptr &&
      ::IsChild(dialog, state.hwndFocus)) {
    target = state.hwndFocus;
  }
  ::PostMessageW(target, WM_KEYDOWN, virtualKey, 0);
  ::PostMessageW(target, WM_KEYUP, virtualKey, 0xC0000001);
}

DialogStep ParseStep(std::string_view text) {
  const std::size_t space = text.find(' ');
  DialogStep step{std::string(text.substr(0, space)), {}, {}};
  if (std::ranges::find(Verbs, std::string_view(step.verb)) == Verbs.end()) {
    throw Error(errors::InvalidProcedureCall,
                "\"" + std::string(text) +
                    "\" is no step for a dialog (press, edit, check, select, "
                    "row, button, key, wait).");
  }
  const std::string_view rest = space == text.npos ? std::string_view() : text.substr(space + 1);
  const bool wantsNumber = std::ranges::find(NumberVerbs, step.verb) != NumberVerbs.end();
  const bool hasValue = step.verb != "press" && !wantsNumber;
  const std::size_t equals = hasValue ? rest.find('=') : rest.npos;
  if (hasValue && equals == rest.npos) {
    throw Error(errors::InvalidProcedureCall,
                "\"" + std::string(text) + "\" gives no value: ITEM=VALUE is wanted.");
  }
  step.item = Trim(rest.substr(0, equals));
  if (hasValue) step.value = rest.substr(equals + 1);
  if ((wantsNumber && !NumberOf(step.item)) || (step.verb == "row" && !NumberOf(step.value))) {
    throw Error(errors::InvalidProcedureCall, "\"" + std::string(text) + "\" wants a number.");
  }
  return step;
}

}  // namespace

std::vector<DialogStep> ParseDialogSteps(std::string_view text) {
  std::vector<DialogStep> steps;
  for (const auto& part : Split(text, ";")) {
    const std::string trimmed(Trim(part));
    if (!trimmed.empty()) steps.push_back(ParseStep(trimmed));
  }
  return steps;
}

void DoDialogStep(HWND dialog, const DialogStep& step, int milliseconds) {
  if (step.verb == "wait") return ::Sleep(static_cast<DWORD>(*NumberOf(step.item)));
  if (step.verb == "key") return PressKey(dialog, static_cast<WPARAM>(*NumberOf(step.item)));
  if (step.verb == "press" && step.item.empty()) {
    ::PostMessageW(dialog, WM_CLOSE, 0, 0);
    return;
  }
  if (step.verb == "button") return PostToolbarButton(dialog, *NumberOf(step.item));
  const Item item = WaitFor(dialog, step, milliseconds);
  if (step.verb == "press") {
    if (!::IsWindowEnabled(item.window)) {
      throw Error(errors::InvalidProcedureCall, "the button \"" + step.item + "\" is disabled");
    }
    Tell(item, BN_CLICKED);
  } else if (step.verb == "edit") {
    const std::wstring text = ToWide(step.value);
    Ask(item.window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
  } else if (step.verb == "check") {
    const bool wanted = step.value != "0";
    if ((Ask(item.window, BM_GETCHECK) == BST_CHECKED) != wanted) Ask(item.window, BM_CLICK);
  } else if (step.verb == "select") {
    Select(item, step.value);
  } else if (step.verb == "row") {
    ClickRow(item, *NumberOf(step.value));
  }
}

std::string TextsOf(HWND dialog) {
  std::string texts;
  for (const Item& item : ItemsOf(dialog)) {
    if (item.windowClass != "static" || item.caption.empty()) continue;
    texts += (texts.empty() ? "" : " ") + item.caption;
  }
  return texts;
}

std::string TitleOf(HWND window) {
  std::array<wchar_t, 2048> text{};
  const int length = ::InternalGetWindowText(window, text.data(), static_cast<int>(text.size()));
  return ToUtf8(std::wstring_view(text.data(), static_cast<std::size_t>(length)));
}

}  // namespace velkor
