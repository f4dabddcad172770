// platform/windows/system/WindowsSettings.cpp: one registry key for each application and section.
#include "platform/windows/system/WindowsSettings.h"

#include "platform/windows/system/Wide.h"
#include "platform/windows/system/WindowsRegistry.h"
#include "support/RegIO.h"
#include "values/Error.h"

namespace velkor {
namespace {

std::string KeyOf(std::string_view application, std::string_view section) {
  std::string path = "Software\\VB and VBA Program Settings";
  for (const std::string_view name : {application, section}) {
    if (!name.empty()) path.append("\\").append(name);
  }
  return path;
}

}  // namespace

std::string WindowsSettings::Get(std::string_view application, std::string_view section,
                                 std::string_view key, std::string_view fallback) {
  HKEY opened = nullptr;
  if (::RegOpenKeyExW(HKEY_CURRENT_USER, ToWide(KeyOf(application, section)).c_str(), 0,
                      KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS) {
    return std::string(fallback);
  }
  const RegistryKey owner(opened);
  const RegistryAnswer answer = ReadWholeValue(opened, key);
  return answer.code == registry_codes::Success ? answer.data : std::string(fallback);
}

void WindowsSettings::Save(std::string_view application, std::string_view section,
                           std::string_view key, std::string_view value) {
  const std::string path = KeyOf(application, section);
  HKEY opened = nullptr;
  LSTATUS code = ::RegCreateKeyExW(HKEY_CURRENT_USER, ToWide(path).c_str(), 0, nullptr, 0,
                                   KEY_SET_VALUE, nullptr, &opened, nullptr);
  if (code == ERROR_SUCCESS) {
    const RegistryKey owner(opened);
    const std::wstring text = ToWide(value);
    code = ::RegSetValueExW(opened, ToWide(key).c_str(), 0, REG_SZ,
                            reinterpret_cast<const BYTE*>(text.c_str()),
                            static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  }
  if (code != ERROR_SUCCESS) {
    throw Error(errors::InvalidProcedureCall, "Cannot write the setting " + path + '\\' +
                                                  std::string(key) + ": " + RegIO::ErrorText(code));
  }
}

}  // namespace velkor
