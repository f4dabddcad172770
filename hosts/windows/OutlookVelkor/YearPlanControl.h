// hosts/windows/OutlookVelkor/YearPlanControl.h: the control as an object that containers hold.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "control/YearPlan.h"
#include "hosts/windows/OutlookVelkor/ContainerAmbients.h"
#include "hosts/windows/OutlookVelkor/ControlListeners.h"
#include "hosts/windows/OutlookVelkor/ControlPlace.h"
#include "hosts/windows/OutlookVelkor/ControlSeams.h"
#include "hosts/windows/OutlookVelkor/ControlStorage.h"
#include "hosts/windows/OutlookVelkor/LastPicture.h"
#include "hosts/windows/OutlookVelkor/ObjectSafety.h"
#include "hosts/windows/OutlookVelkor/PlannerAccess.h"
#include "hosts/windows/OutlookVelkor/PropertyBags.h"
#include "hosts/windows/OutlookVelkor/PropertyMembers.h"
#include "hosts/windows/OutlookVelkor/StockProperties.h"
#include "platform/Host.h"
// After windows.h.
#include "OutlookVelkor.h"

namespace velkor {

/// One planner in one container, on the thread that made it. Starts up when its properties were
/// loaded, or, newly placed or in a document, when it is activated; in design mode never. A
/// container may let it go at any moment: while messages are processed in the middle of a call it
/// lives on.
class YearPlanControl
    : public PropertyMembers<AggregableObject<
          IYearPlan, IProvideClassInfo2, IConnectionPointContainer, IPersistPropertyBag,
          IPersistStreamInit, IPersistStorage, IPersistFile, IOleObject, IRunnableObject,
          IOleInPlaceObject, IOleInPlaceActiveObject, IOleControl, IViewObjectEx, IDataObject,
          IObjectSafety, ISupportErrorInfo, ISpecifyPropertyPages, IPerPropertyBrowsing,
          IPlannerAccess, IPointerInactive, IQuickActivate>>,
      private ControlHost {
 public:
  /// @param typeInfo  of IYearPlan
  /// @param outer  the object that the control becomes a part of; null for none
  YearPlanControl(ComPtr<ITypeInfo> typeInfo, IUnknown* outer);

  // IDispatch
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* members) override;
  STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

  // IYearPlan, beside its properties
  STDMETHODIMP CatDelete(BSTR name) override;
  STDMETHODIMP CatColour(BSTR name) override;
  STDMETHODIMP GetStringList(VARIANT* names) override;
  STDMETHODIMP AboutBox() override;
  STDMETHODIMP get_BackColor(OLE_COLOR* value) override;
  STDMETHODIMP put_BackColor(OLE_COLOR value) override;
  STDMETHODIMP get_ForeColor(OLE_COLOR* value) override;
  STDMETHODIMP put_ForeColor(OLE_COLOR value) override;
  STDMETHODIMP get_Font(IFontDisp** value) override;
  STDMETHODIMP put_Font(IFontDisp* value) override;
  STDMETHODIMP putref_Font(IFontDisp* value) override;
  STDMETHODIMP get_Enabled(VARIANT_BOOL* value) override;
  STDMETHODIMP put_Enabled(VARIANT_BOOL value) override;
  STDMETHODIMP get_hWnd(OLE_HANDLE* value) override;
  STDMETHODIMP Refresh() override;

  // IProvideClassInfo2, IConnectionPointContainer, ISupportErrorInfo, IObjectSafety
  STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
  STDMETHODIMP GetGUID(DWORD kind, GUID* id) override;
  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override {
    return listeners_.EnumConnectionPoints(points);
  }
  STDMETHODIMP FindConnectionPoint(REFIID events, IConnectionPoint** point) override {
    return listeners_.FindConnectionPoint(events, point);
  }
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override {
    return id == IID_IYearPlan ? S_OK : S_FALSE;
  }
  STDMETHODIMP GetInterfaceSafetyOptions(REFIID id, DWORD* supported, DWORD* enabled) override;
  STDMETHODIMP SetInterfaceSafetyOptions(REFIID id, DWORD mask, DWORD enabled) override;

