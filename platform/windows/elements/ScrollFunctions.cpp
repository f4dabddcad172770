// platform/windows/elements/ScrollFunctions.cpp: the flat functions by their names in comctl32.dll.
#include "platform/windows/elements/ScrollFunctions.h"

// After windows.h.
#include <commctrl.h>

namespace velkor {
namespace {

/// @return whether the library has it
template <typename Function>
bool Resolve(HMODULE library, const char* name, Function& function) {
  function =
      reinterpret_cast<Function>(reinterpret_cast<void (*)()>(::GetProcAddress(library, name)));
  return function != nullptr;
}

}  // namespace

ScrollFunctions UsualScrollFunctions() {
  return {.setInfo = ::SetScrollInfo,
          .getInfo = ::GetScrollInfo,
          .setPosition = ::SetScrollPos,
          .getPosition = ::GetScrollPos,
          .getRange = ::GetScrollRange,
          .enable = ::EnableScrollBar,
          .show = ::ShowScrollBar};
}

std::optional<FlatScrollFunctions> FlatScrollFunctions::Find() {
  // This program or library imports from it, so that it is loaded for as long as this is.
  const HMODULE library = ::GetModuleHandleW(L"comctl32.dll");
  if (library == nullptr) return std::nullopt;
  FlatScrollFunctions found;
  ScrollFunctions& flat = found.functions_;
  const bool all = Resolve(library, "FlatSB_SetScrollInfo", flat.setInfo) &&
                   Resolve(library, "FlatSB_GetScrollInfo", flat.getInfo) &&
                   Resolve(library, "FlatSB_SetScrollPos", flat.setPosition) &&
                   Resolve(library, "FlatSB_GetScrollPos", flat.getPosition) &&
                   Resolve(library, "FlatSB_GetScrollRange", flat.getRange) &&
                   Resolve(library, "FlatSB_EnableScrollBar", flat.enable) &&
                   Resolve(library, "FlatSB_ShowScrollBar", flat.show) &&
                   Resolve(library, "FlatSB_SetScrollProp", found.setProperty_) &&
                   Resolve(library, "InitializeFlatSB", found.initialize_) &&
                   Resolve(library, "UninitializeFlatSB", found.uninitialize_);
  return all ? std::optional(found) : std::nullopt;
}

bool FlatScrollFunctions::Begin(HWND window) const {
  if (!initialize_(window)) return false;
  // From version 6 on bars look as the theme says, whatever they are told.
  for (const UINT style : {WSB_PROP_HSTYLE, WSB_PROP_VSTYLE}) {
    setProperty_(window, style, FSB_FLAT_MODE, TRUE);
  }
  return true;
}

void FlatScrollFunctions::End(HWND window) const {
  for (const UINT style : {WSB_PROP_HSTYLE, WSB_PROP_VSTYLE}) {
    setProperty_(window, style, FSB_REGULAR_MODE, FALSE);
  }
  uninitialize_(window);
}

}  // namespace velkor
