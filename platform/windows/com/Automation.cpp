// platform/windows/com/Automation.cpp: late-bound calls, the patience with them and what went
// wrong.
#include "platform/windows/com/Automation.h"

#include <algorithm>
#include <array>

#include "platform/windows/system/MessagePump.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr DWORD PauseBeforeRetry = 50;

/// The program is at work, or shows a dialog ("IMessageFilter::RetryRejectedCall").
bool IsPutOff(HRESULT result) {
  return result == RPC_E_CALL_REJECTED || result == RPC_E_SERVERCALL_RETRYLATER ||
         result == RPC_E_SERVERCALL_REJECTED;
}

/// Dispatches messages for a while; false once the thread is to end.
bool LetMessagesFlow() {
  const ULONGLONG end = ::GetTickCount64() + PauseBeforeRetry;
  for (ULONGLONG now = ::GetTickCount64(); now < end; now = ::GetTickCount64()) {
    WaitForMessage(static_cast<DWORD>(end - now));
    if (ProcessMessage() == Pumped::End) return false;
  }
  return true;
}

/// What a program says about a failure; its texts are owned.
class Exception {
 public:
  Exception() = default;
  ~Exception() { Clear(); }
  Exception(const Exception&) = delete;
  Exception& operator=(const Exception&) = delete;

  /// For a call that may fill it.
  EXCEPINFO* Out() {
    Clear();
    return &info_;
  }

  /// Texts that the program gives only when asked.
  void Complete() {
    if (info_.pfnDeferredFillIn != nullptr) info_.pfnDeferredFillIn(&info_);
  }
  HRESULT Number() const {
    if (info_.scode != 0) return info_.scode;
    return info_.wCode != 0 ? info_.wCode : DISP_E_EXCEPTION;
  }
  std::string Text() const { return ToUtf8(info_.bstrDescription); }

 private:
  void Clear() {
    ::SysFreeString(info_.bstrSource);
    ::SysFreeString(info_.bstrDescription);
    ::SysFreeString(info_.bstrHelpFile);
    info_ = {};
  }

  EXCEPINFO info_{};
};

/// Counts the calls that are under way, and tells when the outermost one is over.
class CallScope {
 public:
  CallScope(int& depth, const std::function<void()>& onIdle) : depth_(depth), onIdle_(onIdle) {
    ++depth_;
  }
  ~CallScope() {
    if (--depth_ == 0 && onIdle_) onIdle_();
  }
  CallScope(const CallScope&) = delete;
  CallScope& operator=(const CallScope&) = delete;

 private:
  int& depth_;
  const std::function<void()>& onIdle_;
};

/// The order in which automation passes them; still owned by `arguments`.
std::vector<VARIANT> LastFirst(AutomationObject::Arguments arguments) {
  std::vector<VARIANT> values;
  for (const Variant& argument : arguments) values.push_back(argument.Get());
  std::reverse(values.begin(), values.end());
  return values;
}

}  // namespace

bool IsDisconnected(long number) {
  constexpr std::array Gone = {RPC_E_DISCONNECTED,
                               RPC_E_SERVER_DIED,
                               RPC_E_SERVER_DIED_DNE,
                               CO_E_OBJNOTCONNECTED,
                               static_cast<HRESULT>(0x800706BA),   // RPC_S_SERVER_UNAVAILABLE
                               static_cast<HRESULT>(0x800706BE)};  // RPC_S_CALL_FAILED
  return std::find(Gone.begin(), Gone.end(), number) != Gone.end();
}

HRESULT AutomationProgram::AttemptOnce(const std::function<HRESULT()>& call) {
  const BusyScope busy(owner_);
  const CallScope inCall(depth_, onIdle);
  const HRESULT result = call();
  if (IsDisconnected(result)) ++losses_;
  return result;
}

HRESULT AutomationProgram::Attempt(const std::function<HRESULT()>& call) {
  const BusyScope busy(owner_);
  const CallScope inCall(depth_, onIdle);
  const ULONGLONG end = ::GetTickCount64() + static_cast<ULONGLONG>(patience_.count());
  for (;;) {
    const HRESULT result = AttemptOnce(call);
    if (!IsPutOff(result) || ::GetTickCount64() >= end || !LetMessagesFlow()) return result;
  }
}

void AutomationProgram::LetGo(ComPtr<IUnknown> object) {
  const BusyScope busy(owner_);
  const CallScope inCall(depth_, onIdle);
  object.Reset();
}

std::string AutomationProgram::Explain(HRESULT result) const {
  if (IsPutOff(result)) {
    return name_ + " is busy; close its open dialogs and try again";
  }
  if (IsDisconnected(result)) return name_ + " was closed or cannot be reached any more";
  switch (result) {
    case REGDB_E_CLASSNOTREG:
    case CO_E_CLASSSTRING:
      return name_ + " is not installed on this computer";
    case E_ACCESSDENIED:
    case CO_E_SERVER_EXEC_FAILURE:
      return name_ + " does not start, or runs with other rights than this program";
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND:
      return "this version of " + name_ + " does not know it";
    case DISP_E_TYPEMISMATCH:
      return "Type mismatch";
    case DISP_E_EXCEPTION:
      return name_ + " did not say why it failed";
    default:
      return SystemMessage(static_cast<DWORD>(result));
  }
}

void AutomationProgram::Fail(HRESULT result, std::string_view what, std::string_view text,
                             std::string_view source) const {
  throw Error(result,
              name_ + ": " + std::string(what) + ": " +
                  (text.empty() ? Explain(result) : std::string(text)),
              std::string(source));
}

