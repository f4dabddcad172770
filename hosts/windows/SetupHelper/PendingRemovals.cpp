// hosts/windows/SetupHelper/PendingRemovals.cpp: reads the list, and writes what is left of it.
#include "hosts/windows/SetupHelper/PendingRemovals.h"

#include <string>

#include "platform/windows/system/WindowsRegistry.h"

namespace velkor {
namespace {

constexpr const wchar_t* Key = L"System\\CurrentControlSet\\Control\\Session Manager";
constexpr const wchar_t* Value = L"PendingFileRenameOperations";

}  // namespace

void ForgetPendingRemovals(const std::filesystem::path& folder) {
  HKEY opened = nullptr;
  constexpr REGSAM Rights = KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_WOW64_64KEY;
  if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, Key, 0, Rights, &opened) != ERROR_SUCCESS) return;
  const RegistryKey key(opened);
  DWORD size = 0;
  ::RegQueryValueExW(opened, Value, nullptr, nullptr, nullptr, &size);
  std::wstring list(size / sizeof(wchar_t), L'\0');
  if (list.empty() ||
      ::RegQueryValueExW(opened, Value, nullptr, nullptr, reinterpret_cast<BYTE*>(list.data()),
                         &size) != ERROR_SUCCESS) {
    return;
  }
  // Pairs of texts, each ended by a NUL: a file, and its new name, empty when it is to be removed.
  const std::wstring own = L"\\??\\" + folder.wstring();
  std::wstring left;
  for (std::size_t begin = 0; begin < list.size() && list[begin] != L'\0';) {
    const std::size_t name = list.find(L'\0', begin);
    const std::size_t end = name == list.npos ? name : list.find(L'\0', name + 1);
    if (end == list.npos) return;
    const bool isOwn = ::_wcsnicmp(list.c_str() + begin, own.c_str(), own.size()) == 0 &&
                       (list[begin + own.size()] == L'\\' || list[begin + own.size()] == L'\0');
    if (!isOwn) left.append(list, begin, end + 1 - begin);
    begin = end + 1;
  }
  if (left.empty()) {
    ::RegDeleteValueW(opened, Value);
    return;
  }
  left += L'\0';
  ::RegSetValueExW(opened, Value, 0, REG_MULTI_SZ, reinterpret_cast<const BYTE*>(left.data()),
                   static_cast<DWORD>(left.size() * sizeof(wchar_t)));
}

}  // namespace velkor
