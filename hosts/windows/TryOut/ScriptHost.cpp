// hosts/windows/TryOut/ScriptHost.cpp: the site of a script engine.
#include "hosts/windows/TryOut/ScriptHost.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "hosts/windows/TryOut/Console.h"
#include "platform/windows/com/ComError.h"
#include "platform/windows/system/WindowsFiles.h"
#include "values/Text.h"

namespace velkor {
namespace {

#ifdef _WIN64
using ScriptParser = IActiveScriptParse64;
#else
using ScriptParser = IActiveScriptParse32;
#endif

const wchar_t* EngineOf(std::string_view ending) {
  if (SameName(ending, ".vbs")) return L"VBScript";
  return SameName(ending, ".js") ? L"JScript" : nullptr;
}

/// None for bytes that are no text in this code page.
std::optional<std::wstring> Decode(std::string_view bytes, UINT codePage, DWORD flags) {
  if (bytes.empty()) return std::wstring();
  const auto size = static_cast<int>(bytes.size());
  const int length = ::MultiByteToWideChar(codePage, flags, bytes.data(), size, nullptr, 0);
  if (length == 0) return std::nullopt;
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  ::MultiByteToWideChar(codePage, flags, bytes.data(), size, text.data(), length);
  return text;
}

std::wstring ScriptText(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE")) {
    std::wstring text((bytes.size() - 2) / sizeof(wchar_t), L'\0');
    bytes.copy(reinterpret_cast<char*>(text.data()), text.size() * sizeof(wchar_t), 2);
    return text;
  }
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  if (auto text = Decode(bytes, CP_UTF8, MB_ERR_INVALID_CHARS)) return *text;
  return Decode(bytes, CP_ACP, 0).value_or(std::wstring());
}

/// The texts of an exception, which become ours; they may be given late.
std::string Explain(EXCEPINFO& exception) {
  if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
  std::string text = ToUtf8(exception.bstrDescription);
  if (text.empty()) text = SystemMessage(static_cast<DWORD>(exception.scode));
  const std::string source = ToUtf8(exception.bstrSource);
  ::SysFreeString(exception.bstrDescription);
  ::SysFreeString(exception.bstrSource);
  ::SysFreeString(exception.bstrHelpFile);
  return source.empty() ? text : source + ": " + text;
}

}  // namespace

class ScriptHost::Site : public ComObject<IActiveScriptSite, IActiveScriptSiteWindow> {
 public:
  Site(std::string path, const std::wstring& text) : path_(std::move(path)), text_(text) {}

  void Offer(std::wstring name, ComPtr<IDispatch> object) {
    name_ = std::move(name);
    object_ = std::move(object);
  }
  void Forget() { object_.Reset(); }
  bool HasFailed() const { return failed_; }
  void Fail(const std::string& where, const std::string& what) {
    failed_ = true;
    WriteErrorLine(path_ + where + ": " + what);
  }

  STDMETHODIMP GetLCID(LCID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** item,
                           ITypeInfo** types) override {
    if (types != nullptr) *types = nullptr;
    if (item != nullptr) *item = nullptr;
    if (name_ != name || !object_) return TYPE_E_ELEMENTNOTFOUND;
    if ((mask & SCRIPTINFO_IUNKNOWN) == 0 || item == nullptr) return S_OK;
    return object_->QueryInterface(IID_PPV_ARGS(item));
  }
  STDMETHODIMP GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
  STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
  STDMETHODIMP OnScriptError(IActiveScriptError* error) override {
    EXCEPINFO exception{};
    error->GetExceptionInfo(&exception);
    DWORD context = 0;
    ULONG line = 0;
    LONG column = 0;
    const bool known = SUCCEEDED(error->GetSourcePosition(&context, &line, &column));
    const std::string source = known ? Line(line) : std::string();
    Fail(known ? "(" + std::to_string(line + 1) + ")" : std::string(),
         Explain(exception) + (source.empty() ? "" : "\r\n    " + source));
    return S_OK;
  }
  STDMETHODIMP OnEnterScript() override { return S_OK; }
  STDMETHODIMP OnLeaveScript() override { return S_OK; }
  STDMETHODIMP GetWindow(HWND* window) override {
    *window = ::GetActiveWindow();
    return S_OK;
  }
  STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }

 private:
  std::string Line(ULONG number) const {
    const std::vector<std::string> lines = Split(ToUtf8(text_), "\n");
    return number < lines.size() ? std::string(Trim(lines[number])) : std::string();
  }

  std::string path_;
  const std::wstring& text_;
  std::wstring name_;
  ComPtr<IDispatch> object_;
  bool failed_ = false;
};

