// hosts/windows/OutlookVelkor/YearPlanControl.h: the control as an object that containers hold.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "control/YearPlan.h"
#include "hosts/windows/OutlookVelkor/ControlSeams.h"
#include "hosts/windows/OutlookVelkor/ControlWindow.h"
#include "hosts/windows/OutlookVelkor/PropertyMembers.h"
#include "platform/Host.h"
#include "platform/windows/com/ConnectionPoint.h"
#include "platform/windows/system/MessageWindow.h"
#include "hosts/windows/OutlookVelkor/ObjectSafety.h"
// After windows.h.
#include "OutlookVelkor.h"

namespace velkor {

class Error;

/// Sizes of embedded objects count hundredths of a millimetre (MM_HIMETRIC).
inline constexpr double HimetricPerInch = 2540;
inline constexpr double TwipsPerInch = 1440;

/// One planner in one container, on the thread that made it. Starts up when its properties were
/// loaded, or, newly placed, when it is activated; in design mode never. A container may let it go
/// at any moment: while messages are processed in the middle of a call it lives on.
class YearPlanControl
    : public PropertyMembers<
          ComObject<IYearPlan, IProvideClassInfo2, IConnectionPointContainer, IPersistPropertyBag,
                    IPersistStreamInit, IOleObject, IOleInPlaceObject, IOleInPlaceActiveObject,
                    IOleControl, IViewObject2, IDataObject, IObjectSafety, ISupportErrorInfo>>,
      private ControlHost {
 public:
  /// @param typeInfo  of IYearPlan
  explicit YearPlanControl(ComPtr<ITypeInfo> typeInfo);

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

  // IProvideClassInfo2, IConnectionPointContainer, ISupportErrorInfo, IObjectSafety
  STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
  STDMETHODIMP GetGUID(DWORD kind, GUID* id) override;
  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
  STDMETHODIMP FindConnectionPoint(REFIID events, IConnectionPoint** point) override;
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override;
  STDMETHODIMP GetInterfaceSafetyOptions(REFIID id, DWORD* supported, DWORD* enabled) override;
  STDMETHODIMP SetInterfaceSafetyOptions(REFIID id, DWORD mask, DWORD enabled) override;

  // IPersistPropertyBag, IPersistStreamInit
  STDMETHODIMP GetClassID(CLSID* id) override;
  STDMETHODIMP InitNew() override;
  STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
  STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL keepAll) override;
  STDMETHODIMP IsDirty() override;
  STDMETHODIMP Load(IStream* stream) override;
  STDMETHODIMP Save(IStream* stream, BOOL clearDirty) override;
  STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;

  // IOleObject
  STDMETHODIMP SetClientSite(IOleClientSite* site) override;
  STDMETHODIMP GetClientSite(IOleClientSite** site) override;
  STDMETHODIMP SetHostNames(LPCOLESTR application, LPCOLESTR document) override;
  STDMETHODIMP Close(DWORD save) override;
  STDMETHODIMP SetMoniker(DWORD which, IMoniker* moniker) override;
  STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
  STDMETHODIMP InitFromData(IDataObject* data, BOOL creation, DWORD reserved) override;
  STDMETHODIMP GetClipboardData(DWORD reserved, IDataObject** data) override;
  STDMETHODIMP DoVerb(LONG verb, LPMSG message, IOleClientSite* site, LONG index, HWND parent,
                      LPCRECT place) override;
  STDMETHODIMP EnumVerbs(IEnumOLEVERB** verbs) override;
  STDMETHODIMP Update() override;
  STDMETHODIMP IsUpToDate() override;
  STDMETHODIMP GetUserClassID(CLSID* id) override;
  STDMETHODIMP GetUserType(DWORD form, LPOLESTR* type) override;
  STDMETHODIMP SetExtent(DWORD aspect, SIZEL* size) override;
  STDMETHODIMP GetExtent(DWORD aspect, SIZEL* size) override;
  STDMETHODIMP Advise(IAdviseSink* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumAdvise(IEnumSTATDATA** sinks) override;
  STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) override;
  STDMETHODIMP SetColorScheme(LOGPALETTE* palette) override;

