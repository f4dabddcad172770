// hosts/windows/OutlookVelkor/ControlStorage.h: the storage in which a document keeps one control.
#pragma once

#include <functional>

#include "platform/windows/com/ComObject.h"

namespace velkor {

/// The steps of IPersistStorage, for what a control writes into one stream. They throw Error:
/// CO_E_ALREADYINITIALIZED and E_UNEXPECTED for a step that is not in turn, else what the storage
/// answers.
class ControlStorage {
 public:
  /// Reads or writes all that is stored; may throw Error.
  using Transfer = std::function<void(IStream& stream)>;

  void InitNew(IStorage& storage);
  void Load(IStorage& storage, const Transfer& read);
  /// What was stored before is given up only when all that is new was written.
  /// @param sameAsLoad  whether it is the storage that the control was loaded from, so that nothing
  ///   is left to be stored afterwards
  void Save(IStorage& storage, bool sameAsLoad, const Transfer& write);
  /// @param storage  the one from now on; null for the same one as before
  /// @return whether the document has all there is to store
  bool SaveCompleted(IStorage* storage);
  void HandsOff();
  /// What there is to store has changed.
  void Changed() { hasChanged_ = true; }

 private:
  enum class State { None, Normal, NoScribble, HandsOff };

  void Begin() const;

  State state_ = State::None;
  /// Of the last Save that was not completed yet.
  bool isWritten_ = false;
  bool isSameAsLoad_ = false;
  bool hasChanged_ = false;
  ComPtr<IStorage> storage_;
};

/// Writes a stream of a storage anew; the one that was there stays until the new one is whole.
void WriteContents(IStorage& storage, const ControlStorage::Transfer& write);
/// Reads the stream that WriteContents wrote.
void ReadContents(IStorage& storage, const ControlStorage::Transfer& read);

}  // namespace velkor
