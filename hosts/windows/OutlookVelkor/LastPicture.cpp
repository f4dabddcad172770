// hosts/windows/OutlookVelkor/LastPicture.cpp: the picture in the system's cache.
#include "hosts/windows/OutlookVelkor/LastPicture.h"

// After windows.h.
#include "OutlookVelkor.h"

namespace velkor {
namespace {

FORMATETC PictureFormat() {
  return {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
}

}  // namespace

/// Made when first asked for: a form needs none. Its interfaces count for the control, so none is
/// kept.
template <typename Interface>
ComPtr<Interface> LastPicture::Cache() {
  if (!cache_) {
    ::CreateDataCache(&control_, CLSID_YearPlan, __uuidof(IUnknown),
                      reinterpret_cast<void**>(cache_.GetAddressOf()));
  }
  ComPtr<Interface> found;
  if (cache_) cache_.As(&found);
  return found;
}

void* LastPicture::Find(REFIID id) {
  if (id == __uuidof(IOleCache)) return Cache<IOleCache>().Get();
  return id == __uuidof(IOleCache2) ? Cache<IOleCache2>().Get() : nullptr;
}

void LastPicture::InitNew(IStorage& storage) {
  if (const auto cache = Cache<IPersistStorage>()) cache->InitNew(&storage);
}

void LastPicture::Load(IStorage& storage) {
  const auto cache = Cache<IPersistStorage>();
  isLast_ = cache && SUCCEEDED(cache->Load(&storage));
}

void LastPicture::Save(IStorage& storage, bool sameAsLoad) {
  if (const auto cache = Cache<IPersistStorage>()) cache->Save(&storage, sameAsLoad);
}

void LastPicture::SaveCompleted(IStorage* storage) {
  if (const auto cache = Cache<IPersistStorage>()) cache->SaveCompleted(storage);
}

void LastPicture::HandsOff() {
  if (const auto cache = Cache<IPersistStorage>()) cache->HandsOffStorage();
}

void LastPicture::Update(IDataObject& control) {
  const auto cache = Cache<IOleCache2>();
  if (!cache) return;
  FORMATETC format = PictureFormat();
  DWORD connection = 0;
  cache->Cache(&format, 0, &connection);
  cache->UpdateCache(&control, UPDFCACHE_ALL, nullptr);
}

MetafileHandle LastPicture::Get() {
  if (!isLast_) return nullptr;
  const auto cache = Cache<IDataObject>();
  FORMATETC format = PictureFormat();
  STGMEDIUM medium{};
  if (!cache || FAILED(cache->GetData(&format, &medium))) return nullptr;
  MetafileHandle picture(
      medium.tymed == TYMED_ENHMF ? ::CopyEnhMetaFileW(medium.hEnhMetaFile, nullptr) : nullptr);
  ::ReleaseStgMedium(&medium);
  return picture;
}

}  // namespace velkor
