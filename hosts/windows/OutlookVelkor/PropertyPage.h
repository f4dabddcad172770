// hosts/windows/OutlookVelkor/PropertyPage.h: the control's properties as a page of the system's
// property dialogs.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "control/frmProperties.h"
#include "hosts/windows/OutlookVelkor/PageWindow.h"
#include "hosts/windows/OutlookVelkor/PlannerAccess.h"

namespace velkor {

/// The class of the page, beside that of the control.
inline constexpr CLSID PropertyPageClass = {
    0x3f6d2c58, 0x9e0b, 0x4d5e, {0xa1, 0x77, 0x52, 0x0c, 0x8e, 0x6b, 0x94, 0xd3}};

/// Changes one planner, or several at once, when it is applied. What a planner does not take is
/// told, and stays in its field.
class PropertyPage : public ComObject<IPropertyPage2> {
 public:
  PropertyPage();

  STDMETHODIMP SetPageSite(IPropertyPageSite* site) override;
  STDMETHODIMP Activate(HWND parent, LPCRECT place, BOOL modal) override;
  STDMETHODIMP Deactivate() override;
  STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) override;
  STDMETHODIMP SetObjects(ULONG count, IUnknown** objects) override;
  STDMETHODIMP Show(UINT how) override;
  STDMETHODIMP Move(LPCRECT place) override;
  STDMETHODIMP IsPageDirty() override { return form_.Changes().empty() ? S_FALSE : S_OK; }
  STDMETHODIMP Apply() override;
  STDMETHODIMP Help(LPCOLESTR) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG* message) override;
  STDMETHODIMP EditProperty(DISPID) override { return E_NOTIMPL; }

 protected:
  void* FindOther(REFIID id) override;

 private:
  void Read();
  void TellSite();

  frmProperties form_;
  std::vector<ComPtr<IPlannerAccess>> planners_;
  ComPtr<IPropertyPageSite> site_;
  std::shared_ptr<PageWindow> window_;
};

/// The class object of the page.
HRESULT GetPageFactory(REFIID id, void** object);

/// Shows the page for one planner in a dialog of the system, until that is closed.
/// @param owner  window that it stands before; null for none
HRESULT ShowPropertyFrame(IUnknown& planner, HWND owner);

}  // namespace velkor
