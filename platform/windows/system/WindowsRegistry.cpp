// platform/windows/system/WindowsRegistry.cpp: opening, asking for the size, reading.
#include "platform/windows/system/WindowsRegistry.h"

#include "platform/windows/system/AnsiText.h"
#include "platform/windows/system/Wide.h"

namespace velkor {
namespace {

HKEY ToWindows(RootKey root) {
  switch (root) {
    case RootKey::ClassesRoot:
      return HKEY_CLASSES_ROOT;
    case RootKey::CurrentUser:
      return HKEY_CURRENT_USER;
    case RootKey::LocalMachine:
      return HKEY_LOCAL_MACHINE;
    case RootKey::Users:
      return HKEY_USERS;
    case RootKey::PerformanceData:
      return HKEY_PERFORMANCE_DATA;
    case RootKey::CurrentConfig:
      return HKEY_CURRENT_CONFIG;
    case RootKey::DynData:
      return HKEY_DYN_DATA;
  }
  return nullptr;
}

/// Asks a value's size, then the value; `query` is one of the two functions that read values.
template <typename Query>
LSTATUS ReadBytes(const Query& query, DWORD& type, std::string& bytes) {
  LSTATUS code = ERROR_MORE_DATA;
  // The value may grow between asking for its size and reading it.
  for (int attempt = 0; code == ERROR_MORE_DATA && attempt < 10; ++attempt) {
    DWORD size = 0;
    code = query(&type, nullptr, &size);
    if (code != ERROR_SUCCESS && code != ERROR_MORE_DATA) break;
    bytes.assign(size, ' ');
    code = query(&type, reinterpret_cast<BYTE*>(bytes.data()), &size);
    if (code == ERROR_SUCCESS) bytes.resize(size);
  }
  return code;
}

bool IsText(DWORD type) {
  return type == REG_SZ || type == REG_EXPAND_SZ;
}

RegistryAnswer ReadAnsi(HKEY key, const std::string& name, DWORD& type) {
  RegistryAnswer answer;
  const auto query = [&](DWORD* kind, BYTE* room, DWORD* size) {
    return ::RegQueryValueExA(key, name.c_str(), nullptr, kind, room, size);
  };
  answer.code = ReadBytes(query, type, answer.data);
  if (answer.code != ERROR_SUCCESS) return {answer.code, {}};
  if (!IsText(type)) return answer;
  while (answer.data.ends_with('\0')) answer.data.pop_back();
  return {answer.code, FromAnsi(answer.data)};
}

}  // namespace

RegistryAnswer ReadWholeValue(HKEY key, std::string_view name) {
  RegistryAnswer answer;
  DWORD type = 0;
  const std::wstring wide = ToWide(name);
  const auto query = [&](DWORD* kind, BYTE* room, DWORD* size) {
    return ::RegQueryValueExW(key, wide.c_str(), nullptr, kind, room, size);
  };
  answer.code = ReadBytes(query, type, answer.data);
  if (answer.code != ERROR_SUCCESS) return {answer.code, {}};
  if (!IsText(type)) return answer;
  std::wstring text(answer.data.size() / sizeof(wchar_t), L'\0');
  answer.data.copy(reinterpret_cast<char*>(text.data()), text.size() * sizeof(wchar_t));
  while (text.ends_with(L'\0')) text.pop_back();
  return {answer.code, ToUtf8(text)};
}

RegistryAnswer WindowsRegistry::QueryValue(RootKey root, std::string_view subKey,
                                           std::string_view name) {
  const auto ansiPath = WholeInAnsi(subKey);
  const auto ansiName = WholeInAnsi(name);
  HKEY opened = nullptr;
  // Names may have characters that the ANSI code page lacks.
  const LSTATUS code =
      ansiPath
          ? ::RegOpenKeyExA(ToWindows(root), ansiPath->c_str(), 0, KEY_QUERY_VALUE, &opened)
          : ::RegOpenKeyExW(ToWindows(root), ToWide(subKey).c_str(), 0, KEY_QUERY_VALUE, &opened);
  if (code != ERROR_SUCCESS) return {code, {}};
  const RegistryKey key(opened);
  if (!ansiName) return ReadWholeValue(key.get(), name);
  DWORD type = 0;
  const RegistryAnswer answer = ReadAnsi(key.get(), *ansiName, type);
  if (!IsText(type)) return answer;
  // The ANSI function puts similar letters in place of those that the code page lacks, and does not
  // tell.
  const RegistryAnswer whole = ReadWholeValue(key.get(), name);
  return WholeInAnsi(whole.data) ? answer : whole;
}

}  // namespace velkor
