// hosts/windows/OutlookVelkor/ControlStorage.cpp: states of a storage, and the stream in it.
#include "hosts/windows/OutlookVelkor/ControlStorage.h"

#include <utility>

#include "platform/windows/com/ComError.h"

namespace velkor {
namespace {

/// The name that controls commonly give to what they store.
constexpr const wchar_t* Contents = L"CONTENTS";
/// What is being written, until all of it is there.
constexpr const wchar_t* Unfinished = L"CONTENTS.new";

constexpr const char* CannotStore = "The planner cannot be stored in the document";

void WriteStream(IStorage& storage, const wchar_t* name, const ControlStorage::Transfer& write) {
  ComPtr<IStream> stream;
  Check(storage.CreateStream(name, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, &stream),
        CannotStore);
  write(*stream.Get());
  Check(stream->Commit(STGC_DEFAULT), CannotStore);
}

HRESULT OpenStream(IStorage& storage, const wchar_t* name, ComPtr<IStream>& stream) {
  return storage.OpenStream(name, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, &stream);
}

}  // namespace

void WriteContents(IStorage& storage, const ControlStorage::Transfer& write) {
  try {
    WriteStream(storage, Unfinished, write);
  } catch (const Error&) {
    storage.DestroyElement(Unfinished);
    throw;
  }
  storage.DestroyElement(Contents);
  if (SUCCEEDED(storage.RenameElement(Unfinished, Contents))) return;
  // A storage of the container's own may know no other names.
  WriteStream(storage, Contents, write);
  storage.DestroyElement(Unfinished);
}

void ReadContents(IStorage& storage, const ControlStorage::Transfer& read) {
  ComPtr<IStream> stream;
  HRESULT result = OpenStream(storage, Contents, stream);
  // Writing may have ended between the two names.
  if (result == STG_E_FILENOTFOUND) result = OpenStream(storage, Unfinished, stream);
  Check(result, "The document holds no planner that can be read");
  read(*stream.Get());
}

void ControlStorage::Begin() const {
  if (state_ == State::None) return;
  throw Error(CO_E_ALREADYINITIALIZED, "The planner was loaded before.", "YearPlan");
}

void ControlStorage::InitNew(IStorage& storage) {
  Begin();
  storage_ = &storage;
  state_ = State::Normal;
}

void ControlStorage::Load(IStorage& storage, const Transfer& read) {
  Begin();
  ReadContents(storage, read);
  InitNew(storage);
}

void ControlStorage::Save(IStorage& storage, bool sameAsLoad, const Transfer& write) {
  // A container that forgets SaveCompleted may store again.
  if (state_ == State::None || state_ == State::HandsOff) {
    throw Error(E_UNEXPECTED, "The document is not ready to have the planner stored.", "YearPlan");
  }
  state_ = State::NoScribble;
  isWritten_ = false;
  isSameAsLoad_ = sameAsLoad;
  hasChanged_ = false;
  WriteContents(storage, write);
  isWritten_ = true;
}

bool ControlStorage::SaveCompleted(IStorage* storage) {
  if (state_ == State::None || state_ == State::Normal) {
    throw Error(E_UNEXPECTED, "No planner was being stored.", "YearPlan");
  }
  if (state_ == State::HandsOff && storage == nullptr) {
    throw Error(E_INVALIDARG, "The planner has no storage to go on with.", "YearPlan");
  }
  const bool isOwn = isSameAsLoad_ || storage != nullptr;
  if (storage != nullptr) storage_ = storage;
  state_ = State::Normal;
  return std::exchange(isWritten_, false) && isOwn && !hasChanged_;
}

void ControlStorage::HandsOff() {
  if (state_ == State::None) {
    throw Error(E_UNEXPECTED, "The planner has no storage to let go of.", "YearPlan");
  }
  state_ = State::HandsOff;
  storage_.Reset();
}

}  // namespace velkor