  // IPersistPropertyBag, IPersistStreamInit, IPersistStorage, IPersistFile
  STDMETHODIMP GetClassID(CLSID* id) override;
  STDMETHODIMP InitNew() override;
  STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
  STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL keepAll) override;
  STDMETHODIMP IsDirty() override { return dirty_ ? S_OK : S_FALSE; }
  STDMETHODIMP Load(IStream* stream) override;
  STDMETHODIMP Save(IStream* stream, BOOL clearDirty) override;
  STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;
  STDMETHODIMP InitNew(IStorage* storage) override;
  STDMETHODIMP Load(IStorage* storage) override;
  STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoad) override;
  STDMETHODIMP SaveCompleted(IStorage* storage) override;
  STDMETHODIMP HandsOffStorage() override;
  STDMETHODIMP Load(LPCOLESTR file, DWORD mode) override;
  STDMETHODIMP Save(LPCOLESTR file, BOOL remember) override;
  STDMETHODIMP SaveCompleted(LPCOLESTR) override { return S_OK; }
  STDMETHODIMP GetCurFile(LPOLESTR* file) override;

  // IOleObject
  STDMETHODIMP SetClientSite(IOleClientSite* site) override;
  STDMETHODIMP GetClientSite(IOleClientSite** site) override;
  STDMETHODIMP SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
  STDMETHODIMP Close(DWORD save) override;
  STDMETHODIMP SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
  STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
  STDMETHODIMP InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP GetClipboardData(DWORD reserved, IDataObject** data) override;
  STDMETHODIMP DoVerb(LONG verb, LPMSG message, IOleClientSite* site, LONG index, HWND parent,
                      LPCRECT place) override;
  STDMETHODIMP EnumVerbs(IEnumOLEVERB** verbs) override;
  STDMETHODIMP Update() override { return S_OK; }
  STDMETHODIMP IsUpToDate() override { return S_OK; }
  STDMETHODIMP GetUserClassID(CLSID* id) override { return GetClassID(id); }
  STDMETHODIMP GetUserType(DWORD form, LPOLESTR* type) override;
  STDMETHODIMP SetExtent(DWORD aspect, SIZEL* size) override;
  STDMETHODIMP GetExtent(DWORD aspect, SIZEL* size) override;
  STDMETHODIMP Advise(IAdviseSink* sink, DWORD* cookie) override {
    return listeners_.Advise(sink, cookie);
  }
  STDMETHODIMP Unadvise(DWORD cookie) override { return listeners_.Unadvise(cookie); }
  STDMETHODIMP EnumAdvise(IEnumSTATDATA** sinks) override { return listeners_.EnumAdvise(sinks); }
  STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) override;
  STDMETHODIMP SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

  // IRunnableObject: in the container's process, so nothing has to be held for it to run on
  STDMETHODIMP GetRunningClass(CLSID* id) override { return GetClassID(id); }
  STDMETHODIMP Run(IBindCtx*) override;
  STDMETHODIMP_(BOOL) IsRunning() override { return isRunning_ || place_.IsInPlace(); }
  STDMETHODIMP LockRunning(BOOL, BOOL) override { return S_OK; }
  STDMETHODIMP SetContainedObject(BOOL) override { return S_OK; }

  // IDataObject
  STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override;
  STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) override { return DV_E_FORMATETC; }
  STDMETHODIMP QueryGetData(FORMATETC* format) override;
  STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* asked, FORMATETC* canonical) override;
  STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override;
  STDMETHODIMP DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* cookie) override {
    return listeners_.DAdvise(format, flags, sink, cookie);
  }
  STDMETHODIMP DUnadvise(DWORD cookie) override { return listeners_.DUnadvise(cookie); }
  STDMETHODIMP EnumDAdvise(IEnumSTATDATA** sinks) override { return listeners_.EnumDAdvise(sinks); }

  // IOleWindow, IOleInPlaceObject, IOleInPlaceActiveObject
  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP InPlaceDeactivate() override;
  STDMETHODIMP UIDeactivate() override;
  STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT clip) override;
  STDMETHODIMP ReactivateAndUndo() override { return INPLACE_E_NOTUNDOABLE; }
  STDMETHODIMP TranslateAccelerator(LPMSG message) override;
  STDMETHODIMP OnFrameWindowActivate(BOOL) override { return S_OK; }
  STDMETHODIMP OnDocWindowActivate(BOOL) override { return S_OK; }
  STDMETHODIMP ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL enable) override;

  // IOleControl
  STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
  STDMETHODIMP OnMnemonic(MSG* message) override;
  STDMETHODIMP OnAmbientPropertyChange(DISPID property) override;
  STDMETHODIMP FreezeEvents(BOOL freeze) override;

  // IPointerInactive, IQuickActivate
  STDMETHODIMP GetActivationPolicy(DWORD* policy) override;
  STDMETHODIMP OnInactiveMouseMove(LPCRECT place, LONG x, LONG y, DWORD keys) override;
  STDMETHODIMP OnInactiveSetCursor(LPCRECT place, LONG x, LONG y, DWORD message,
                                   BOOL mustSet) override;
  STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* control) override;
  STDMETHODIMP SetContentExtent(LPSIZEL size) override;
  STDMETHODIMP GetContentExtent(LPSIZEL size) override;

  // ISpecifyPropertyPages, IPerPropertyBrowsing, IPlannerAccess
  STDMETHODIMP GetPages(CAUUID* pages) override;
  STDMETHODIMP GetDisplayString(DISPID member, BSTR* text) override;
  STDMETHODIMP MapPropertyToPage(DISPID member, CLSID* page) override;
  STDMETHODIMP GetPredefinedStrings(DISPID member, CALPOLESTR* texts, CADWORD* cookies) override;
  STDMETHODIMP GetPredefinedValue(DISPID member, DWORD cookie, VARIANT* value) override;
  STDMETHODIMP GetProperties(PlannerProperties* properties) override;
  STDMETHODIMP SetProperty(const Property* property, const PropertyValue* value) override;

  // IViewObjectEx
  STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                    HDC targetDc, HDC dc, LPCRECTL bounds, LPCRECTL windowBounds,
                    BOOL(STDMETHODCALLTYPE* proceed)(ULONG_PTR), ULONG_PTR token) override;
  STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                           HDC targetDc, LOGPALETTE** colours) override;
  STDMETHODIMP Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP Unfreeze(DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
  STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override {
    return listeners_.GetAdvise(aspects, flags, sink);
  }
  STDMETHODIMP GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, SIZEL* size) override {
    return GetExtent(aspect, size);
  }
  STDMETHODIMP GetRect(DWORD aspect, LPRECTL rect) override;
  STDMETHODIMP GetViewStatus(DWORD* status) override;
  STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG close,
                             DWORD* hit) override;
  STDMETHODIMP QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rect, LONG close,
                            DWORD* hit) override;
  STDMETHODIMP GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, HDC targetDc,
                                DVEXTENTINFO* wanted, LPSIZEL size) override;

 protected:
  ~YearPlanControl() override;
  void* FindOther(REFIID id) override;
  YearPlan& Plan() override { return plan_; }
  HRESULT AnswerCall(const std::function<void()>& work) override { return life_.Answer(work); }

 private:
  // ControlHost
  void PropertyChanged(std::string_view key) override;
  void StatusChange(std::string_view Msg) override;

  const Property* PropertyWith(DISPID member) const;
  HRESULT ShowProperties(HWND owner);
  void Start();
  void FollowAmbients(DISPID property);
  void TakeSurroundings(const QACONTAINER& container);
  void Dress();
  HRESULT Obey(LONG verb, LPMSG message, HWND parent);
  HRESULT Activate();
  HRESULT ActivateByUser(const MSG* message);
  void TakeFrom(PropertyBag& bag);
  HRESULT ReadFrom(PropertyBag& bag);
  MemoryBag Stored() const;
  HENHMETAFILE MakePicture();
  MetafileHandle LastSeen();
  void KeepPicture(IStorage& storage, bool sameAsLoad);

  ComPtr<ITypeInfo> typeInfo_;
  ControlLife life_;
  ControlListeners listeners_;
  bool dirty_ = false;
  bool isRunning_ = false;
  ControlStorage storage_;
  LastPicture lastPicture_;
  /// The document that is this control alone; empty for none.
  std::wstring file_;
  ControlSeams seams_;
  YearPlan plan_;
  /// Of the control that runs.
  std::vector<std::unique_ptr<ElementPeer>> timers_;
  ControlPlace place_;
  Ambients ambients_;
  StockProperties stock_;
  AcceleratorHandle accelerators_;
};

}  // namespace velkor
