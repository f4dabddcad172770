// hosts/windows/vkrRefresh/CacheUtilityObject.h: the cache utility as its client sees it.
#pragma once

#include <memory>
#include <optional>

#include "VelkorCacheUtility.h"
#include "hosts/windows/vkrRefresh/Refresher.h"
#include "platform/windows/com/ConnectionPoint.h"
#include "platform/windows/system/ProcessWatch.h"

namespace velkor {

/// The class VelkorCacheUtility. The server's process lives as long as an object of it, and ends
/// with the client's process.
class CacheUtilityObject : public ComObject<IVelkorCacheUtility, IConnectionPointContainer,
                                            IProvideClassInfo2, ISupportErrorInfo> {
 public:
  /// Throws Error when the type library is not to be had.
  explicit CacheUtilityObject(const OpenOutlook& openOutlook);

  STDMETHODIMP put_ViewYear(LONG year) override;
  STDMETHODIMP put_FirstMonth(LONG month) override;
  STDMETHODIMP put_CacheFile(BSTR path) override;
  STDMETHODIMP put_WorkFile(BSTR path) override;
  STDMETHODIMP put_FolderID(BSTR id) override;
  STDMETHODIMP put_StoreID(BSTR id) override;
  STDMETHODIMP Start() override;
  STDMETHODIMP Stop() override;
  STDMETHODIMP get_InterfaceVersion(short* version) override;
  STDMETHODIMP get_ProcessId(LONG* id) override;
  STDMETHODIMP put_ClientProcess(LONG id) override;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* members) override;
  STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* wrong) override;

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
  STDMETHODIMP FindConnectionPoint(REFIID events, IConnectionPoint** point) override;
  STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
  STDMETHODIMP GetGUID(DWORD kind, GUID* id) override;
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override;

 protected:
  ~CacheUtilityObject() override;
  void* FindOther(REFIID id) override;

 private:
  ComPtr<ITypeInfo> members_;
  ComPtr<ITypeInfo> class_;
  ComPtr<ConnectionPoint> events_;
  std::shared_ptr<Refresher> refresher_;
  RefreshInputs inputs_;
  std::optional<ProcessWatch> client_;
};

}  // namespace velkor
