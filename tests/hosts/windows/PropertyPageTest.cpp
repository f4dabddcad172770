// tests/hosts/windows/PropertyPageTest.cpp: the control's property page, alone and in the system's
// dialog.
#include <gmock/gmock.h>

#include "platform/windows/elements/WindowText.h"
#include "tests/hosts/windows/ContainerCase.h"
#include "tests/platform/windows/DriveDialog.h"

namespace velkor {
namespace {

class PageSite : public ComObject<IPropertyPageSite> {
 public:
  int told = 0;
  std::function<void()> reaction;
  STDMETHODIMP OnStatusChange(DWORD) override {
    ++told;
    if (reaction) reaction();
    return S_OK;
  }
  STDMETHODIMP GetLocaleID(LCID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetPageContainer(IUnknown**) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG*) override { return S_FALSE; }
};

/// @param found  a std::vector<HWND>, to which an edit field is added
BOOL CALLBACK AddField(HWND child, LPARAM found) {
  wchar_t name[16]{};
  ::GetClassNameW(child, name, static_cast<int>(std::size(name)));
  if (::_wcsicmp(name, L"EDIT") == 0) {
    reinterpret_cast<std::vector<HWND>*>(found)->push_back(child);
  }
  return TRUE;
}

/// The edit fields below a window, in their order.
std::vector<HWND> FieldsOf(HWND window) {
  std::vector<HWND> fields;
  ::EnumChildWindows(window, AddField, reinterpret_cast<LPARAM>(&fields));
  return fields;
}

class PropertyPages : public ContainerCase {
 protected:
  ComPtr<IPropertyPage2> OpenPage(std::vector<IUnknown*> objects) {
    CAUUID pages{};
    EXPECT_EQ(Control<ISpecifyPropertyPages>()->GetPages(&pages), S_OK);
    EXPECT_EQ(pages.cElems, 1U);
    ComPtr<IPropertyPage2> page;
    EXPECT_EQ(
        ::CoCreateInstance(pages.pElems[0], nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&page)),
        S_OK);
    ::CoTaskMemFree(pages.pElems);
    page->SetPageSite(site_.Get());
    EXPECT_EQ(page->SetObjects(static_cast<ULONG>(objects.size()), objects.data()), S_OK);
    PROPPAGEINFO info{sizeof info, nullptr, {}, nullptr, nullptr, 0};
    EXPECT_EQ(page->GetPageInfo(&info), S_OK);
    ::CoTaskMemFree(info.pszTitle);
    EXPECT_GT(info.size.cx, 300);
    EXPECT_GT(info.size.cy, 150);
    const RECT place{0, 0, info.size.cx, info.size.cy};
    EXPECT_EQ(page->Activate(container_->Window(), &place, FALSE), S_OK);
    EXPECT_EQ(page->Show(SW_SHOW), S_OK);
    return page;
  }
  AutomationObject Planner(IDispatch* control) { return {program_, class_, control}; }
  /// Folder, title and form.
  std::vector<HWND> Fields() const { return FieldsOf(container_->Window()); }
  static std::string TextIn(HWND field) { return ToUtf8(TextOfWindow(field)); }

