// platform/windows/system/WindowDensity.cpp: finds the system's functions by their names.
#include "platform/windows/system/WindowDensity.h"

namespace velkor {
namespace {

/// The property of a window that names its dots to the inch.
constexpr const wchar_t* DensityProperty = L"VelkorDensity";

/// Null where the system is older than the function.
template <typename Function>
Function* UserFunction(const char* name) {
  const HMODULE library = ::GetModuleHandleW(L"user32.dll");
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

UINT ScreenDots() {
  const HDC screen = ::GetDC(nullptr);
  const int dots = ::GetDeviceCaps(screen, LOGPIXELSX);
  ::ReleaseDC(nullptr, screen);
  return dots > 0 ? static_cast<UINT>(dots) : USER_DEFAULT_SCREEN_DPI;
}

/// A length of the screen at another density.
int Scaled(int length, UINT dots) {
  return ::MulDiv(length, static_cast<int>(dots), static_cast<int>(ScreenDots()));
}

}  // namespace

UINT DotsPerInch(HWND window) {
  if (window == nullptr) return ScreenDots();
  for (HWND each = window; each != nullptr; each = ::GetAncestor(each, GA_PARENT)) {
    if (const HANDLE kept = ::GetPropW(each, DensityProperty)) {
      return static_cast<UINT>(reinterpret_cast<UINT_PTR>(kept));
    }
  }
  auto* const ask = UserFunction<decltype(::GetDpiForWindow)>("GetDpiForWindow");
  const UINT dots = ask == nullptr ? 0 : ask(window);
  return dots > 0 ? dots : ScreenDots();
}

void KeepDotsPerInch(HWND window, UINT dots) {
  if (dots == 0) {
    ::RemovePropW(window, DensityProperty);
  } else {
    ::SetPropW(window, DensityProperty, reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(dots)));
  }
}

int SystemMetric(int index, UINT dots) {
  auto* const ask = UserFunction<decltype(::GetSystemMetricsForDpi)>("GetSystemMetricsForDpi");
  return ask != nullptr ? ask(index, dots) : Scaled(::GetSystemMetrics(index), dots);
}

LOGFONTW MessageFont(UINT dots) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  auto* const ask =
      UserFunction<decltype(::SystemParametersInfoForDpi)>("SystemParametersInfoForDpi");
  if (ask == nullptr || !ask(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0, dots)) {
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    metrics.lfMessageFont.lfHeight = Scaled(metrics.lfMessageFont.lfHeight, dots);
  }
  return metrics.lfMessageFont;
}

RECT AroundArea(RECT area, DWORD style, DWORD extendedStyle, UINT dots) {
  auto* const ask = UserFunction<decltype(::AdjustWindowRectExForDpi)>("AdjustWindowRectExForDpi");
  if (ask != nullptr) {
    ask(&area, style, FALSE, extendedStyle, dots);
  } else {
    ::AdjustWindowRectEx(&area, style, FALSE, extendedStyle);
  }
  return area;
}

void KeepDialogUnscaled(HWND dialog) {
  auto* const set =
      UserFunction<decltype(::SetDialogDpiChangeBehavior)>("SetDialogDpiChangeBehavior");
  if (set != nullptr) set(dialog, DDC_DISABLE_ALL, DDC_DISABLE_ALL);
}

AwarenessScope::AwarenessScope(HWND window) {
  auto* const ask =
      UserFunction<decltype(::GetWindowDpiAwarenessContext)>("GetWindowDpiAwarenessContext");
  auto* const set =
      UserFunction<decltype(::SetThreadDpiAwarenessContext)>("SetThreadDpiAwarenessContext");
  if (window == nullptr || ask == nullptr || set == nullptr) return;
  before_ = set(ask(window));
}

AwarenessScope::~AwarenessScope() {
  if (before_ != nullptr) {
    UserFunction<decltype(::SetThreadDpiAwarenessContext)>("SetThreadDpiAwarenessContext")(before_);
  }
}

}  // namespace velkor
