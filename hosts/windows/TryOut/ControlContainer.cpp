// hosts/windows/TryOut/ControlContainer.cpp: the container's functions, found by their names in
// atl.dll.
#include "hosts/windows/TryOut/ControlContainer.h"

#include <utility>

#include "platform/windows/com/ComError.h"

namespace velkor {
namespace {

constexpr const wchar_t* ProgramId = L"OutlookVelkor.YearPlan";
constexpr const wchar_t* ContainerClass = L"AtlAxWin";

using InitFunction = BOOL WINAPI();
using CreateFunction = HRESULT WINAPI(LPCOLESTR name, HWND window, IStream* stream,
                                      IUnknown** container, IUnknown** control, REFIID sinkId,
                                      IUnknown* sink);
using GetControlFunction = HRESULT WINAPI(HWND window, IUnknown** control);

/// The container's library stays loaded: its window classes stay with it.
template <typename Function>
Function* ContainerFunction(const char* name) {
  const HMODULE library = ::LoadLibraryExW(L"atl.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (library == nullptr) {
    throw Error(static_cast<long>(::GetLastError()),
                "The system's container for controls (atl.dll) cannot be loaded: " +
                    SystemMessage(::GetLastError()));
  }
  const FARPROC function = ::GetProcAddress(library, name);
  if (function == nullptr) {
    throw Error(errors::InvalidProcedureCall, std::string("atl.dll has no function ") + name);
  }
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(function));
}

/// The container would take a name that is unknown for the address of a page.
void CheckRegistered() {
  CLSID id{};
  const HRESULT result = ::CLSIDFromProgID(ProgramId, &id);
  if (SUCCEEDED(result)) return;
  throw Error(result,
              "The year planner is not registered for this user (OutlookVelkor.YearPlan). Run "
              "Register.cmd from the folder of the package, then start this program again.");
}

/// The text of the last error of a call on this thread; empty for none.
std::string TakeErrorText() {
  ComPtr<IErrorInfo> info;
  if (::GetErrorInfo(0, &info) != S_OK) return {};
  BSTR text = nullptr;
  info->GetDescription(&text);
  const std::string utf8 = ToUtf8(text);
  ::SysFreeString(text);
  return utf8;
}

}  // namespace

ComPtr<IStream> ControlContainer::MakeStream(const std::optional<std::string>& properties) const {
  ComPtr<IStream> stream;
  if (!properties) return stream;
  Check(::CreateStreamOnHGlobal(nullptr, TRUE, &stream), "No memory for the properties");
  Check(stream->Write(properties->data(), static_cast<ULONG>(properties->size()), nullptr),
        "No memory for the properties");
  Check(stream->Seek({}, STREAM_SEEK_SET, nullptr), "No memory for the properties");
  return stream;
}

std::string ControlContainer::Place(const RECT& place,
                                    const std::optional<std::string>& properties) {
  Remove();
  CheckRegistered();
  ContainerFunction<InitFunction>("AtlAxWinInit")();
  window_ = ::CreateWindowExW(WS_EX_CONTROLPARENT, ContainerClass, L"",
                              WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_TABSTOP, place.left,
                              place.top, place.right - place.left, place.bottom - place.top,
                              parent_, nullptr, nullptr, nullptr);
  if (window_ == nullptr) {
    throw Error(static_cast<long>(::GetLastError()),
                "The system's container cannot be opened: " + SystemMessage(::GetLastError()));
  }
  const ComPtr<IStream> stream = MakeStream(properties);
  ::SetErrorInfo(0, nullptr);
  HRESULT result = ContainerFunction<CreateFunction>("AtlAxCreateControlEx")(
      ProgramId, window_, stream.Get(), nullptr, nullptr, GUID_NULL, nullptr);
  std::string objection = stream ? TakeErrorText() : std::string();
  if (FAILED(result) && stream) {
    // Some containers refuse a control that refused its properties.
    if (objection.empty()) objection = SystemMessage(static_cast<DWORD>(result));
    result = ContainerFunction<CreateFunction>("AtlAxCreateControlEx")(
        ProgramId, window_, nullptr, nullptr, nullptr, GUID_NULL, nullptr);
  }
  ComPtr<IUnknown> unknown;
  if (SUCCEEDED(result)) {
    result = ContainerFunction<GetControlFunction>("AtlAxGetControl")(window_, &unknown);
  }
  if (SUCCEEDED(result)) result = unknown.As(&control_);
  if (FAILED(result)) Remove();
  Check(result,
        "The year planner is registered but cannot be opened; register it again from the folder of "
        "the package (Register.cmd)");
  events_ = std::make_unique<ControlEvents>(*control_.Get(), listener);
  return objection;
}

void ControlContainer::Remove() {
  events_.reset();
  control_.Reset();
  if (window_ != nullptr) ::DestroyWindow(std::exchange(window_, nullptr));
}

void ControlContainer::Move(const RECT& place) {
  if (window_ == nullptr) return;
  ::SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

IDispatch& ControlContainer::Control() const {
  if (!control_) throw Error(errors::InvalidProcedureCall, "There is no year planner in the form.");
  return *control_.Get();
}

template <typename Interface>
ComPtr<Interface> ControlContainer::As(const char* doing) const {
  ComPtr<Interface> found;
  Check(Control().QueryInterface(IID_PPV_ARGS(&found)), doing);
  return found;
}

HWND ControlContainer::ControlWindow() const {
  HWND window = nullptr;
  Check(As<IOleInPlaceActiveObject>("The control has no window")->GetWindow(&window),
        "The control has no window");
  return window;
}

std::string ControlContainer::Properties() const {
  const auto control = As<IPersistStreamInit>("The control keeps no properties");
  ComPtr<IStream> stream;
  Check(::CreateStreamOnHGlobal(nullptr, TRUE, &stream), "No memory for the properties");
  Check(control->Save(stream.Get(), TRUE), "The control does not give its properties");
  STATSTG state{};
  Check(stream->Stat(&state, STATFLAG_NONAME), "No memory for the properties");
  std::string bytes(static_cast<std::size_t>(state.cbSize.QuadPart), '\0');
  Check(stream->Seek({}, STREAM_SEEK_SET, nullptr), "No memory for the properties");
  Check(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr),
        "No memory for the properties");
  return bytes;
}

SIZE ControlContainer::Size() const {
  RECT area{};
  ::GetClientRect(ControlWindow(), &area);
  return {area.right, area.bottom};
}

std::unique_ptr<DibSection> ControlContainer::Draw() const {
  const SIZE size = Size();
  auto picture = std::make_unique<DibSection>(size.cx, size.cy);
  const RECTL bounds{0, 0, size.cx, size.cy};
  Check(As<IViewObject2>("The control cannot be drawn")
            ->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, picture->Dc(), &bounds, nullptr,
                   nullptr, 0),
        "The control cannot be drawn");
  return picture;
}

bool ControlContainer::TranslateKey(MSG& message) const {
  if (!control_ || !::IsChild(window_, message.hwnd)) return false;
  ComPtr<IOleInPlaceActiveObject> active;
  return SUCCEEDED(control_.As(&active)) && active->TranslateAccelerator(&message) == S_OK;
}

void ControlContainer::Focus() const {
  ComPtr<IOleObject> object;
  ComPtr<IOleClientSite> site;
  if (!control_ || FAILED(control_.As(&object)) || FAILED(object->GetClientSite(&site))) return;
  RECT area{};
  ::GetClientRect(window_, &area);
  object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site.Get(), 0, window_, &area);
}

}  // namespace velkor
