// hosts/windows/vkrRefresh/CacheUtilityObject.cpp: inputs, events, and the end of the process.
#include "hosts/windows/vkrRefresh/CacheUtilityObject.h"

#include <thread>
#include <utility>

#include "platform/windows/com/ComCacheUtility.h"
#include "platform/windows/com/ComError.h"
#include "platform/windows/com/Variant.h"
#include "platform/windows/system/Modules.h"

namespace velkor {
namespace {

constexpr DISPID WriteCompleteEvent = 1;

/// Once the client is gone this process ends by itself as soon as it processes messages. A call
/// into the calendar program that never returns must not keep it.
void EndWith(KernelHandle client) {
  constexpr DWORD TimeToEnd = 10'000;
  if (!client) return;
  std::thread([client = std::move(client)] {
    ::WaitForSingleObject(client.get(), INFINITE);
    ::Sleep(TimeToEnd);
    ::TerminateProcess(::GetCurrentProcess(), 1);
  }).detach();
}

}  // namespace

CacheUtilityObject::CacheUtilityObject(const OpenOutlook& openOutlook)
    : events_(new ConnectionPoint(*this, DIID__IVelkorCacheUtilityEvents)),
      refresher_(std::make_shared<Refresher>(openOutlook)) {
  ComPtr<ITypeLib> library;
  Check(::LoadTypeLibEx(ToWide(ModulePath(nullptr)).c_str(), REGKIND_NONE, &library),
        "The cache utility has no type library");
  Check(library->GetTypeInfoOfGuid(IID_IVelkorCacheUtility, &members_), "Its interface is unknown");
  Check(library->GetTypeInfoOfGuid(CLSID_VelkorCacheUtility, &class_), "Its class is unknown");
  refresher_->onComplete = [events = events_](short synchResult, long synchError) {
    events->Fire(WriteCompleteEvent, {Variant(std::int16_t{synchResult}).Get(),
                                      Variant(static_cast<std::int32_t>(synchError)).Get()});
  };
  ::CoAddRefServerProcess();
}

CacheUtilityObject::~CacheUtilityObject() {
  refresher_->onComplete = nullptr;
  refresher_->Stop();
  events_->Detach();
  if (::CoReleaseServerProcess() == 0) ::PostQuitMessage(0);
}

STDMETHODIMP CacheUtilityObject::put_ViewYear(LONG year) {
  inputs_.viewYear = year;
  return S_OK;
}

STDMETHODIMP CacheUtilityObject::put_FirstMonth(LONG month) {
  inputs_.firstMonth = month;
  return S_OK;
}

STDMETHODIMP CacheUtilityObject::put_CacheFile(BSTR path) {
  return Answer([&] { inputs_.cacheFile = ToUtf8(path); });
}

STDMETHODIMP CacheUtilityObject::put_WorkFile(BSTR path) {
  return Answer([&] { inputs_.workFile = ToUtf8(path); });
}

STDMETHODIMP CacheUtilityObject::put_FolderID(BSTR id) {
  return Answer([&] { inputs_.folderId = ToUtf8(id); });
}

STDMETHODIMP CacheUtilityObject::put_StoreID(BSTR id) {
  return Answer([&] { inputs_.storeId = ToUtf8(id); });
}

STDMETHODIMP CacheUtilityObject::Start() {
  return Answer([&] { refresher_->Start(inputs_); });
}

STDMETHODIMP CacheUtilityObject::Stop() {
  refresher_->Stop();
  return S_OK;
}

STDMETHODIMP CacheUtilityObject::get_InterfaceVersion(short* version) {
  if (version == nullptr) return E_POINTER;
  *version = CacheUtilityInterface;
  return S_OK;
}

STDMETHODIMP CacheUtilityObject::get_ProcessId(LONG* id) {
  if (id == nullptr) return E_POINTER;
  *id = static_cast<LONG>(::GetCurrentProcessId());
  return S_OK;
}

STDMETHODIMP CacheUtilityObject::put_ClientProcess(LONG id) {
  return Answer([&] {
    if (client_) {
      throw Error(errors::InvalidProcedureCall, "The client's process is known already",
                  "VelkorCacheUtility");
    }
    const auto process = static_cast<DWORD>(id);
    client_.emplace(process, [refresher = refresher_] {
      refresher->onComplete = nullptr;
      ::PostQuitMessage(0);
    });
    EndWith(KernelHandle(::OpenProcess(SYNCHRONIZE, FALSE, process)));
  });
}

STDMETHODIMP CacheUtilityObject::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

STDMETHODIMP CacheUtilityObject::GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  return index == 0 ? members_.CopyTo(info) : DISP_E_BADINDEX;
}

STDMETHODIMP CacheUtilityObject::GetIDsOfNames(REFIID /*id*/, LPOLESTR* names, UINT count,
                                               LCID /*locale*/, DISPID* members) {
  return ::DispGetIDsOfNames(members_.Get(), names, count, members);
}

STDMETHODIMP CacheUtilityObject::Invoke(DISPID member, REFIID /*id*/, LCID /*locale*/, WORD flags,
                                        DISPPARAMS* parameters, VARIANT* result,
                                        EXCEPINFO* exception, UINT* wrong) {
  return ::DispInvoke(static_cast<IVelkorCacheUtility*>(this), members_.Get(), member, flags,
                      parameters, result, exception, wrong);
}

STDMETHODIMP CacheUtilityObject::EnumConnectionPoints(IEnumConnectionPoints** points) {
  return EnumerateConnectionPoints({events_.Get()}, points);
}

STDMETHODIMP CacheUtilityObject::FindConnectionPoint(REFIID events, IConnectionPoint** point) {
  return velkor::FindConnectionPoint({events_.Get()}, events, point);
}

STDMETHODIMP CacheUtilityObject::GetClassInfo(ITypeInfo** info) {
  return info == nullptr ? E_POINTER : class_.CopyTo(info);
}

STDMETHODIMP CacheUtilityObject::GetGUID(DWORD kind, GUID* id) {
  if (id == nullptr) return E_POINTER;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  *id = DIID__IVelkorCacheUtilityEvents;
  return S_OK;
}

STDMETHODIMP CacheUtilityObject::InterfaceSupportsErrorInfo(REFIID id) {
  return id == IID_IVelkorCacheUtility ? S_OK : S_FALSE;
}

void* CacheUtilityObject::FindOther(REFIID id) {
  if (id == IID_IDispatch) return static_cast<IVelkorCacheUtility*>(this);
  return id == IID_IProvideClassInfo ? static_cast<IProvideClassInfo2*>(this) : nullptr;
}

}  // namespace velkor