ComPtr<IDispatch> AutomationProgram::Create(std::string_view programId, DWORD context) {
  ComPtr<IDispatch> object;
  const std::wstring wideId = ToWide(programId);
  const HRESULT result = Attempt([&] {
    CLSID id;
    const HRESULT known = ::CLSIDFromProgID(wideId.c_str(), &id);
    if (FAILED(known)) return known;
    return ::CoCreateInstance(id, nullptr, context, IID_PPV_ARGS(&object));
  });
  if (FAILED(result)) Fail(result, programId, {}, programId);
  if (object == nullptr) Fail(E_NOINTERFACE, programId, {}, programId);
  return object;
}

ComPtr<IDispatch> AutomationProgram::Join(std::string_view programId) {
  ComPtr<IDispatch> object;
  const std::wstring wideId = ToWide(programId);
  const HRESULT result = Attempt([&] {
    CLSID id;
    ComPtr<IUnknown> running;
    HRESULT found = ::CLSIDFromProgID(wideId.c_str(), &id);
    if (SUCCEEDED(found)) found = ::GetActiveObject(id, nullptr, &running);
    // Success may come without an object.
    return running == nullptr ? found : running.As(&object);
  });
  return SUCCEEDED(result) ? object : nullptr;
}

/// The object that RegisterActiveObject lists stands under its class as the item "!{CLSID}"
/// ("Running Object Table"); GetActiveObject would call the program.
bool AutomationProgram::IsListed(std::string_view programId) const {
  CLSID id;
  wchar_t item[40] = L"";
  ComPtr<IMoniker> moniker;
  ComPtr<IRunningObjectTable> table;
  if (FAILED(::CLSIDFromProgID(ToWide(programId).c_str(), &id)) ||
      ::StringFromGUID2(id, item, static_cast<int>(std::size(item))) == 0 ||
      FAILED(::CreateItemMoniker(L"!", item, &moniker)) ||
      FAILED(::GetRunningObjectTable(0, &table))) {
    return false;
  }
  const BusyScope busy(owner_);
  return table->IsRunning(moniker.Get()) == S_OK;
}

ComPtr<IDispatch> JoinOrCreate(AutomationProgram& program, std::string_view programId) {
  if (ComPtr<IDispatch> running = program.Join(programId)) return running;
  return program.Create(programId);
}

AutomationObject& AutomationObject::operator=(AutomationObject other) noexcept {
  std::swap(program_, other.program_);
  std::swap(kind_, other.kind_);
  object_.Swap(other.object_);
  return *this;
}

void AutomationObject::Fail(HRESULT result, std::string_view member, std::string_view text) const {
  program_->Fail(result, kind_->Name() + "." + std::string(member), text, kind_->Name());
}

DISPID AutomationObject::Identify(std::string_view member) const {
  const auto known = kind_->members_.find(member);
  return known != kind_->members_.end() ? known->second : LookUp(member);
}

DISPID AutomationObject::LookUp(std::string_view member) const {
  std::wstring name = ToWide(member);
  LPOLESTR names[] = {name.data()};
  DISPID id = DISPID_UNKNOWN;
  const HRESULT result = program_->Attempt(
      [&] { return object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id); });
  if (FAILED(result)) Fail(result, member);
  kind_->members_.insert_or_assign(std::string(member), id);
  return id;
}

Variant AutomationObject::Invoke(std::string_view member, WORD flags,
                                 std::vector<VARIANT> arguments) const {
  if (object_ == nullptr) Fail(CO_E_OBJNOTCONNECTED, member);
  // A copy, as the holder may let this go while the call lets messages through.
  const BusyScope busy(program_->Owner());
  const AutomationObject self(*this);
  DISPID id = self.Identify(member);
  DISPID valueName = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{};
  parameters.rgvarg = arguments.data();
  parameters.cArgs = static_cast<UINT>(arguments.size());
  const bool puts = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  if (puts) {
    parameters.rgdispidNamedArgs = &valueName;
    parameters.cNamedArgs = 1;
  }

  Variant answer;
  Exception exception;
  const auto invoke = [&] {
    UINT wrong = 0;
    return self.object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                puts ? nullptr : answer.Out(), exception.Out(), &wrong);
  };
  HRESULT result = self.program_->Attempt(invoke);
  // One object of the class may know the member by another identifier than those before.
  if (result == DISP_E_MEMBERNOTFOUND && flags != DISPATCH_PROPERTYPUTREF) {
    const DISPID before = id;
    id = self.LookUp(member);
    if (id != before) result = self.program_->Attempt(invoke);
  }
  if (result == DISP_E_MEMBERNOTFOUND && flags == DISPATCH_PROPERTYPUTREF) {
    return self.Invoke(member, DISPATCH_PROPERTYPUT, std::move(arguments));
  }
  if (result == DISP_E_EXCEPTION) {
    exception.Complete();
    self.Fail(exception.Number(), member, exception.Text());
  }
  if (FAILED(result)) self.Fail(result, member);
  return answer;
}

Variant AutomationObject::Get(std::string_view member, Arguments arguments) const {
  return Invoke(member, DISPATCH_PROPERTYGET | DISPATCH_METHOD, LastFirst(arguments));
}

Variant AutomationObject::Call(std::string_view member, Arguments arguments) const {
  return Invoke(member, DISPATCH_METHOD, LastFirst(arguments));
}

void AutomationObject::Put(std::string_view member, const Variant& value) const {
  Invoke(member, DISPATCH_PROPERTYPUT, {value.Get()});
}

void AutomationObject::PutReference(std::string_view member, IDispatch* value) const {
  const Variant held(value);
  Invoke(member, DISPATCH_PROPERTYPUTREF, {held.Get()});
}

}  // namespace velkor
