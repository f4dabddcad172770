// platform/windows/WindowsDialogs.cpp: file names that cross the ANSI code page unharmed, or not.
#include "platform/windows/WindowsDialogs.h"

#include <cstdio>
#include <vector>

#include "platform/windows/AnsiText.h"
#include "platform/windows/DialogOwner.h"
#include "platform/windows/Wide.h"
#include "support/values/Error.h"
#include "support/values/Text.h"
// After windows.h.
#include <commdlg.h>
#include <dlgs.h>
#include <shlobj.h>

namespace velkor {
namespace {

constexpr const char* Source = "Common dialog";

bool IsAnsi(std::wstring_view text) {
  return WholeInAnsi(ToUtf8(text)).has_value();
}

/// "Data(*.xml)|*.xml|All|*.*" as names and patterns that each end in a zero, and one more.
std::string FilterPairs(const std::string& filter) {
  const std::vector<std::string> parts = Split(filter, "|");
  std::string pairs;
  for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
    // An empty one would end the list.
    if (parts[i].empty() || parts[i + 1].empty()) continue;
    pairs += ToAnsi(parts[i]) + '\0' + ToAnsi(parts[i + 1]) + '\0';
  }
  return pairs + '\0';
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

/// What the user chose, before it crosses the code page.
struct Choice {
  std::wstring typed;
  std::wstring folder;
};

std::wstring FolderOf(HWND dialog) {
  const auto size = ::SendMessageW(dialog, CDM_GETFOLDERIDLIST, 0, 0);
  if (size <= 0) return {};
  std::vector<BYTE> list(static_cast<std::size_t>(size));
  wchar_t folder[MAX_PATH];
  ::SendMessageW(dialog, CDM_GETFOLDERIDLIST, list.size(), reinterpret_cast<LPARAM>(list.data()));
  return ::SHGetPathFromIDListW(reinterpret_cast<LPCITEMIDLIST>(list.data()), folder) ? folder
                                                                                      : L"";
}

std::wstring TypedIn(HWND dialog) {
  HWND line = ::GetDlgItem(dialog, edt1);
  if (line == nullptr) line = ::GetDlgItem(dialog, cmb13);
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(line)) + 1, L'\0');
  const int length = ::GetWindowTextW(line, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

/// Without this the dialog would hand out the nearest characters that the code page has, which may
/// be the name of another file.
UINT_PTR CALLBACK Watch(HWND child, UINT message, WPARAM /*wParam*/, LPARAM lParam) {
  if (message != WM_NOTIFY) return 0;
  const auto& notice = *reinterpret_cast<const OFNOTIFYA*>(lParam);
  if (notice.hdr.code != CDN_FILEOK) return 0;
  auto& choice = *reinterpret_cast<Choice*>(notice.lpOFN->lCustData);
  const HWND dialog = ::GetParent(child);
  choice.typed = TypedIn(dialog);
  choice.folder = FolderOf(dialog);
  return 0;
}

/// Whether a path lies in the chosen folder, as far as the code page tells folders apart.
bool LiesIn(const std::string& path, const std::wstring& folder) {
  std::string bytes(folder.size() * 4, '\0');
  const int length =
      ::WideCharToMultiByte(CP_ACP, 0, folder.c_str(), static_cast<int>(folder.size()),
                            bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
  return path.starts_with(bytes.substr(0, static_cast<std::size_t>(length)));
}

using FileFunction = BOOL(WINAPI*)(OPENFILENAMEA*);

std::string Show(FileFunction function, const FileDialog& dialog, DialogOwner& owner) {
  // The ANSI functions write no more than this many bytes.
  constexpr std::size_t LongestName = 0x7FFF;
  const std::string filter = FilterPairs(dialog.filter);
  const std::string title = ToAnsi(dialog.title);
  const std::string extension = ToAnsi(dialog.defaultExtension);
  std::vector<char> name(LongestName + 1, '\0');
  Choice choice;

  OPENFILENAMEA request{};
  request.lStructSize = sizeof request;
  request.lpstrFilter = filter.size() > 1 ? filter.c_str() : nullptr;
  request.nFilterIndex = 1;
  request.lpstrFile = name.data();
  request.nMaxFile = LongestName;
  request.lpstrTitle = title.empty() ? nullptr : title.c_str();
  request.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
  request.Flags = dialog.flags | OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_ENABLEHOOK | OFN_ENABLESIZING;
  request.lpfnHook = Watch;
  request.lCustData = reinterpret_cast<LPARAM>(&choice);

  const ModalScope modal(owner);
  request.hwndOwner = modal.Window();
  if (!function(&request)) {
    const DWORD code = ::CommDlgExtendedError();
    if (code == 0) return {};
    FailBecauseOf(code, "file");
  }
  const std::string chosen = name.data();
  const bool lost = chosen.find('?') != std::string::npos || !IsAnsi(choice.typed) ||
                    (!IsAnsi(choice.folder) && LiesIn(chosen, choice.folder));
  if (lost) {
    throw Error(errors::BadFileName,
                "The name \"" + ToUtf8(choice.typed) + "\" or its folder \"" +
                    ToUtf8(choice.folder) +
                    "\" has characters that this system's code page lacks. Please choose another.",
                Source);
  }
  return FromAnsi(chosen);
}

}  // namespace

std::string WindowsCommonDialogs::ShowOpen(const FileDialog& dialog) {
  return Show(::GetOpenFileNameA, dialog, owner_);
}

std::string WindowsCommonDialogs::ShowSave(const FileDialog& dialog) {
  return Show(::GetSaveFileNameA, dialog, owner_);
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
