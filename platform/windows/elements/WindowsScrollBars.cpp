// platform/windows/elements/WindowsScrollBars.cpp: a watched window, its bars, and messages known
// by names.
#include "platform/windows/elements/WindowsScrollBars.h"

#include <array>
#include <utility>

#include "platform/windows/elements/ScrollFunctions.h"
#include "platform/windows/elements/WindowsPeer.h"
#include "platform/windows/system/AnsiText.h"
// After windows.h.
#include <commctrl.h>
#include <shlwapi.h>

namespace velkor {
namespace {

using Side = ScrollBarSide;
using RegisteredMessages = std::shared_ptr<const std::set<std::uint32_t>>;

/// What becomes of a message of the watched window.
enum class MessageResponse { PassOn, Tell, TellAndPassOn };

/// Whether a setting of the wheel says that it scrolls.
bool WheelScrolls(UINT setting) {
  UINT step = 1;
  return !::SystemParametersInfoA(setting, 0, &step, 0) || step != 0;
}

/// A bar that is hidden is held here alone, since the system shows one whose range is set.
class Bars : public WindowScrollBars {
 public:
  Bars(HWND window, RegisteredMessages messages)
      : window_(window), messages_(std::move(messages)), functions_(UsualScrollFunctions()) {
    if (window_ == nullptr) return;
    for (const Side side : {Side::Horizontal, Side::Vertical}) {
      Bar& bar = Of(side);
      bar.visible = (::GetWindowLongW(window_, GWL_STYLE) & StyleOf(side)) != 0;
      if (const auto info = Read(side)) bar.info = *info;
    }
    ::SetWindowSubclass(window_, Subclass, reinterpret_cast<UINT_PTR>(this),
                        reinterpret_cast<DWORD_PTR>(this));
  }
  ~Bars() override {
    if (window_ == nullptr) return;
    ::RemoveWindowSubclass(window_, Subclass, reinterpret_cast<UINT_PTR>(this));
    EndFlat();
  }
  Bars(const Bars&) = delete;
  Bars& operator=(const Bars&) = delete;

  ScrollInfo Info(Side side) override {
    Bar& bar = Of(side);
    if (window_ != nullptr && bar.visible) {
      if (const auto info = Read(side)) bar.info = *info;
    }
    return bar.info;
  }
  void SetInfo(Side side, const ScrollInfo& info) override {
    Bar& bar = Of(side);
    const ScrollInfo before = Info(side);
    bar.info = KeptWithinRange(info);
    if (window_ == nullptr || !bar.visible) return;
    const bool moved =
        before.min == bar.info.min && before.max == bar.info.max && before.page == bar.info.page;
    if (!moved) {
      Write(side);
    } else if (before.position != bar.info.position) {
      functions_.setPosition(window_, NumberOf(side), bar.info.position, TRUE);
    }
  }
  void Enable(Side side, bool enabled) override {
    Of(side).enabled = enabled;
    if (window_ != nullptr && Of(side).visible) WriteEnabled(side);
  }
  void Show(Side side, bool visible) override {
    Bar& bar = Of(side);
    const bool was = bar.visible;
    if (was && !visible) Info(side);
    bar.visible = visible;
    if (window_ == nullptr) return;
    if (was != visible) functions_.show(window_, NumberOf(side), visible);
    // The window's size changed with that, and who heard of it may have set anything.
    if (window_ != nullptr && !was && bar.visible) Write(side);
  }
  void SetFlat(bool flat) override {
    if (window_ == nullptr || flat == flat_.has_value()) return;
    if (flat) {
      const auto found = FlatScrollFunctions::Find();
      if (!found || !found->Begin(window_)) return;
      flat_ = found;
      functions_ = flat_->Functions();
    } else {
      EndFlat();
    }
    for (const Side side : {Side::Horizontal, Side::Vertical}) {
      if (!Of(side).visible) continue;
      functions_.show(window_, NumberOf(side), TRUE);
      Write(side);
    }
  }
  Extent Thickness() override {
    if (window_ == nullptr) return {};
    const Density density = DensityOf(window_);
    return density.ToTwips(SIZE{density.Metric(SM_CXVSCROLL), density.Metric(SM_CYHSCROLL)});
  }

 private:
  struct Bar {
    ScrollInfo info;
    bool visible = false;
    bool enabled = true;
  };

  Bar& Of(Side side) { return bars_[static_cast<std::size_t>(side)]; }
  static int NumberOf(Side side) { return side == Side::Vertical ? SB_VERT : SB_HORZ; }
  static LONG StyleOf(Side side) { return side == Side::Vertical ? WS_VSCROLL : WS_HSCROLL; }