ScriptHost::ScriptHost(std::string path) : path_(std::move(path)) {
  const std::size_t dot = path_.find_last_of('.');
  const wchar_t* const name = EngineOf(dot == path_.npos ? "" : path_.substr(dot));
  if (name == nullptr) {
    throw Error(errors::BadFileName, path_ + ": a script ends in .vbs or .js");
  }
  const std::optional<std::string> bytes = WindowsFiles().Read(path_);
  if (!bytes) throw Error(errors::FileNotFound, path_ + ": there is no such file to read");
  text_ = ScriptText(*bytes);
  CLSID id{};
  Check(::CLSIDFromProgID(name, &id),
        "This system has no engine for " + ToUtf8(std::wstring_view(name)));
  Check(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&engine_)),
        "The script engine " + ToUtf8(std::wstring_view(name)) + " cannot be loaded");
  site_ = ComPtr<Site>(new Site(path_, text_));
}

ScriptHost::~ScriptHost() {
  if (engine_) engine_->Close();
  if (site_) site_->Forget();
}

void ScriptHost::Run(const std::string& name, const ComPtr<IDispatch>& object) {
  const std::wstring wide = ToWide(name);
  site_->Offer(wide, object);
  Check(engine_->SetScriptSite(site_.Get()), "The script engine does not start");
  ComPtr<ScriptParser> parser;
  Check(engine_.As(&parser), "The script engine reads no scripts");
  Check(parser->InitNew(), "The script engine does not start");
  Check(engine_->AddNamedItem(wide.c_str(), SCRIPTITEM_ISVISIBLE),
        "The script engine does not start");
  Check(engine_->SetScriptState(SCRIPTSTATE_STARTED), "The script engine does not start");
  EXCEPINFO exception{};
  const HRESULT result = parser->ParseScriptText(text_.c_str(), nullptr, nullptr, nullptr, 0, 0,
                                                 SCRIPTTEXT_ISVISIBLE, nullptr, &exception);
  if (FAILED(result) && !HasFailed()) {
    exception.scode = exception.scode != 0 ? exception.scode : result;
    site_->Fail("", Explain(exception));
  }
}

void ScriptHost::Call(const std::string& procedure, std::initializer_list<Variant> arguments) {
  ComPtr<IDispatch> script;
  if (FAILED(engine_->GetScriptDispatch(nullptr, &script)) || !script) return;
  std::wstring name = ToWide(procedure);
  LPOLESTR names = name.data();
  DISPID member = DISPID_UNKNOWN;
  if (FAILED(script->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member))) return;
  std::vector<VARIANT> reversed;
  for (const Variant& argument : arguments) reversed.insert(reversed.begin(), argument.Get());
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  EXCEPINFO exception{};
  const bool failedBefore = HasFailed();
  const HRESULT result = script->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                        &parameters, nullptr, &exception, nullptr);
  if (SUCCEEDED(result)) return;
  if (exception.scode == 0) exception.scode = result;
  const std::string text = Explain(exception);
  // Engines tell some errors to the site before the caller.
  if (failedBefore == HasFailed()) site_->Fail("", "in " + procedure + ": " + text);
}

bool ScriptHost::HasFailed() const {
  return site_->HasFailed();
}

}  // namespace velkor
