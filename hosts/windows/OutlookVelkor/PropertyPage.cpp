// hosts/windows/OutlookVelkor/PropertyPage.cpp: fields, and the planners that they belong to.
#include "hosts/windows/OutlookVelkor/PropertyPage.h"

#include <string>
#include <utility>

#include "platform/windows/com/ComError.h"
#include "platform/windows/com/Variant.h"
#include "platform/windows/system/WindowsLocale.h"

namespace velkor {
namespace {

CalendarNames UserNames() {
  WindowsLocale locale;
  return Locale::LoadCalendarNames(locale, locale.ThreadLocale());
}

/// What the last call said that it could not do.
std::wstring TakeErrorText() {
  ComPtr<IErrorInfo> info;
  BSTR text = nullptr;
  if (::GetErrorInfo(0, &info) == S_OK) info->GetDescription(&text);
  std::wstring taken = text != nullptr ? text : L"The property cannot be set.";
  ::SysFreeString(text);
  return taken;
}

class PageFactory : public ComObject<IClassFactory> {
 public:
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    return Answer([&] {
      const ComPtr<PropertyPage> page(new PropertyPage);
      Check(page->QueryInterface(id, object), "A property page has no such interface");
    });
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    LiveObject::Lock(lock != FALSE);
    return S_OK;
  }
};

}  // namespace

PropertyPage::PropertyPage() : form_(UserNames()) {
  form_.onChange = [this] {
    if (window_) window_->TellSoon();
  };
}

void* PropertyPage::FindOther(REFIID id) {
  return id == __uuidof(IPropertyPage) ? static_cast<IPropertyPage*>(this) : nullptr;
}

STDMETHODIMP PropertyPage::SetPageSite(IPropertyPageSite* site) {
  site_ = site;
  return S_OK;
}

STDMETHODIMP PropertyPage::Activate(HWND parent, LPCRECT place, BOOL /*modal*/) {
  if (place == nullptr) return E_POINTER;
  if (window_) return E_UNEXPECTED;
  return Answer([&] {
    window_ = std::make_shared<PageWindow>(form_, parent);
    if (window_->Window() == nullptr) {
      window_.reset();
      throw Error(E_FAIL, "The property page has no window");
    }
    window_->onTold = [this] { TellSite(); };
    window_->Move(*place);
  });
}

STDMETHODIMP PropertyPage::Deactivate() {
  window_.reset();
  return S_OK;
}

STDMETHODIMP PropertyPage::GetPageInfo(PROPPAGEINFO* info) {
  if (info == nullptr) return E_POINTER;
  return Answer([&] {
    const ULONG size = info->cb;
    *info = {};
    info->cb = size;
    // Another window would take the fields from the one that shows them.
    info->size = window_ ? window_->WantedArea() : PageWindow(form_, nullptr).WantedArea();
    info->pszTitle = CopyForCaller(ToWide(form_.Title()));
  });
}

/// Objects that are no planners of this library are refused: then the page has none.
STDMETHODIMP PropertyPage::SetObjects(ULONG count, IUnknown** objects) {
  planners_.clear();
  if (count > 0 && objects == nullptr) return E_POINTER;
  std::vector<ComPtr<IPlannerAccess>> planners(count);
  for (ULONG i = 0; i < count; ++i) {
    if (objects[i] == nullptr) return E_POINTER;
    const HRESULT result = objects[i]->QueryInterface(IID_PPV_ARGS(&planners[i]));
    if (FAILED(result)) return result;
  }
  return Answer([&] {
    planners_ = std::move(planners);
    Read();
  });
}

void PropertyPage::Read() {
  std::vector<PlannerProperties> values(planners_.size());
  for (std::size_t i = 0; i < planners_.size(); ++i) {
    Check(planners_[i]->GetProperties(&values[i]), "The properties cannot be read");
  }
  form_.Show(values);
}

STDMETHODIMP PropertyPage::Show(UINT how) {
  if (!window_) return E_UNEXPECTED;
  window_->Show(how != SW_HIDE);
  return S_OK;
}

STDMETHODIMP PropertyPage::Move(LPCRECT place) {
  if (place == nullptr) return E_POINTER;
  if (!window_) return E_UNEXPECTED;
  window_->Move(*place);
  return S_OK;
}

/// Those before one that is refused are set.
STDMETHODIMP PropertyPage::Apply() {
  const ComPtr<PropertyPage> kept(this);
  const std::vector<ComPtr<IPlannerAccess>> planners = planners_;
  for (const frmProperties::Change& change : form_.Changes()) {
    for (const ComPtr<IPlannerAccess>& planner : planners) {
      const HRESULT result = planner->SetProperty(change.property, &change.value);
      if (SUCCEEDED(result)) continue;
      const std::wstring why = TakeErrorText();
      ::MessageBoxW(window_ ? ::GetAncestor(window_->Window(), GA_ROOT) : nullptr, why.c_str(),
                    L"OutlookVelkor", MB_OK | MB_ICONEXCLAMATION);
      return result;
    }
  }
  return Answer([&] { Read(); });
}

STDMETHODIMP PropertyPage::TranslateAccelerator(MSG* message) {
  if (message == nullptr) return E_POINTER;
  const ComPtr<PropertyPage> kept(this);
  const std::shared_ptr<PageWindow> window = window_;
  return window && window->TranslateKey(*message) ? S_OK : S_FALSE;
}

/// The site may deactivate the page, or let it go.
void PropertyPage::TellSite() {
  const ComPtr<PropertyPage> kept(this);
  const std::shared_ptr<PageWindow> window = window_;
  const ComPtr<IPropertyPageSite> site = site_;
  if (site) site->OnStatusChange(PROPPAGESTATUS_DIRTY | PROPPAGESTATUS_VALIDATE);
}

HRESULT GetPageFactory(REFIID id, void** object) {
  const ComPtr<IClassFactory> factory(new PageFactory);
  return factory->QueryInterface(id, object);
}

HRESULT ShowPropertyFrame(IUnknown& planner, HWND owner) {
  IUnknown* objects[] = {&planner};
  CLSID pages[] = {PropertyPageClass};
  return ::OleCreatePropertyFrame(owner, 0, 0, L"Year planner", 1, objects, 1, pages,
                                  LOCALE_USER_DEFAULT, 0, nullptr);
}

}  // namespace velkor
