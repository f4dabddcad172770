// tests/hosts/windows/DocumentsTest.cpp: the control as an object in a document, and as a part of
// another object.
#include <gmock/gmock.h>

#include <array>
#include <filesystem>
#include <functional>
#include <string>

#include "platform/windows/drawing/DibSection.h"
#include "platform/windows/system/WindowsRegistry.h"
#include "tests/hosts/windows/BareContainer.h"
// After windows.h.
#include <servprov.h>
#include <shellapi.h>

namespace velkor {
namespace {

class Documents : public ControlCase {
 protected:
  static ComPtr<IStorage> NewStorage() {
    ComPtr<ILockBytes> bytes;
    ComPtr<IStorage> storage;
    EXPECT_EQ(::CreateILockBytesOnHGlobal(nullptr, TRUE, &bytes), S_OK);
    EXPECT_EQ(::StgCreateDocfileOnILockBytes(
                  bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, &storage),
              S_OK);
    return storage;
  }
  static void SetContents(const ComPtr<IStorage>& storage, std::string_view bytes) {
    ComPtr<IStream> stream;
    storage->CreateStream(L"CONTENTS", STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0,
                          &stream);
    stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
  }
  template <typename Interface>
  static void** Out(ComPtr<Interface>& made) {
    return reinterpret_cast<void**>(made.GetAddressOf());
  }
  /// The control that a storage holds, as a document opens it.
  static ComPtr<IOleObject> Loaded(const ComPtr<IStorage>& storage) {
    ComPtr<IOleObject> loaded;
    EXPECT_EQ(::WriteClassStg(storage.Get(), Id()), S_OK);
    EXPECT_EQ(::OleLoad(storage.Get(), __uuidof(IOleObject), nullptr, Out(loaded)), S_OK);
    return loaded;
  }
  template <typename Object>
  void SetTitle(const ComPtr<Object>& control, const char* title) {
    Planner(As<IDispatch>(control)).Put("TitleName", Variant(title));
  }
  template <typename Object>
  std::string Title(const ComPtr<Object>& control) {
    return Planner(As<IDispatch>(control)).Get("TitleName").ToText();
  }
};

TEST_F(Documents, AreMadeStoredLoadedAndDrawnByTheSystemsFunctions) {
  const auto storage = NewStorage();
  {
    ComPtr<IPersistStorage> control;
    ASSERT_EQ(::OleCreate(Id(), __uuidof(IPersistStorage), OLERENDER_DRAW, nullptr, nullptr,
                          storage.Get(), Out(control)),
              S_OK);
    EXPECT_EQ(::OleRun(control.Get()), S_OK);
    SetTitle(control, "Räume");
    Planner(As<IDispatch>(control)).Put("BackColor", Variant(std::int32_t{0x112233}));
    EXPECT_EQ(::OleSave(control.Get(), storage.Get(), TRUE), S_OK);
  }
  EXPECT_TRUE(library_.CanUnload());
  const auto loaded = Loaded(storage);
  EXPECT_EQ(Title(loaded), "Räume");
  EXPECT_EQ(Planner(As<IDispatch>(loaded)).Get("BackColor").ToInt(), 0x112233);
  const DibSection picture(300, 200);
  const RECT bounds{0, 0, 300, 200};
  EXPECT_EQ(::OleDraw(loaded.Get(), DVASPECT_CONTENT, picture.Dc(), &bounds), S_OK);
  EXPECT_NE(picture.At(150, 100), colours::Black);
}

TEST_F(Documents, AStepOutOfTurnIsRefusedInWords) {
  const auto control = Create<IPersistStorage>();
  const auto storage = NewStorage();
  const auto save = [&] { return control->Save(storage.Get(), TRUE); };
  const auto complete = [&] { return control->SaveCompleted(nullptr); };
  const auto begin = [&] { return control->InitNew(storage.Get()); };
  const auto load = [&] { return control->Load(storage.Get()); };
  const auto handsOff = [&] { return control->HandsOffStorage(); };
  const auto goOn = [&] { return control->SaveCompleted(storage.Get()); };
  const struct {
    std::function<HRESULT()> step;
    HRESULT result;
  } steps[] = {{save, E_UNEXPECTED},
               {complete, E_UNEXPECTED},
               {handsOff, E_UNEXPECTED},
               {load, STG_E_FILENOTFOUND},
               {begin, S_OK},
               {begin, CO_E_ALREADYINITIALIZED},
               {complete, E_UNEXPECTED},
               {save, S_OK},
               {save, S_OK},
               {complete, S_OK},
               {handsOff, S_OK},
               {handsOff, S_OK},
               {save, E_UNEXPECTED},
               {complete, E_INVALIDARG},
               {goOn, S_OK},
               {save, S_OK},
               {handsOff, S_OK},
               {goOn, S_OK},
               {load, CO_E_ALREADYINITIALIZED}};
  int number = 0;
  for (const auto& [step, result] : steps) {
    ::SetErrorInfo(0, nullptr);
    EXPECT_EQ(step(), result) << ++number;
    ComPtr<IErrorInfo> words;
    EXPECT_EQ(::GetErrorInfo(0, &words), SUCCEEDED(result) ? S_FALSE : S_OK) << number;
  }
  EXPECT_EQ(control->InitNew(nullptr), E_POINTER);
}

TEST_F(Documents, AreDirtyUntilTheirOwnStorageHasAll) {
  const auto own = NewStorage();
  const auto other = NewStorage();
  const struct {
    const char* what;
    bool sameAsLoad;
    bool changesMeanwhile;
    IStorage* completedWith;
    HRESULT dirty;
  } cases[] = {{"a copy", false, false, nullptr, S_OK},
               {"stored under another name", false, false, other.Get(), S_FALSE},
               {"changed before the end", true, true, nullptr, S_OK},
               {"stored", true, false, nullptr, S_FALSE}};
  for (const auto& each : cases) {
    const auto control = Create<IPersistStorage>();
    ASSERT_EQ(control->InitNew(own.Get()), S_OK);
    SetTitle(control, "A");
    ASSERT_EQ(control->Save(each.sameAsLoad ? own.Get() : other.Get(), each.sameAsLoad), S_OK);
    EXPECT_EQ(control->IsDirty(), S_OK) << each.what;
    if (each.changesMeanwhile) SetTitle(control, "B");
    ASSERT_EQ(control->SaveCompleted(each.completedWith), S_OK);
    EXPECT_EQ(control->IsDirty(), each.dirty) << each.what;
  }
}

/// A storage of a container's own over one of the system's, which lacks what is told.
class PoorStorage : public ComObject<IStorage> {
 public:
  enum class Lack { Streams, Space, NewNames };
  PoorStorage(ComPtr<IStorage> whole, Lack lack) : whole_(std::move(whole)), lack_(lack) {}

