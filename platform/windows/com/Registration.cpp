// platform/windows/com/Registration.cpp: keys of classes and type libraries.
#include "platform/windows/com/Registration.h"

#include <array>

#include "platform/windows/com/ComError.h"
#include "platform/windows/com/Variant.h"
#include "platform/windows/system/WindowsRegistry.h"

// The cross compiler's import library has these, its headers do not.
extern "C" {
HRESULT STDAPICALLTYPE RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* help);
HRESULT STDAPICALLTYPE UnRegisterTypeLibForUser(REFGUID id, WORD major, WORD minor, LCID locale,
                                                SYSKIND system);
}

namespace velkor {
namespace {

void CheckCode(LSTATUS code, const std::string& doing) {
  if (code == ERROR_SUCCESS) return;
  throw Error(code, doing + ": " + SystemMessage(static_cast<DWORD>(code)), "Registration");
}

HKEY Root(Registration registration) {
  return registration == Registration::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

std::wstring Path(const std::string& key) {
  return ToWide("Software\\Classes\\" + key);
}

bool IsThere(Registration registration, const std::string& key) {
  HKEY opened = nullptr;
  const LSTATUS code = ::RegOpenKeyExW(Root(registration), Path(key).c_str(), 0, KEY_READ, &opened);
  const RegistryKey closing(opened);
  return code != ERROR_FILE_NOT_FOUND;
}

RegistryKey CreateKey(Registration registration, const std::string& key) {
  HKEY opened = nullptr;
  CheckCode(::RegCreateKeyExW(Root(registration), Path(key).c_str(), 0, nullptr,
                              REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &opened, nullptr),
            "The registry key " + key + " cannot be written");
  return RegistryKey(opened);
}

ComPtr<ITypeLib> LoadTypes(const std::string& module) {
  ComPtr<ITypeLib> library;
  Check(::LoadTypeLibEx(ToWide(module).c_str(), REGKIND_NONE, &library),
        "The type library of " + module + " cannot be read");
  return library;
}

}  // namespace

void WriteClasses(Registration registration, std::span<const ClassesValue> values) {
  for (const auto& [path, name, text] : values) {
    const RegistryKey key = CreateKey(registration, path);
    const std::wstring wide = ToWide(text);
    CheckCode(::RegSetValueExW(key.get(), name.empty() ? nullptr : ToWide(name).c_str(), 0, REG_SZ,
                               reinterpret_cast<const BYTE*>(wide.c_str()),
                               static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t))),
              "The registry value " + path + "\\" + name + " cannot be written");
  }
}

void RemoveClasses(Registration registration, const std::string& key) {
  // An empty key would be all classes.
  if (key.empty()) throw Error(errors::InvalidProcedureCall, "No registry key", "Registration");
  const LSTATUS code = ::RegDeleteTreeW(Root(registration), Path(key).c_str());
  if (code != ERROR_FILE_NOT_FOUND) {
    CheckCode(code, "The registry key " + key + " cannot be removed");
  }
}

void RegisterTypes(Registration registration, const std::string& module) {
  const ComPtr<ITypeLib> library = LoadTypes(module);
  std::wstring path = ToWide(module);
  Check(registration == Registration::User
            ? ::RegisterTypeLibForUser(library.Get(), path.data(), nullptr)
            : ::RegisterTypeLib(library.Get(), path.data(), nullptr),
        "The type library of " + module + " cannot be registered");
}

void UnregisterTypes(Registration registration, const std::string& module) {
  const ComPtr<ITypeLib> library = LoadTypes(module);
  TLIBATTR* found = nullptr;
  Check(library->GetLibAttr(&found), "The type library of " + module + " cannot be read");
  const TLIBATTR types = *found;
  library->ReleaseTLibAttr(found);
  if (!IsThere(registration, "TypeLib\\" + ToText(types.guid))) return;
  const auto unregister =
      registration == Registration::User ? ::UnRegisterTypeLibForUser : ::UnRegisterTypeLib;
  const HRESULT result =
      unregister(types.guid, types.wMajorVerNum, types.wMinorVerNum, types.lcid, types.syskind);
  Check(result, "The type library of " + module + " cannot be unregistered");
}

ClassRegistration DescribeClass(const GUID& id, const std::string& name,
                                const std::string& programId, const GUID& types,
                                const std::string& module) {
  const std::string key = "CLSID\\" + ToText(id);
  return {module,
          {programId, key},
          {{programId, "", name},
           {programId + "\\CLSID", "", ToText(id)},
           {key, "", name},
           {key + "\\ProgID", "", programId},
           {key + "\\Programmable", "", ""},
           {key + "\\TypeLib", "", ToText(types)},
           {key + "\\Version", "", "1.0"}}};
}

void Register(Registration registration, const ClassRegistration& known) {
  try {
    WriteClasses(registration, known.values);
    RegisterTypes(registration, known.module);
  } catch (const Error&) {
    try {
      Unregister(registration, known);
    } catch (const Error&) {
      // The first failure is the one to tell.
    }
    throw;
  }
}

void Unregister(Registration registration, const ClassRegistration& known) {
  for (const std::string& key : known.keys) RemoveClasses(registration, key);
  UnregisterTypes(registration, known.module);
}

std::string ToText(const GUID& id) {
  std::array<wchar_t, 39> text{};
  ::StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return ToUtf8(std::wstring_view(text.data()));
}

}  // namespace velkor
