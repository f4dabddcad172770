// hosts/windows/OutlookVelkor/LastPicture.h: the picture of a control that its document keeps.
#pragma once

#include "platform/windows/com/ComObject.h"
#include "platform/windows/drawing/GdiHandles.h"

namespace velkor {

/// Kept by the system's cache (CreateDataCache), in the way that programs without the control find
/// it in the document. A picture is a help: a cache that fails is one without a picture.
class LastPicture {
 public:
  /// @param control  takes the cache for a part of it; outlives this
  explicit LastPicture(IUnknown& control) : control_(control) {}
  LastPicture(const LastPicture&) = delete;
  LastPicture& operator=(const LastPicture&) = delete;

  /// The cache's own interfaces (IOleCache, IOleCache2); null for others. No reference is added.
  void* Find(REFIID id);

  /// The document's steps, as IPersistStorage has them.
  void InitNew(IStorage& storage);
  void Load(IStorage& storage);
  void Save(IStorage& storage, bool sameAsLoad);
  void SaveCompleted(IStorage* storage);
  void HandsOff();

  /// Takes the picture that the control gives now.
  void Update(IDataObject& control);
  /// The control does not look so any more.
  void Forget() { isLast_ = false; }
  /// As the document was loaded with it; null without one.
  MetafileHandle Get();

 private:
  template <typename Interface>
  ComPtr<Interface> Cache();

  IUnknown& control_;
  ComPtr<IUnknown> cache_;
  bool isLast_ = false;
};

}  // namespace velkor