  /// Called whenever something is asked of it.
  std::function<void()> onCall = [] {};

  STDMETHODIMP CreateStream(const OLECHAR* name, DWORD mode, DWORD, DWORD,
                            IStream** stream) override {
    onCall();
    if (lack_ == Lack::Streams) return STG_E_MEDIUMFULL;
    const HRESULT result = whole_->CreateStream(name, mode, 0, 0, stream);
    if (lack_ == Lack::NewNames) return result;
    (*stream)->Release();
    // One that can only be read takes no byte.
    return OpenStream(name, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream);
  }
  STDMETHODIMP OpenStream(const OLECHAR* name, void*, DWORD mode, DWORD,
                          IStream** stream) override {
    onCall();
    return whole_->OpenStream(name, nullptr, mode, 0, stream);
  }
  STDMETHODIMP CreateStorage(const OLECHAR*, DWORD, DWORD, DWORD, IStorage**) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP OpenStorage(const OLECHAR*, IStorage*, DWORD, SNB, DWORD, IStorage**) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP CopyTo(DWORD, const IID*, SNB, IStorage*) override { return E_NOTIMPL; }
  STDMETHODIMP MoveElementTo(const OLECHAR*, IStorage*, const OLECHAR*, DWORD) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Commit(DWORD) override { return S_OK; }
  STDMETHODIMP Revert() override { return E_NOTIMPL; }
  STDMETHODIMP EnumElements(DWORD, void*, DWORD, IEnumSTATSTG**) override { return E_NOTIMPL; }
  STDMETHODIMP DestroyElement(const OLECHAR* name) override { return whole_->DestroyElement(name); }
  STDMETHODIMP RenameElement(const OLECHAR*, const OLECHAR*) override { return E_NOTIMPL; }
  STDMETHODIMP SetElementTimes(const OLECHAR*, const FILETIME*, const FILETIME*,
                               const FILETIME*) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP SetClass(REFCLSID) override { return S_OK; }
  STDMETHODIMP SetStateBits(DWORD, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }

