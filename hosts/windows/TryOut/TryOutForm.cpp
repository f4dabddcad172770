// hosts/windows/TryOut/TryOutForm.cpp: the form's window, its messages and its keys.
#include "hosts/windows/TryOut/TryOutForm.h"

#include <algorithm>
#include <array>
// After windows.h.
#include <commctrl.h>

#include "platform/windows/dialogs/DialogPlace.h"
#include "platform/windows/system/MessagePump.h"
#include "platform/windows/system/Modules.h"
#include "support/modFileIO.h"

namespace velkor {
namespace {

constexpr const wchar_t* FormClass = L"OutlookVelkorTryOut";
constexpr const wchar_t* Title = L"Year planner try-out";
constexpr Twips FirstWidth = 15000;
constexpr Twips FirstHeight = 9600;
constexpr Twips LeastWidth = 6000;
constexpr Twips LeastHeight = 5400;

void RegisterFormClass(WNDPROC procedure) {
  WNDCLASSEXW made{};
  made.cbSize = sizeof made;
  made.style = CS_HREDRAW | CS_VREDRAW;
  made.lpfnWndProc = procedure;
  made.hInstance = ThisModule();
  made.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
  made.hIcon = ::LoadIconW(nullptr, IDI_APPLICATION);
  made.hbrBackground = ::GetSysColorBrush(COLOR_BTNFACE);
  made.lpszClassName = FormClass;
  // Again for a second form: then it is there.
  ::RegisterClassExW(&made);
}

bool IsKey(const MSG& message) {
  return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
}

}  // namespace

TryOutForm::TryOutForm() = default;

TryOutForm::~TryOutForm() {
  Close();
}

void TryOutForm::Open() {
  if (IsOpen()) return;
  const INITCOMMONCONTROLSEX wanted{sizeof wanted, ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
  ::InitCommonControlsEx(&wanted);
  RegisterFormClass(Procedure);
  const POINT usual = DensityOf(nullptr).ToPixels(Point{FirstWidth, FirstHeight});
  const SIZE screen = SizeOf(WorkAreaAround(nullptr));
  const SIZE size{std::min(usual.x, screen.cx), std::min(usual.y, screen.cy)};
  window_ = ::CreateWindowExW(WS_EX_CONTROLPARENT, FormClass, Title,
                              WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                              size.cx, size.cy, nullptr, nullptr, ThisModule(), this);
  if (window_ == nullptr) {
    throw Error(static_cast<long>(::GetLastError()),
                "The form's window cannot be opened: " + SystemMessage(::GetLastError()));
  }
  bar_ = std::make_unique<FormBar>(window_);
  bar_->Enable(false);
  status_ = ::CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0,
                              0, 0, 0, window_, nullptr, nullptr, nullptr);
  TakeFont();
  container_ = std::make_unique<ControlContainer>(window_);
  container_->listener.onStatus = [this](const std::string& text) {
    ShowStatus(text);
    if (listener.onStatus) listener.onStatus(text);
  };
  container_->listener.onError = [this](int number, const std::string& description) {
    ShowStatus("Error " + std::to_string(number) + ": " + description);
    if (listener.onError) listener.onError(number, description);
  };
  container_->listener.onPropertyChanged = [this](const std::string& name) {
    if (container_->IsPlaced()) bar_->Show(container_->Control());
    if (listener.onPropertyChanged) listener.onPropertyChanged(name);
  };
  Arrange();
  ::ShowWindow(window_, SW_SHOWDEFAULT);
  ::UpdateWindow(window_);
}

void TryOutForm::TakeFont() {
  if (!bar_) return;
  density_ = DensityOf(window_);
  FontHandle font = MakeDialogFont(density_);
  bar_->TakeFont(font.get(), density_);
  ::SendMessageW(status_, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
  font_ = std::move(font);
}

void TryOutForm::TakeDensity(UINT dots, const RECT& place) {
  KeepDotsPerInch(window_, dots);
  TakeFont();
  ::SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  Arrange();
}

void TryOutForm::Close() {
  if (container_) container_->Remove();
  if (window_ != nullptr) ::DestroyWindow(window_);
  container_.reset();
  bar_.reset();
}

ControlContainer& TryOutForm::Container() {
  if (!container_) throw Error(errors::InvalidProcedureCall, "The form is not open.");
  return *container_;
}

std::string TryOutForm::Place(const std::optional<std::string>& properties) {
  bar_->Enable(false);
  const std::string objection = Container().Place(ControlPlace(), properties);
  bar_->Show(Container().Control());
  bar_->Enable(true);
  return objection;
}

void TryOutForm::Save(const std::string& path) {
  WindowsFiles files;
  if (modFileIO::Replace(files, path, path + ".new", {Container().Properties()})) return;
  throw Error(errors::PathNotFound, path + " cannot be written");
}

std::string TryOutForm::Restore(const std::string& path) {
  const std::optional<std::string> properties = WindowsFiles().Read(path);
  if (!properties) throw Error(errors::FileNotFound, path + ": no properties were saved there");
  return Place(properties);
}

RECT TryOutForm::ControlPlace() const {
  RECT area{};
  RECT line{};
  ::GetClientRect(window_, &area);
  ::GetWindowRect(status_, &line);
  const LONG bottom = area.bottom - (line.bottom - line.top);
  return {0, barHeight_, area.right, std::max<LONG>(bottom, barHeight_)};
}

void TryOutForm::Arrange() {
  if (!bar_) return;
  RECT area{};
  ::GetClientRect(window_, &area);
  ::SendMessageW(status_, WM_SIZE, 0, 0);
  barHeight_ = bar_->Arrange(area.right);
  container_->Move(ControlPlace());
}

void TryOutForm::Resize(SIZE control) {
  // The bar's height follows its width, so the second time it is known.
  for (int i = 0; i < 2; ++i) {
    const RECT now = ControlPlace();
    RECT window{};
    ::GetWindowRect(window_, &window);
    ::SetWindowPos(window_, nullptr, 0, 0,
                   window.right - window.left + control.cx - (now.right - now.left),
                   window.bottom - window.top + control.cy - (now.bottom - now.top),
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
}

void TryOutForm::ShowStatus(const std::string& text) {
  ::SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(ToWide(text).c_str()));
}

void TryOutForm::Tell(const std::string& text) const {
  ::MessageBoxW(window_, ToWide(text).c_str(), Title, MB_OK | MB_ICONWARNING);
}

bool TryOutForm::TranslateKey(MSG& message) {
  if (window_ == nullptr || !IsKey(message)) return false;
  if (message.hwnd != window_ && !::IsChild(window_, message.hwnd)) return false;
  return container_->TranslateKey(message) || ::IsDialogMessageW(window_, &message);
}

bool TryOutForm::Pump(int milliseconds, const std::function<bool()>& holds) {
  const ULONGLONG end =
      milliseconds < 0 ? ~0ULL : ::GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
  const auto take = [this](MSG& message) { return TranslateKey(message); };
  for (;;) {
    for (Pumped last = ProcessMessage(take); last != Pumped::Nothing; last = ProcessMessage(take)) {
      if (last == Pumped::End) return false;
      if (holds && holds()) return true;
    }
    if (holds && holds()) return true;
    const ULONGLONG now = ::GetTickCount64();
    if (now >= end) return !holds;
    // What the wait is for may come from another thread.
    const ULONGLONG left = std::min<ULONGLONG>(end - now, holds ? 20 : 1000);
    WaitForMessage(static_cast<DWORD>(left));
  }
}

void TryOutForm::RunForUser() {
  forUser_ = true;
  Open();
  const std::string path = UsersPropertyFile();
  try {
    const std::optional<std::string> properties = WindowsFiles().Read(path);
    const std::string objection = Place(properties);
    if (!objection.empty()) {
      Tell("The properties saved in " + path +
           " cannot be loaded, so the planner begins with its "
           "defaults.\n\n" +
           objection);
    }
    if (Container().IsPlaced()) Container().Focus();
  } catch (const Error& error) {
    Tell(error.Description());
  }
  while (Pump(-1)) {
  }
}

void TryOutForm::OnCommand(int command) {
  try {
    if (command == form_commands::Apply) bar_->Apply(Container().Control());
    if (command == form_commands::Save) {
      Save(UsersPropertyFile());
      ShowStatus("The properties are saved in " + UsersPropertyFile());
    }
    if (command == form_commands::Restore) {
      const std::string objection = Restore(UsersPropertyFile());
      if (!objection.empty()) Tell("The saved properties cannot be loaded.\n\n" + objection);
    }
  } catch (const Error& error) {
    if (IsOpen() && container_->IsPlaced()) bar_->Show(container_->Control());
    Tell(error.Description());
  }
}

std::optional<LRESULT> TryOutForm::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SIZE:
      if (wParam != SIZE_MINIMIZED) Arrange();
      return 0;
    case WM_DPICHANGED:
      TakeDensity(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_SETTINGCHANGE:
      if (wParam == SPI_SETNONCLIENTMETRICS) {
        TakeFont();
        Arrange();
      }
      return std::nullopt;
    case WM_GETMINMAXINFO: {
      const POINT least = density_.ToPixels(Point{LeastWidth, LeastHeight});
      auto& limits = *reinterpret_cast<MINMAXINFO*>(lParam);
      limits.ptMinTrackSize = least;
      // A script may want a control larger than the screen.
      limits.ptMaxTrackSize = {SHRT_MAX, SHRT_MAX};
      return 0;
    }
    case WM_COMMAND:
      if (HIWORD(wParam) == BN_CLICKED) OnCommand(LOWORD(wParam));
      return 0;
    case DM_GETDEFID:
      return MAKELRESULT(form_commands::Apply, DC_HASDEFID);
    case WM_ACTIVATE:
      if (LOWORD(wParam) == WA_INACTIVE) {
        lastFocus_ = ::GetFocus();
        return 0;
      }
      if (lastFocus_ != nullptr && ::IsChild(window_, lastFocus_)) ::SetFocus(lastFocus_);
      return 0;
    case WM_CLOSE:
      Close();
      return 0;
    case WM_DESTROY:
      KeepDotsPerInch(window_, 0);
      window_ = nullptr;
      if (forUser_) ::PostQuitMessage(0);
      return 0;
    default:
      return std::nullopt;
  }
}

LRESULT CALLBACK TryOutForm::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* created = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created->lpCreateParams));
  }
  auto* const form = reinterpret_cast<TryOutForm*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  if (form != nullptr && (form->window_ != nullptr || message == WM_GETMINMAXINFO)) {
    if (const auto answer = form->Handle(message, wParam, lParam)) return *answer;
  }
  return ::DefWindowProcW(window, message, wParam, lParam);
}

std::string UsersPropertyFile() {
  std::array<wchar_t, 32768> folder{};
  ::GetEnvironmentVariableW(L"APPDATA", folder.data(), static_cast<DWORD>(folder.size()));
  const std::string own = ToUtf8(std::wstring_view(folder.data())) + "\\OutlookVelkor";
  ::CreateDirectoryW(ToWide(own).c_str(), nullptr);
  return own + "\\TryOut.properties";
}

}  // namespace velkor