  DialogOwner owner_;
  AutomationProgram program_{"YearPlan", owner_};
  AutomationClass class_{"YearPlan"};
  const ComPtr<PageSite> site_{new PageSite};
};

TEST_F(PropertyPages, WhatIsAppliedIsEveryPlannersAndWhatDiffersStaysOpen) {
  Container();
  const auto other = Create<IDispatch>();
  const auto control = Control<IDispatch>();
  Planner(control.Get()).Put("Folder", Variant("One"));
  Planner(other.Get()).Put("Folder", Variant("Two"));
  const auto page = OpenPage({control.Get(), other.Get()});
  ASSERT_EQ(Fields().size(), 3U);
  EXPECT_EQ(TextIn(Fields()[0]), "");
  EXPECT_EQ(TextIn(Fields()[1]), "Default");
  EXPECT_EQ(page->IsPageDirty(), S_FALSE);
  ::SetWindowTextW(Fields()[1], L"Räume");
  const HWND box = ::FindWindowExW(::GetParent(Fields()[0]), nullptr, L"BUTTON", nullptr);
  ::SendMessageW(box, BM_CLICK, 0, 0);
  EXPECT_EQ(page->IsPageDirty(), S_OK);
  EXPECT_TRUE(PumpUntil([&] { return site_->told > 0; }));
  ASSERT_EQ(page->Apply(), S_OK);
  EXPECT_EQ(page->IsPageDirty(), S_FALSE);
  for (IDispatch* each : {control.Get(), other.Get()}) {
    EXPECT_EQ(Planner(each).GetText("TitleName"), "Räume");
    EXPECT_TRUE(Planner(each).Get("AllEvents").ToBool());
  }
  EXPECT_EQ(Planner(control.Get()).GetText("Folder"), "One");
  EXPECT_EQ(Planner(other.Get()).GetText("Folder"), "Two");
  EXPECT_EQ(page->Deactivate(), S_OK);
  EXPECT_EQ(page->Show(SW_SHOW), E_UNEXPECTED);
  ComPtr<TextBag> noPlanner(new TextBag);
  IUnknown* objects[] = {noPlanner.Get()};
  EXPECT_EQ(page->SetObjects(1, objects), E_NOINTERFACE);
  EXPECT_EQ(page->Apply(), S_OK);
}

TEST_F(PropertyPages, AValueThatIsRefusedIsToldAndStays) {
  Container();
  const auto control = Control<IDispatch>();
  const auto page = OpenPage({control.Get()});
  const std::wstring tooLong(300, L'x');
  ::SetWindowTextW(Fields()[1], tooLong.c_str());
  std::wstring told;
  {
    const DriveDialog drive([&] {
      const HWND message = WaitForDialog(L"OutlookVelkor");
      told = TextOf(message, 0xFFFF);
      Answer(message, IDOK);
    });
    EXPECT_TRUE(FAILED(page->Apply()));
  }
  EXPECT_THAT(ToUtf8(told), testing::HasSubstr("TitleName"));
  EXPECT_EQ(TextOfWindow(Fields()[1]), tooLong);
  EXPECT_EQ(page->IsPageDirty(), S_OK);
  EXPECT_EQ(Planner(control.Get()).GetText("TitleName"), "Default");
  page->Deactivate();
}

TEST_F(PropertyPages, ASiteMayTakeThePageAwayAsItIsTold) {
  Container();
  auto page = OpenPage({Control<IUnknown>().Get()});
  site_->reaction = [&] {
    page->Deactivate();
    page->SetPageSite(nullptr);
    page.Reset();
  };
  ::SetWindowTextW(Fields()[1], L"Other");
  EXPECT_TRUE(PumpUntil([&] { return site_->told > 0; }));
  EXPECT_EQ(page, nullptr);
}

TEST_F(PropertyPages, TheVerbShowsThePageInADialogOfTheSystem) {
  container_ =
      ComPtr<BareContainer>(new BareContainer(Create<IOleObject>(), BareContainer::Designs));
  BareContainer& container = *container_.Get();
  ASSERT_EQ(container.Do(OLEIVERB_SHOW), S_OK);
  for (const LONG verb : {LONG{OLEIVERB_PROPERTIES}, LONG{1}}) {
    const DriveDialog drive([&] {
      const HWND dialog = WaitForWindow({});
      const std::vector<HWND> fields = FieldsOf(dialog);
      ASSERT_EQ(fields.size(), 3U) << ToUtf8(TitleOf(dialog));
      RECT page{};
      RECT seen{};
      ::GetWindowRect(::GetParent(fields[1]), &page);
      ::GetWindowRect(::GetParent(::GetParent(fields[1])), &seen);
      WaitUntil("page within its dialog", [&] {
        ::GetWindowRect(::GetParent(fields[1]), &page);
        return page.right <= seen.right && page.bottom <= seen.bottom;
      });
      Answer(dialog, IDCANCEL);
    });
    EXPECT_EQ(container.Do(verb), S_OK);
  }
}

TEST_F(PropertyPages, ListsOfPropertiesAreToldTextsChoicesAndThePage) {
  Container();
  const auto browsing = Control<IPerPropertyBrowsing>();
  struct Case {
    DISPID member;
    HRESULT text;
    const char* shown;
    HRESULT choices;
    const char* choice;
  };
  for (const Case& each : {Case{1, S_OK, "(default)", S_OK, ""},
                           {2, S_OK, "False", E_NOTIMPL, ""},
                           {5, S_OK, "Default", S_OK, "Default"},
                           {DISPID_HWND, E_NOTIMPL, "", E_NOTIMPL, ""}}) {
    BSTR text = nullptr;
    EXPECT_EQ(browsing->GetDisplayString(each.member, &text), each.text) << each.member;
    EXPECT_EQ(ToUtf8(text), each.shown);
    ::SysFreeString(text);
    CALPOLESTR texts{};
    CADWORD cookies{};
    ASSERT_EQ(browsing->GetPredefinedStrings(each.member, &texts, &cookies), each.choices);
    CLSID page{};
    EXPECT_EQ(browsing->MapPropertyToPage(each.member, &page),
              each.text == S_OK ? S_OK : PERPROP_E_NOPAGEAVAILABLE);
    if (FAILED(each.choices)) continue;
    ASSERT_EQ(texts.cElems, 1U);
    Variant value;
    EXPECT_EQ(browsing->GetPredefinedValue(each.member, cookies.pElems[0], value.Out()), S_OK);
    EXPECT_EQ(value.ToText(), each.choice);
    EXPECT_EQ(browsing->GetPredefinedValue(each.member, 7, value.Out()), E_INVALIDARG);
    ::CoTaskMemFree(texts.pElems[0]);
    ::CoTaskMemFree(texts.pElems);
    ::CoTaskMemFree(cookies.pElems);
  }
}

}  // namespace
}  // namespace velkor
