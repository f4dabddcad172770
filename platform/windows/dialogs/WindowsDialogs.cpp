// platform/windows/dialogs/WindowsDialogs.cpp: the dialogs filled, shown, and their answers.
#include "platform/windows/dialogs/WindowsDialogs.h"

#include <cstdio>
#include <vector>

#include "platform/windows/system/DialogOwner.h"
#include "platform/windows/system/Wide.h"
#include "values/Error.h"
#include "values/Text.h"
// After windows.h.
#include <commdlg.h>

namespace velkor {
namespace {

constexpr const char* Source = "Common dialog";

/// "Data(*.xml)|*.xml|All|*.*" as names and patterns that each end in a zero, and one more.
std::wstring FilterPairs(const std::string& filter) {
  const std::vector<std::string> parts = Split(filter, "|");
  std::wstring pairs;
  for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
    // An empty one would end the list.
    if (parts[i].empty() || parts[i + 1].empty()) continue;
    pairs += ToWide(parts[i]) + L'\0' + ToWide(parts[i + 1]) + L'\0';
  }
  return pairs + L'\0';
}

[[noreturn]] void FailBecauseOf(DWORD code, const char* what) {
  if (code == FNERR_BUFFERTOOSMALL) {
    throw Error(errors::BadFileName, "The name of the file is too long.", Source);
  }
  if (code == FNERR_INVALIDFILENAME) {
    throw Error(errors::BadFileName, "The name of the file is not valid.", Source);
  }
  char text[96];
  std::snprintf(text, sizeof text, "The %s dialog failed (common dialog error 0x%04lX).", what,
                static_cast<unsigned long>(code));
  throw Error(errors::InvalidProcedureCall, text, Source);
}

using FileFunction = BOOL(WINAPI*)(OPENFILENAMEW*);

std::string Show(FileFunction function, const FileDialog& dialog, DialogOwner& owner) {
  // As long as a path can be.
  constexpr std::size_t LongestName = 0x7FFF;
  const std::wstring filter = FilterPairs(dialog.filter);
  const std::wstring title = ToWide(dialog.title);
  const std::wstring extension = ToWide(dialog.defaultExtension);
  std::vector<wchar_t> name(LongestName + 1, L'\0');

  OPENFILENAMEW request{};
  request.lStructSize = sizeof request;
  request.lpstrFilter = filter.size() > 1 ? filter.c_str() : nullptr;
  request.nFilterIndex = 1;
  request.lpstrFile = name.data();
  request.nMaxFile = LongestName;
  request.lpstrTitle = title.empty() ? nullptr : title.c_str();
  request.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
  request.Flags = dialog.flags | OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_ENABLESIZING;

  const ModalScope modal(owner);
  request.hwndOwner = modal.Window();
  if (function(&request)) return ToUtf8(name.data());
  const DWORD code = ::CommDlgExtendedError();
  if (code != 0) FailBecauseOf(code, "file");
  return {};
}

}  // namespace

std::string WindowsCommonDialogs::ShowOpen(const FileDialog& dialog) {
  return Show(::GetOpenFileNameW, dialog, owner_);
}

std::string WindowsCommonDialogs::ShowSave(const FileDialog& dialog) {
  return Show(::GetSaveFileNameW, dialog, owner_);
}

std::optional<Colour> WindowsCommonDialogs::ShowColour(Colour current) {
  const ModalScope modal(owner_);
  CHOOSECOLORA request{};
  request.lStructSize = sizeof request;
  request.hwndOwner = modal.Window();
  request.rgbResult = RGB(current.Red(), current.Green(), current.Blue());
  request.lpCustColors = customColours_.data();
  request.Flags = CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR;
  if (::ChooseColorA(&request)) {
    return Colour::FromRgb(GetRValue(request.rgbResult), GetGValue(request.rgbResult),
                           GetBValue(request.rgbResult));
  }
  const DWORD code = ::CommDlgExtendedError();
  if (code != 0) FailBecauseOf(code, "colour");
  return std::nullopt;
}

}  // namespace velkor
