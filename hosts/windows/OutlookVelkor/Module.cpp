// hosts/windows/OutlookVelkor/Module.cpp: the library as the system loads it: its class object, its
// registration and its end.
#include "hosts/windows/OutlookVelkor/Module.h"

#include <string>
#include <vector>

#include "hosts/windows/OutlookVelkor/PropertyPage.h"
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"
#include "platform/windows/com/ComError.h"
#include "platform/windows/elements/PaintedWindow.h"
#include "platform/windows/system/Modules.h"

/// Gives back what the library's own copy of the C++ runtime keeps for exceptions when memory is
/// short; 70 KB of each load would stay behind (libstdc++, "eh_alloc.cc").
namespace __gnu_cxx {
void __freeres();
}

namespace velkor {
namespace {

constexpr const char* ProgramId = "OutlookVelkor.YearPlan";
constexpr const char* VersionedProgramId = "OutlookVelkor.YearPlan.1";
/// Categories of components (comcat.h, objsafe.h).
constexpr const char* ControlCategory = "{40FC6ED4-2438-11CF-A3DB-080036F12502}";
constexpr const char* InsertableCategory = "{40FC6ED3-2438-11CF-A3DB-080036F12502}";
constexpr const char* SafeForInitialising = "{7DD95802-9882-11CF-9FA9-00AA006C42C4}";

ComPtr<ITypeInfo> LoadTypeInfo() {
  ComPtr<ITypeLib> library;
  const std::string path = ModulePath(ThisModule());
  Check(::LoadTypeLibEx(ToWide(path).c_str(), REGKIND_NONE, &library),
        "The type library of the year planner cannot be read");
  ComPtr<ITypeInfo> info;
  Check(library->GetTypeInfoOfGuid(IID_IYearPlan, &info),
        "The interface of the year planner cannot be read");
  return info;
}

class ControlFactory : public ComObject<IClassFactory> {
 public:
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    // The whole takes the part's own identity, and asks that for all else.
    if (outer != nullptr && id != __uuidof(IUnknown)) return CLASS_E_NOAGGREGATION;
    return Answer([&] {
      const ComPtr<IUnknown> control(&(new YearPlanControl(LoadTypeInfo(), outer))->Own());
      Check(control->QueryInterface(id, object), "A year planner has no such interface");
    });
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    // The lock is the library's: another factory than the one that locked it may unlock it.
    LiveObject::Lock(lock != FALSE);
    return S_OK;
  }
};

/// What programs ask before they insert a control into a document, and show it by.
void AddForDocuments(ClassRegistration& known, const std::string& key) {
  known.values.insert(
      known.values.end(),
      // The system's dialog for inserting looks for the program identifier, others for the class.
      {{VersionedProgramId + std::string("\\Insertable"), "", ""},
       {key + "\\Insertable", "", ""},
       {key + "\\Implemented Categories\\" + InsertableCategory, "", ""},
       {key + "\\AuxUserType\\2", "", UserType},
       {key + "\\AuxUserType\\3", "", ApplicationName},
       // The library's first icon, and its bitmap of the number 1.
       {key + "\\DefaultIcon", "", known.module + ",0"},
       {key + "\\ToolboxBitmap32", "", known.module + ", 1"},
       // Format, aspect, medium, direction: enhanced and older metafiles can be had (DATADIR_GET).
       {key + "\\DataFormats\\GetSet\\0", "", "14,1,64,1"},
       {key + "\\DataFormats\\GetSet\\1", "", "3,1,32,1"}});
}

void AddPropertyPage(ClassRegistration& known) {
  const std::string key = "CLSID\\" + ToText(PropertyPageClass);
  known.otherKeys.push_back(key);
  known.values.insert(known.values.end(),
                      {{key, "", UserType + std::string(" properties")},
                       {key + "\\InprocServer32", "", known.module},
                       {key + "\\InprocServer32", "ThreadingModel", "Apartment"}});
}

ClassRegistration Description() {
  ClassRegistration known = DescribeClass(CLSID_YearPlan, UserType, VersionedProgramId,
                                          LIBID_OutlookVelkor, ModulePath(ThisModule()));
  const std::string key = known.Key();
  known.programIds.emplace_back(ProgramId);
  known.values.insert(
      known.values.end(),
      {{ProgramId, "", UserType},
       {ProgramId + std::string("\\CLSID"), "", known.id},
       {ProgramId + std::string("\\CurVer"), "", VersionedProgramId},
       {key + "\\VersionIndependentProgID", "", ProgramId},
       {key + "\\InprocServer32", "", known.module},
       {key + "\\InprocServer32", "ThreadingModel", "Apartment"},
       {key + "\\Control", "", ""},
       // The verbs 0 and 1 with no flags of a menu, on the container's menu (OLEVERBATTRIB).
       {key + "\\Verb\\0", "", "&Show,0,2"},
       {key + "\\Verb\\1", "", "&Properties,0,2"},
       {key + "\\MiscStatus", "", "0"},
       {key + "\\MiscStatus\\1", "", std::to_string(MiscStatus)},
       {key + "\\Implemented Categories\\" + ControlCategory, "", ""},
       {key + "\\Implemented Categories\\" + SafeForInitialising, "", ""}});
  AddForDocuments(known, key);
  AddPropertyPage(known);
  return known;
}

}  // namespace

void RegisterControl(Registration registration) {
  Register(registration, Description());
}

void UnregisterControl(Registration registration) {
  Unregister(registration, Description());
}

}  // namespace velkor

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (classId == velkor::PropertyPageClass) return velkor::GetPageFactory(id, object);
  if (classId != CLSID_YearPlan) return CLASS_E_CLASSNOTAVAILABLE;
  const velkor::ComPtr<IClassFactory> factory(new velkor::ControlFactory);
  return factory->QueryInterface(id, object);
}

STDAPI DllCanUnloadNow() {
  return velkor::LiveObject::Count() == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  return velkor::Answer([] { velkor::RegisterControl(velkor::Registration::Machine); });
}

STDAPI DllUnregisterServer() {
  return velkor::Answer([] { velkor::UnregisterControl(velkor::Registration::Machine); });
}

/// regsvr32 /i:user registers for the current user, who needs no administrator's rights.
STDAPI DllInstall(BOOL install, LPCWSTR argument) {
  const bool user = argument != nullptr && ::_wcsicmp(argument, L"user") == 0;
  const auto registration = user ? velkor::Registration::User : velkor::Registration::Machine;
  return velkor::Answer([&] {
    if (install) {
      velkor::RegisterControl(registration);
    } else {
      velkor::UnregisterControl(registration);
    }
  });
}

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void* /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) ::DisableThreadLibraryCalls(module);
  if (reason == DLL_PROCESS_DETACH) {
    velkor::UnregisterPaintedWindowClass();
    __gnu_cxx::__freeres();
  }
  return TRUE;
}
