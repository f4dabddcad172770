// hosts/windows/StandIn/Registration.cpp: entries below Software\Classes of the machine.
#include "hosts/windows/StandIn/Registration.h"

#include <array>
#include <string>

// After windows.h.
#include <objbase.h>

namespace velkor {
namespace {

const std::wstring Classes = L"Software\\Classes\\";

std::wstring ToText(const CLSID& id) {
  std::array<wchar_t, 40> text = {};
  ::StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return text.data();
}

bool Write(const std::wstring& key, const std::wstring& value) {
  const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  return ::RegSetKeyValueW(HKEY_LOCAL_MACHINE, (Classes + key).c_str(), nullptr, REG_SZ,
                           value.c_str(), bytes) == ERROR_SUCCESS;
}

void Remove(const std::wstring& key) {
  ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, (Classes + key).c_str());
}

bool IsFree(const std::wstring& programId) {
  HKEY key = nullptr;
  if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, (Classes + programId).c_str(), 0, KEY_READ, &key) !=
      ERROR_SUCCESS) {
    return true;
  }
  ::RegCloseKey(key);
  return false;
}

bool IsOurs(const std::wstring& programId, const CLSID& id) {
  std::array<wchar_t, 64> text = {};
  DWORD bytes = sizeof(text);
  return ::RegGetValueW(HKEY_LOCAL_MACHINE, (Classes + programId + L"\\CLSID").c_str(), nullptr,
                        RRF_RT_REG_SZ, nullptr, text.data(), &bytes) == ERROR_SUCCESS &&
         ToText(id) == text.data();
}

std::wstring ProgramPath() {
  std::wstring path(1024, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

}  // namespace

bool Register(const ServedClass& served) {
  const std::wstring name = served.programId;
  if (!IsFree(name) && !IsOurs(name, served.id)) return false;
  const std::wstring id = ToText(served.id);
  const std::wstring clsid = L"CLSID\\" + id;
  bool done = Write(name + L"\\CLSID", id) &&
              Write(clsid + L"\\LocalServer32", L"\"" + ProgramPath() + L"\"") &&
              Write(clsid + L"\\VersionIndependentProgID", name) &&
              Write(clsid + L"\\ProgID", served.currentVersion ? served.currentVersion : name);
  if (done && served.currentVersion != nullptr) {
    done = Write(name + L"\\CurVer", served.currentVersion) &&
           Write(std::wstring(served.currentVersion) + L"\\CLSID", id);
  }
  return done;
}

void Unregister(const ServedClass& served) {
  Remove(L"CLSID\\" + ToText(served.id));
  if (IsOurs(served.programId, served.id)) Remove(served.programId);
  if (served.currentVersion != nullptr && IsOurs(served.currentVersion, served.id)) {
    Remove(served.currentVersion);
  }
}

}  // namespace velkor
