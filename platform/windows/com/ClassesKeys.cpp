// platform/windows/com/ClassesKeys.cpp: each key is opened, used and closed by one function.
#include "platform/windows/com/ClassesKeys.h"

#include <algorithm>
#include <array>

#include "platform/windows/com/ComError.h"
#include "platform/windows/system/Wide.h"
#include "platform/windows/system/WindowsRegistry.h"

namespace velkor {
namespace {

constexpr bool Is64Bit = sizeof(void*) == 8;
constexpr const char* NoteBegins = "made for ";

void CheckCode(LSTATUS code, const std::string& doing) {
  if (code == ERROR_SUCCESS) return;
  throw Error(code, doing + ": " + SystemMessage(static_cast<DWORD>(code)), "Registration");
}

REGSAM View(WordSize seenBy) {
  if (seenBy == WordSize::Own) return 0;
  return Is64Bit ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
}

HKEY Root(Registration registration) {
  return registration == Registration::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

std::wstring Path(const std::string& key) {
  return ToWide(key.empty() ? "Software\\Classes" : "Software\\Classes\\" + key);
}

/// Null where there is no such key.
RegistryKey OpenKey(Registration registration, const std::string& key, REGSAM rights) {
  HKEY opened = nullptr;
  const LSTATUS code = ::RegOpenKeyExW(Root(registration), Path(key).c_str(), 0, rights, &opened);
  if (code != ERROR_FILE_NOT_FOUND) {
    CheckCode(code, "The registry key " + key + " cannot be opened");
  }
  return RegistryKey(opened);
}

struct CreatedKey {
  RegistryKey key;
  bool isNew;
};

CreatedKey CreateKey(Registration registration, const std::string& key, REGSAM rights) {
  HKEY opened = nullptr;
  DWORD disposition = 0;
  CheckCode(::RegCreateKeyExW(Root(registration), Path(key).c_str(), 0, nullptr,
                              REG_OPTION_NON_VOLATILE, rights, nullptr, &opened, &disposition),
            "The registry key " + key + " cannot be written");
  return {RegistryKey(opened), disposition == REG_CREATED_NEW_KEY};
}

LSTATUS SetText(HKEY key, const std::wstring& name, const std::wstring& text) {
  return ::RegSetValueExW(key, name.empty() ? nullptr : name.c_str(), 0, REG_SZ,
                          reinterpret_cast<const BYTE*>(text.c_str()),
                          static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

bool IsEmpty(HKEY key) {
  DWORD keys = 0;
  DWORD values = 0;
  const LSTATUS code = ::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr,
                                          &values, nullptr, nullptr, nullptr, nullptr);
  return code == ERROR_SUCCESS && keys == 0 && values == 0;
}

/// Whether it holds a note; longer names than a note's are no notes.
bool HasNote(HKEY key) {
  for (DWORD index = 0;; ++index) {
    std::array<wchar_t, 128> name{};
    auto length = static_cast<DWORD>(name.size());
    const LSTATUS code =
        ::RegEnumValueW(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (code != ERROR_SUCCESS && code != ERROR_MORE_DATA) return false;
    if (ToUtf8(std::wstring_view(name.data(), length)).starts_with(NoteBegins)) return true;
  }
}

void RemoveIfEmpty(Registration registration, const std::string& key, REGSAM view) {
  const RegistryKey opened = OpenKey(registration, key, KEY_READ | view);
  if (opened == nullptr || !IsEmpty(opened.get())) return;
  CheckCode(::RegDeleteKeyExW(Root(registration), Path(key).c_str(), view, 0),
            "The registry key " + key + " cannot be removed");
}

/// A key that all makers share, and whose view of the registry it is named in.
struct SharedKey {
  const char* name;
  REGSAM view;
};

/// From the outer to the inner, the first is Software\Classes itself. Below the second one 64-bit
/// Windows keeps what 32-bit programs see.
constexpr std::array<SharedKey, 5> Shared = {{{"", KEY_WOW64_64KEY},
                                              {"Wow6432Node", KEY_WOW64_64KEY},
                                              {"CLSID", 0},
                                              {"Interface", 0},
                                              {"TypeLib", 0}}};

bool IsHere(const SharedKey& key) {
  BOOL isEmulated = FALSE;
  if (!Is64Bit) ::IsWow64Process(::GetCurrentProcess(), &isEmulated);
  return isEmulated || &key != &Shared[1];
}

std::wstring Note(const std::string& owner) {
  return ToWide(NoteBegins + owner + (Is64Bit ? " win64" : " win32"));
}

}  // namespace

void WriteClasses(Registration registration, std::span<const ClassesValue> values) {
  for (const auto& [path, name, text] : values) {
    const RegistryKey key = CreateKey(registration, path, KEY_WRITE).key;
    CheckCode(SetText(key.get(), ToWide(name), ToWide(text)),
              "The registry value " + path + "\\" + name + " cannot be written");
  }
}

void RemoveClasses(Registration registration, const std::string& key, WordSize seenBy) {
  // An empty key would be all classes.
  if (key.empty()) throw Error(errors::InvalidProcedureCall, "No registry key", "Registration");
  const REGSAM view = View(seenBy);
  const RegistryKey opened = OpenKey(registration, key, DELETE | KEY_READ | KEY_WRITE | view);
  if (opened == nullptr) return;
  const std::string failed = "The registry key " + key + " cannot be removed";
  CheckCode(::RegDeleteTreeW(opened.get(), nullptr), failed);
  CheckCode(::RegDeleteKeyExW(Root(registration), Path(key).c_str(), view, 0), failed);
}

void RemoveEmptyClasses(Registration registration, const std::string& key) {
  RemoveIfEmpty(registration, key, 0);
}

bool HasClasses(Registration registration, const std::string& key, WordSize seenBy) {
  return OpenKey(registration, key, KEY_READ | View(seenBy)) != nullptr;
}

bool HasKeysBesides(Registration registration, const std::string& key,
                    std::span<const std::string_view> named) {
  const RegistryKey opened = OpenKey(registration, key, KEY_READ);
  if (opened == nullptr) return false;
  for (DWORD index = 0;; ++index) {
    // The longest name that a key can have.
    std::array<wchar_t, 256> name{};
    auto length = static_cast<DWORD>(name.size());
    if (::RegEnumKeyExW(opened.get(), index, name.data(), &length, nullptr, nullptr, nullptr,
                        nullptr) != ERROR_SUCCESS) {
      return false;
    }
    const std::string found = ToUtf8(std::wstring_view(name.data(), length));
    if (std::find(named.begin(), named.end(), found) == named.end()) return true;
  }
}

void ClaimSharedKeys(Registration registration, const std::string& owner) {
  for (const SharedKey& each : Shared) {
    if (!IsHere(each)) continue;
    const auto& [name, view] = each;
    const CreatedKey shared = CreateKey(registration, name, KEY_READ | KEY_WRITE | view);
    if (!shared.isNew && !HasNote(shared.key.get())) continue;
    CheckCode(SetText(shared.key.get(), Note(owner), {}),
              std::string("The registry key ") + name + " cannot be written");
  }
}

void DisclaimSharedKeys(Registration registration, const std::string& owner) {
  for (auto each = Shared.rbegin(); each != Shared.rend(); ++each) {
    if (!IsHere(*each)) continue;
    const auto& [name, view] = *each;
    const RegistryKey shared = OpenKey(registration, name, KEY_READ | view);
    if (shared == nullptr || !HasNote(shared.get())) continue;
    const RegistryKey writable = OpenKey(registration, name, KEY_WRITE | view);
    const LSTATUS code = ::RegDeleteValueW(writable.get(), Note(owner).c_str());
    // Another's note keeps it.
    if (code == ERROR_FILE_NOT_FOUND) continue;
    CheckCode(code, std::string("The registry key ") + name + " cannot be written");
    RemoveIfEmpty(registration, name, view);
  }
}

}  // namespace velkor
