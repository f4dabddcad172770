// platform/windows/com/TypeRegistration.cpp: the keys are written and removed one by one, since the
// system's UnRegisterTypeLib takes the interfaces from programs of both word sizes, and its
// counterpart for one user differs from Windows to Windows.
#include "platform/windows/com/TypeRegistration.h"

#include <array>
#include <sstream>
#include <string_view>
#include <vector>

#include "platform/windows/com/ComError.h"
#include "platform/windows/com/Variant.h"

namespace velkor {
namespace {

/// The system's own marshallers (oleaut32): by the type library, and of IDispatch alone.
constexpr const char* TypeLibraryMarshaller = "{00020424-0000-0000-C000-000000000046}";
constexpr const char* DispatchMarshaller = "{00020420-0000-0000-C000-000000000046}";
constexpr const char* System = sizeof(void*) == 8 ? "win64" : "win32";

struct Interface {
  std::string id;
  std::string name;
  const char* marshaller;
};

/// What a type library says that the registry repeats.
struct Types {
  std::string id;
  std::string version;
  std::string locale;
  std::string flags;
  std::string description;
  std::vector<Interface> interfaces;

  std::string Key() const { return "TypeLib\\" + id; }
  std::string VersionKey() const { return Key() + "\\" + version; }
  std::string LocaleKey() const { return VersionKey() + "\\" + locale; }
};

std::string Hex(unsigned number) {
  std::ostringstream text;
  text << std::hex << number;
  return text.str();
}

struct Documentation {
  std::string name;
  std::string description;
};

/// @param index  of a type; -1 is the library
Documentation DocumentationOf(ITypeLib& library, INT index) {
  BSTR name = nullptr;
  BSTR description = nullptr;
  Check(library.GetDocumentation(index, &name, &description, nullptr, nullptr),
        "The name of a type cannot be read");
  Documentation found{ToUtf8(name), ToUtf8(description)};
  ::SysFreeString(name);
  ::SysFreeString(description);
  return found;
}

/// The interface that a type is; one without a marshaller is not registered.
Interface InterfaceOf(ITypeLib& library, UINT index) {
  ComPtr<ITypeInfo> type;
  Check(library.GetTypeInfo(index, &type), "A type cannot be read");
  TYPEATTR* found = nullptr;
  Check(type->GetTypeAttr(&found), "A type cannot be read");
  const TYPEATTR attributes = *found;
  type->ReleaseTypeAttr(found);
  Interface made{ToText(attributes.guid), DocumentationOf(library, static_cast<INT>(index)).name,
                 nullptr};
  const WORD flags = attributes.wTypeFlags;
  if (attributes.typekind == TKIND_DISPATCH) {
    made.marshaller = (flags & TYPEFLAG_FDUAL) != 0 ? TypeLibraryMarshaller : DispatchMarshaller;
  } else if (attributes.typekind == TKIND_INTERFACE && (flags & TYPEFLAG_FOLEAUTOMATION) != 0) {
    made.marshaller = TypeLibraryMarshaller;
  }
  return made;
}

Types TypesOf(const std::string& module) {
  ComPtr<ITypeLib> library;
  const std::string failed = "The type library of " + module + " cannot be read";
  Check(::LoadTypeLibEx(ToWide(module).c_str(), REGKIND_NONE, &library), failed);
  TLIBATTR* found = nullptr;
  Check(library->GetLibAttr(&found), failed);
  const TLIBATTR attributes = *found;
  library->ReleaseTLibAttr(found);
  Types types{ToText(attributes.guid),
              Hex(attributes.wMajorVerNum) + "." + Hex(attributes.wMinorVerNum),
              Hex(attributes.lcid),
              std::to_string(attributes.wLibFlags),
              DocumentationOf(*library.Get(), -1).description,
              {}};
  for (UINT index = 0; index < library->GetTypeInfoCount(); ++index) {
    Interface made = InterfaceOf(*library.Get(), index);
    if (made.marshaller != nullptr) types.interfaces.push_back(std::move(made));
  }
  return types;
}

}  // namespace

void RegisterTypes(Registration registration, const std::string& module) {
  const Types types = TypesOf(module);
  std::vector<ClassesValue> values = {
      {types.VersionKey(), "", types.description},
      {types.VersionKey() + "\\FLAGS", "", types.flags},
      {types.VersionKey() + "\\HELPDIR", "", module.substr(0, module.find_last_of('\\'))},
      {types.LocaleKey() + "\\" + System, "", module}};
  for (const auto& [id, name, marshaller] : types.interfaces) {
    const std::string key = "Interface\\" + id;
    values.insert(values.end(), {{key, "", name},
                                 {key + "\\ProxyStubClsid32", "", marshaller},
                                 {key + "\\TypeLib", "", types.id},
                                 {key + "\\TypeLib", "Version", types.version}});
  }
  WriteClasses(registration, values);
}

void UnregisterTypes(Registration registration, const std::string& module) {
  const Types types = TypesOf(module);
  for (const Interface& known : types.interfaces) {
    RemoveClasses(registration, "Interface\\" + known.id);
  }
  RemoveClasses(registration, types.LocaleKey() + "\\" + System);
  RemoveEmptyClasses(registration, types.LocaleKey());
  constexpr std::array<std::string_view, 2> SaidOnce = {"FLAGS", "HELPDIR"};
  if (!HasKeysBesides(registration, types.VersionKey(), SaidOnce)) {
    RemoveClasses(registration, types.VersionKey());
  }
  RemoveEmptyClasses(registration, types.Key());
}

std::string ToText(const GUID& id) {
  std::array<wchar_t, 39> text{};
  ::StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return ToUtf8(std::wstring_view(text.data()));
}

}  // namespace velkor
