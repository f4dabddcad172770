// tests/standin/ServedClasses.cpp: entries of the classes below Software\Classes.
#include "tests/standin/ServedClasses.h"

#include <array>
#include <vector>

#include "platform/windows/com/Registration.h"
#include "platform/windows/system/Wide.h"
#include "values/Error.h"

namespace velkor {
namespace {

bool IsThere(const std::string& programId) {
  return ::RegGetValueW(HKEY_LOCAL_MACHINE, ToWide("Software\\Classes\\" + programId).c_str(),
                        nullptr, RRF_RT_ANY, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

std::string ClassOf(const std::string& programId) {
  std::array<wchar_t, 64> text = {};
  DWORD bytes = sizeof(text);
  ::RegGetValueW(HKEY_LOCAL_MACHINE, ToWide("Software\\Classes\\" + programId + "\\CLSID").c_str(),
                 nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
  return ToUtf8(std::wstring_view(text.data()));
}

}  // namespace

void Register(const ServedClass& served) {
  const std::string name = served.programId;
  const std::string id = ToText(served.id);
  const std::string owner = ClassOf(name);
  if ((!owner.empty() && owner != id) || (owner.empty() && IsThere(name))) {
    throw Error(errors::KeyAlreadyExists, name + " is another program's; it stays as it is.");
  }
  const std::string clsid = "CLSID\\" + id;
  std::vector<ClassesValue> values = {
      {name + "\\CLSID", "", id},
      {clsid + "\\LocalServer32", "", "\"" + ModulePath(nullptr) + "\""},
      {clsid + "\\VersionIndependentProgID", "", name}};
  if (served.currentVersion != nullptr) {
    const std::string version = served.currentVersion;
    values.insert(values.end(), {{name + "\\CurVer", "", version},
                                 {version + "\\CLSID", "", id},
                                 {clsid + "\\ProgID", "", version}});
  }
  WriteClasses(Registration::Machine, values);
}

void Unregister(const ServedClass& served) {
  const std::string id = ToText(served.id);
  RemoveClasses(Registration::Machine, "CLSID\\" + id);
  for (const char* name : {served.programId, served.currentVersion}) {
    if (name != nullptr && ClassOf(name) == id) RemoveClasses(Registration::Machine, name);
  }
}

}  // namespace velkor