  /// None where the window never had the bar.
  std::optional<ScrollInfo> Read(Side side) const {
    const int number = NumberOf(side);
    SCROLLINFO read{};
    read.cbSize = sizeof read;
    read.fMask = SIF_PAGE | SIF_TRACKPOS;
    ScrollInfo info;
    if (!functions_.getInfo(window_, number, &read) ||
        !functions_.getRange(window_, number, &info.min, &info.max)) {
      return std::nullopt;
    }
    info.page = static_cast<std::int32_t>(read.nPage);
    info.position = functions_.getPosition(window_, number);
    info.trackPosition = read.nTrackPos;
    return info;
  }
  void Write(Side side) {
    const ScrollInfo info = Of(side).info;
    SCROLLINFO written{};
    written.cbSize = sizeof written;
    // A bar with nothing to scroll stays where it is.
    written.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    written.nMin = info.min;
    written.nMax = info.max;
    written.nPage = static_cast<UINT>(info.page);
    written.nPos = info.position;
    functions_.setInfo(window_, NumberOf(side), &written, TRUE);
    WriteEnabled(side);
  }
  void WriteEnabled(Side side) {
    functions_.enable(window_, static_cast<UINT>(NumberOf(side)),
                      Of(side).enabled ? ESB_ENABLE_BOTH : ESB_DISABLE_BOTH);
  }

  void EndFlat() {
    if (flat_) flat_->End(window_);
    flat_.reset();
    functions_ = UsualScrollFunctions();
  }

  MessageResponse ISubclass_MsgResponse(UINT message, LPARAM lParam) const {
    switch (message) {
      case WM_HSCROLL:
      case WM_VSCROLL:
        // Those with a handle are about a child that is a scroll bar.
        return lParam == 0 ? MessageResponse::Tell : MessageResponse::PassOn;
      case WM_MOUSEWHEEL:
        return WheelScrolls(SPI_GETWHEELSCROLLLINES) ? MessageResponse::Tell
                                                     : MessageResponse::PassOn;
      case WM_MOUSEHWHEEL:
        return WheelScrolls(SPI_GETWHEELSCROLLCHARS) ? MessageResponse::Tell
                                                     : MessageResponse::PassOn;
      default:
        return messages_->contains(message) ? MessageResponse::TellAndPassOn
                                            : MessageResponse::PassOn;
    }
  }
  LRESULT ISubclass_WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCDESTROY) {
      ::RemoveWindowSubclass(window, Subclass, reinterpret_cast<UINT_PTR>(this));
      window_ = nullptr;
    } else if (message == WM_DESTROY) {
      for (const Side side : {Side::Horizontal, Side::Vertical}) Info(side);
      EndFlat();
    }
    const MessageResponse response = ISubclass_MsgResponse(message, lParam);
    if (response != MessageResponse::PassOn) {
      // Who hears it may destroy this.
      const auto heard = onMessage;
      if (heard) heard({.id = message, .wParam = wParam, .lParam = lParam});
    }
    if (response == MessageResponse::Tell) return 0;
    return ::DefSubclassProc(window, message, wParam, lParam);
  }
  static LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR /*id*/, DWORD_PTR bars) {
    return reinterpret_cast<Bars*>(bars)->ISubclass_WindowProc(window, message, wParam, lParam);
  }

  HWND window_;
  RegisteredMessages messages_;
  ScrollFunctions functions_;
  /// There while the bars are flat.
  std::optional<FlatScrollFunctions> flat_;
  std::array<Bar, 2> bars_;
};

}  // namespace

std::unique_ptr<WindowScrollBars> WindowsScrollBars::Attach(Element& window) {
  const auto* const peer = dynamic_cast<const WindowsPeer*>(window.Peer());
  return std::make_unique<Bars>(peer != nullptr ? peer->Window() : nullptr, messages_);
}

CommonControlsVersion WindowsScrollBars::CommonControls() {
  const HMODULE library = ::GetModuleHandleW(L"comctl32.dll");
  const auto getVersion = library == nullptr
                              ? nullptr
                              : reinterpret_cast<DLLGETVERSIONPROC>(reinterpret_cast<void (*)()>(
                                    ::GetProcAddress(library, "DllGetVersion")));
  DLLVERSIONINFO version{};
  version.cbSize = sizeof version;
  if (getVersion == nullptr || FAILED(getVersion(&version))) return {};
  return {static_cast<int>(version.dwMajorVersion), static_cast<int>(version.dwMinorVersion)};
}

std::uint32_t WindowsScrollBars::RegisterMessage(std::string_view name) {
  const UINT number = ::RegisterWindowMessageA(ToAnsi(name).c_str());
  if (number != 0) messages_->insert(number);
  return number;
}

std::optional<std::int64_t> WindowsScrollBars::Ask(std::string_view windowClass,
                                                   std::string_view title, std::uint32_t message) {
  constexpr UINT Milliseconds = 1000;
  const HWND window = ::FindWindowA(ToAnsi(windowClass).c_str(), ToAnsi(title).c_str());
  DWORD_PTR answer = 0;
  if (window == nullptr ||
      ::SendMessageTimeoutA(window, message, 0, 0, SMTO_ABORTIFHUNG, Milliseconds, &answer) == 0) {
    return std::nullopt;
  }
  return static_cast<std::int64_t>(answer);
}

}  // namespace velkor