 private:
  ComPtr<IStorage> whole_;
  Lack lack_;
};

TEST_F(Documents, AStorageThatCannotBeWrittenKeepsWhatItHad) {
  const auto storage = NewStorage();
  const auto control = Create<IPersistStorage>();
  ASSERT_EQ(control->InitNew(storage.Get()), S_OK);
  ASSERT_EQ(control->Save(storage.Get(), TRUE), S_OK);
  SetTitle(control, "New");
  for (const auto lack : {PoorStorage::Lack::Streams, PoorStorage::Lack::Space}) {
    const ComPtr<PoorStorage> poor(new PoorStorage(storage, lack));
    EXPECT_TRUE(FAILED(control->Save(poor.Get(), TRUE)));
    EXPECT_EQ(control->SaveCompleted(nullptr), S_OK);
    EXPECT_EQ(control->IsDirty(), S_OK);
    EXPECT_EQ(Title(Loaded(storage)), "Default");
  }
  const ComPtr<PoorStorage> poor(new PoorStorage(storage, PoorStorage::Lack::NewNames));
  EXPECT_EQ(control->Save(poor.Get(), TRUE), S_OK);
  EXPECT_EQ(Title(Loaded(storage)), "New");
}

TEST_F(Documents, MayBeLetGoInTheMiddleOfBeingStoredOrLoaded) {
  const auto storage = NewStorage();
  for (const auto lack : {PoorStorage::Lack::NewNames, PoorStorage::Lack::Space}) {
    const ComPtr<PoorStorage> poor(new PoorStorage(storage, lack));
    for (const bool stores : {true, false}) {
      auto control = Create<IPersistStorage>();
      if (stores) {
        ASSERT_EQ(control->InitNew(storage.Get()), S_OK);
      }
      IPersistStorage* const called = control.Get();
      poor->onCall = [&] { control.Reset(); };
      const HRESULT result = stores ? called->Save(poor.Get(), TRUE) : called->Load(poor.Get());
      EXPECT_EQ(SUCCEEDED(result), !stores || lack == PoorStorage::Lack::NewNames);
      EXPECT_TRUE(library_.CanUnload());
    }
  }
}

TEST_F(Documents, OpenInEveryWordSizeAndDamagedOnesChangeNothing) {
  // Numbers of 4 bytes, the lowest first; texts in UTF-8 after their length.
  const std::string whole(
      "VYP1\2\0\0\0\6\0\0\0Folder\4\0\0\0Team\11\0\0\0TitleName\6\0\0\0R\303\244ume", 49);
  const auto storage = NewStorage();
  SetContents(storage, whole);
  EXPECT_EQ(Title(Loaded(storage)), "Räume");
  for (std::size_t at = 0; at < whole.size(); ++at) {
    std::string turned = whole;
    turned[at] = static_cast<char>(~turned[at]);
    for (const std::string& damaged : {whole.substr(0, at), turned}) {
      SetContents(storage, damaged);
      const auto control = Create<IPersistStorage>();
      const HRESULT result = control->Load(storage.Get());
      if (damaged.size() < whole.size()) {
        EXPECT_TRUE(FAILED(result)) << at;
      }
      if (FAILED(result)) {
        EXPECT_EQ(Title(control), "Default") << at;
        EXPECT_EQ(control->InitNew(storage.Get()), S_OK) << at;
      }
    }
  }
}

TEST_F(Documents, WhatAControlOf64BitsStoredIsWholeInBothWordSizes) {
  ComPtr<IStorage> file;
  ASSERT_EQ(::StgOpenStorage(ToWide(TEST_DATA "stored-planner.doc").c_str(), nullptr,
                             STGM_READ | STGM_SHARE_DENY_WRITE, nullptr, 0, &file),
            S_OK);
  const auto storage = NewStorage();
  ASSERT_EQ(file->CopyTo(0, nullptr, nullptr, storage.Get()), S_OK);
  const AutomationObject planner = Planner(As<IDispatch>(Loaded(storage)));
  EXPECT_EQ(planner.Get("TitleName").ToText(), "Räume");
  EXPECT_EQ(planner.Get("Folder").ToText(), "Team\\Leave");
  EXPECT_EQ(planner.Get("BackColor").ToInt(), 0x336699);
}

TEST_F(Documents, AreToldApartByABitmapAndAnIcon) {
  std::array<wchar_t, 39> id{};
  ::StringFromGUID2(Id(), id.data(), static_cast<int>(id.size()));
  const auto value = [&](const char* key) {
    return WindowsRegistry()
        .QueryValue(RootKey::LocalMachine,
                    "Software\\Classes\\CLSID\\" + ToUtf8(std::wstring_view(id.data())) + key, "")
        .data;
  };
  const std::string path = ControlLibrary::Path();
  EXPECT_EQ(value("\\ToolboxBitmap32"), path + ", 1");
  EXPECT_EQ(value("\\DefaultIcon"), path + ",0");
  const HMODULE library = ::GetModuleHandleW(L"OutlookVelkor.ocx");
  const HANDLE bitmap = ::LoadImageW(library, MAKEINTRESOURCEW(1), IMAGE_BITMAP, 0, 0, 0);
  BITMAP size{};
  ::GetObjectW(bitmap, sizeof size, &size);
  ::DeleteObject(bitmap);
  EXPECT_EQ(size.bmWidth, 16);
  EXPECT_EQ(size.bmHeight, 16);
  HICON icon = nullptr;
  EXPECT_EQ(::ExtractIconExW(ToWide(path).c_str(), 0, &icon, nullptr, 1), 1U);
  EXPECT_TRUE(::DestroyIcon(icon));
}

/// A picture of one colour, for a document to keep.
STGMEDIUM Coloured(COLORREF colour) {
  const RECT frame{0, 0, 1000, 1000};
  const HDC dc = ::CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr);
  const HBRUSH brush = ::CreateSolidBrush(colour);
  const RECT all{-10, -10, 5000, 5000};
  ::FillRect(dc, &all, brush);
  ::DeleteObject(brush);
  STGMEDIUM medium{};
  medium.tymed = TYMED_ENHMF;
  medium.hEnhMetaFile = ::CloseEnhMetaFile(dc);
  return medium;
}

Colour Drawn(IUnknown* object) {
  const DibSection picture(60, 40);
  const RECT bounds{0, 0, 60, 40};
  EXPECT_EQ(::OleDraw(object, DVASPECT_CONTENT, picture.Dc(), &bounds), S_OK);
  return picture.At(30, 20);
}

TEST_F(Documents, ThatAreNotInUseShowTheirLastPicture) {
  const auto storage = NewStorage();
  const auto first = Create<IPersistStorage>();
  ASSERT_EQ(first->InitNew(storage.Get()), S_OK);
  ASSERT_EQ(first->Save(storage.Get(), TRUE), S_OK);
  FORMATETC format{CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
  const Colour red = Colour::FromRgb(255, 0, 0);
  {
    const auto inactive = Loaded(storage);
    EXPECT_NE(Drawn(inactive.Get()), red);
    STGMEDIUM picture = Coloured(RGB(255, 0, 0));
    ASSERT_EQ(As<IOleCache>(inactive)->SetData(&format, &picture, TRUE), S_OK);
    ASSERT_EQ(::OleSave(As<IPersistStorage>(inactive).Get(), storage.Get(), TRUE), S_OK);
  }
  const auto inactive = Loaded(storage);
  EXPECT_EQ(Drawn(inactive.Get()), red);
  format = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
  STGMEDIUM older{};
  ASSERT_EQ(As<IDataObject>(inactive)->GetData(&format, &older), S_OK);
  const DibSection played(60, 40);
  ::SetMapMode(played.Dc(), MM_ANISOTROPIC);
  ::SetViewportExtEx(played.Dc(), 60, 40, nullptr);
  ::PlayMetaFile(played.Dc(), static_cast<METAFILEPICT*>(::GlobalLock(older.hMetaFilePict))->hMF);
  ::GlobalUnlock(older.hMetaFilePict);
  ::ReleaseStgMedium(&older);
  EXPECT_EQ(played.At(30, 20), red);
  // What comes for a class that is not installed.
  ComPtr<IPersistStorage> elsewhere;
  ASSERT_EQ(::OleCreateDefaultHandler(Id(), nullptr, __uuidof(IPersistStorage), Out(elsewhere)),
            S_OK);
  ASSERT_EQ(elsewhere->Load(storage.Get()), S_OK);
  format = {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
  STGMEDIUM kept{};
  EXPECT_EQ(As<IDataObject>(elsewhere)->GetData(&format, &kept), S_OK);
  EXPECT_GT(::GetEnhMetaFileBits(kept.hEnhMetaFile, 0, nullptr), 100U);
  ::ReleaseStgMedium(&kept);
  SetTitle(inactive, "Another");
  EXPECT_NE(Drawn(inactive.Get()), red);
}

TEST_F(Documents, RunUntilTheyAreClosedAndFillTheirBounds) {
  const auto control = Create<IOleObject>();
  EXPECT_FALSE(::OleIsRunning(control.Get()));
  EXPECT_EQ(::OleRun(control.Get()), S_OK);
  EXPECT_TRUE(::OleIsRunning(control.Get()));
  EXPECT_EQ(control->Close(OLECLOSE_NOSAVE), S_OK);
  EXPECT_FALSE(::OleIsRunning(control.Get()));

  const auto view = As<IViewObjectEx>(control);
  DWORD answer = 0;
  EXPECT_EQ(view->GetViewStatus(&answer), S_OK);
  EXPECT_EQ(answer, DWORD{VIEWSTATUS_OPAQUE});
  const RECT bounds{10, 10, 20, 20};
  for (const LONG at : {9L, 10L, 19L, 20L}) {
    const DWORD hit = at >= 10 && at < 20 ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    EXPECT_EQ(view->QueryHitPoint(DVASPECT_CONTENT, &bounds, {at, 15}, 0, &answer), S_OK);
    EXPECT_EQ(answer, hit) << at;
    const RECT line{at, 0, at + 1, 30};
    EXPECT_EQ(view->QueryHitRect(DVASPECT_CONTENT, &bounds, &line, 0, &answer), S_OK);
    EXPECT_EQ(answer, hit) << at;
  }
  SIZEL size{4000, 3000};
  ASSERT_EQ(control->SetExtent(DVASPECT_CONTENT, &size), S_OK);
  RECTL rect{};
  EXPECT_EQ(view->GetRect(DVASPECT_OPAQUE, &rect), S_OK);
  EXPECT_EQ(rect.right, size.cx);
  EXPECT_EQ(view->GetRect(DVASPECT_TRANSPARENT, &rect), DV_E_DVASPECT);
  DVEXTENTINFO wanted{sizeof wanted, DVEXTENT_INTEGRAL, {700, 500}};
  EXPECT_EQ(view->GetNaturalExtent(DVASPECT_CONTENT, -1, nullptr, nullptr, &wanted, &size), S_OK);
  EXPECT_EQ(size.cx, 700);
}

TEST_F(Documents, ThatAreFilesAreBoundByTheirNames) {
  const std::wstring path = std::filesystem::absolute(L"Räume.planner").wstring();
  const auto control = Create<IPersistFile>();
  EXPECT_EQ(control->Save(nullptr, TRUE), E_UNEXPECTED);
  SetTitle(control, "Räume");
  ASSERT_EQ(control->Save(path.c_str(), TRUE), S_OK);
  EXPECT_EQ(control->IsDirty(), S_FALSE);
  ComPtr<IMoniker> name;
  ComPtr<IPersistFile> bound;
  ASSERT_EQ(::CreateFileMoniker(path.c_str(), &name), S_OK);
  ASSERT_EQ(::BindMoniker(name.Get(), 0, __uuidof(IPersistFile), Out(bound)), S_OK);
  EXPECT_EQ(Title(bound), "Räume");
  LPOLESTR file = nullptr;
  EXPECT_EQ(bound->GetCurFile(&file), S_OK);
  EXPECT_EQ(file, path);
  ::CoTaskMemFree(file);
  EXPECT_TRUE(FAILED(control->Save((path + L"\\in\\a file").c_str(), TRUE)));
  EXPECT_TRUE(::DeleteFileW(path.c_str()));
  EXPECT_TRUE(FAILED(Create<IPersistFile>()->Load(path.c_str(), STGM_READ)));
}

/// An object with a control as a part of it.
class Extender : public ComObject<IServiceProvider> {
 public:
  HRESULT Combine(const CLSID& id) {
    return ::CoCreateInstance(id, Identity(), CLSCTX_INPROC_SERVER, __uuidof(IUnknown),
                              reinterpret_cast<void**>(part.GetAddressOf()));
  }
  STDMETHODIMP QueryService(REFGUID, REFIID, void**) override { return E_NOINTERFACE; }
  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    const HRESULT answer = ComObject::QueryInterface(id, object);
    return answer == S_OK || !part ? answer : part->QueryInterface(id, object);
  }

  ComPtr<IUnknown> part;
};

class Aggregation : public Documents {
 protected:
  static ComPtr<Extender> Make() {
    const ComPtr<Extender> made(new Extender);
    EXPECT_EQ(made->Combine(Id()), S_OK);
    return made;
  }
};

TEST_F(Aggregation, AControlAnswersAsTheWholeThatItIsAPartOf) {
  {
    const auto whole = Make();
    const auto control = As<IOleObject>(whole);
    EXPECT_EQ(As<IUnknown>(control), As<IUnknown>(whole));
    EXPECT_EQ(As<IServiceProvider>(As<IDispatch>(control)).Get(), whole.Get());
    ComPtr<IConnectionPoint> point;
    ComPtr<IConnectionPointContainer> points;
    ASSERT_EQ(As<IConnectionPointContainer>(control)->FindConnectionPoint(
                  __uuidof(IPropertyNotifySink), &point),
              S_OK);
    ASSERT_EQ(point->GetConnectionPointContainer(&points), S_OK);
    EXPECT_EQ(As<IUnknown>(points), As<IUnknown>(whole));
    SetTitle(control, "Part");
    EXPECT_EQ(Title(control), "Part");
  }
  EXPECT_TRUE(library_.CanUnload());
}

TEST_F(Aggregation, AWholeAsksForTheIdentityOfItsPartOnly) {
  const ComPtr<Extender> whole = Make();
  ComPtr<IOleObject> other;
  EXPECT_EQ(::CoCreateInstance(Id(), whole.Get(), CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&other)),
            CLASS_E_NOAGGREGATION);
}

TEST_F(Aggregation, TheWholeMayBeLetGoInTheMiddleOfACall) {
  ComPtr<Extender> whole = Make();
  const ComPtr<BareContainer> container(new BareContainer(As<IOleObject>(whole)));
  container->reactions["OnInPlaceActivate"] = [&] {
    container->Drop();
    whole.Reset();
  };
  container->Do(OLEIVERB_UIACTIVATE);
  EXPECT_EQ(container->Count("OnInPlaceActivate"), 1);
  EXPECT_EQ(container->Count("OnInPlaceDeactivate"), 1);
  container->Close();
  EXPECT_TRUE(library_.CanUnload());
}

}  // namespace
}  // namespace velkor