  // IDataObject
  STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override;
  STDMETHODIMP GetDataHere(FORMATETC* format, STGMEDIUM* medium) override;
  STDMETHODIMP QueryGetData(FORMATETC* format) override;
  STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* asked, FORMATETC* canonical) override;
  STDMETHODIMP SetData(FORMATETC* format, STGMEDIUM* medium, BOOL release) override;
  STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override;
  STDMETHODIMP DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* cookie) override;
  STDMETHODIMP DUnadvise(DWORD cookie) override;
  STDMETHODIMP EnumDAdvise(IEnumSTATDATA** sinks) override;

  // IOleWindow, IOleInPlaceObject, IOleInPlaceActiveObject
  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
  STDMETHODIMP InPlaceDeactivate() override;
  STDMETHODIMP UIDeactivate() override;
  STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT clip) override;
  STDMETHODIMP ReactivateAndUndo() override;
  STDMETHODIMP TranslateAccelerator(LPMSG message) override;
  STDMETHODIMP OnFrameWindowActivate(BOOL activate) override;
  STDMETHODIMP OnDocWindowActivate(BOOL activate) override;
  STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) override;
  STDMETHODIMP EnableModeless(BOOL enable) override;

  // IOleControl
  STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
  STDMETHODIMP OnMnemonic(MSG* message) override;
  STDMETHODIMP OnAmbientPropertyChange(DISPID property) override;
  STDMETHODIMP FreezeEvents(BOOL freeze) override;

  // IViewObject2
  STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                    HDC targetDc, HDC dc, LPCRECTL bounds, LPCRECTL windowBounds,
                    BOOL(STDMETHODCALLTYPE* proceed)(ULONG_PTR), ULONG_PTR token) override;
  STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                           HDC targetDc, LOGPALETTE** colours) override;
  STDMETHODIMP Freeze(DWORD aspect, LONG index, void* aspectInfo, DWORD* token) override;
  STDMETHODIMP Unfreeze(DWORD token) override;
  STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
  STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
  STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, SIZEL* size) override;

 protected:
  ~YearPlanControl() override;
  void* FindOther(REFIID id) override;
  YearPlan& Plan() override { return plan_; }
  HRESULT AnswerCall(const std::function<void()>& work) override;

 private:
  // ControlHost
  void PropertyChanged(std::string_view key) override;
  void StatusChange(std::string_view Msg) override;

  void TellError(const Error& error);
  void Start();
  bool IsDesignMode() const;
  HRESULT Activate(bool withKeyboard);
  HRESULT MakeWindow(IOleClientSite& site);
  void UiActivate();
  void FocusChanged(bool has);
  void FrameIsModal(bool open);
  HRESULT ReadFrom(PropertyBag& bag);
  void Enter(bool begins);
  void KeepWhileBusy(bool busy);
  void SettleAfterBusy();
  void TellView();
  HENHMETAFILE MakePicture();

  ComPtr<ITypeInfo> typeInfo_;
  DialogOwner owner_;
  ComPtr<ConnectionPoint> events_;
  ComPtr<ConnectionPoint> propertyEvents_;
  ComPtr<IOleClientSite> site_;
  ComPtr<IOleInPlaceSite> inPlaceSite_;
  ComPtr<IOleInPlaceFrame> frame_;
  ComPtr<IOleInPlaceUIWindow> document_;
  /// Those that were told of the dialogs that are open, from the outermost on; of some it is null.
  std::vector<ComPtr<IOleInPlaceFrame>> modalFrames_;
  ComPtr<IOleAdviseHolder> adviseHolder_;
  ComPtr<IDataAdviseHolder> dataAdviseHolder_;
  ComPtr<IAdviseSink> viewSink_;
  DWORD viewSinkFlags_ = 0;
  DWORD viewSinkAspects_ = 0;
  SIZEL extent_;
  bool dirty_ = false;
  bool started_ = false;
  bool uiActive_ = false;
  bool hasFocus_ = false;
  int frozen_ = 0;
  /// How many calls from outside are being answered.
  int entries_ = 0;
  /// A reference to itself, from the beginning of a busy time until nothing of this is at work.
  bool kept_ = false;
  /// Whether it was kept when the outermost call from outside began.
  bool keptBefore_ = false;
  MessageWindow keeper_;
  ControlSeams seams_;
  YearPlan plan_;
  std::vector<std::unique_ptr<ElementPeer>> timers_;
  std::unique_ptr<ControlWindow> window_;
  /// Those that are gone while a handler of theirs may be running.
  std::vector<std::unique_ptr<ControlWindow>> retired_;
};

}  // namespace velkor
