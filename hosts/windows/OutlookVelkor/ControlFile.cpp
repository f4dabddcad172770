// hosts/windows/OutlookVelkor/ControlFile.cpp: storages read from files and written to them.
#include "hosts/windows/OutlookVelkor/ControlFile.h"

#include "platform/windows/com/ComError.h"
#include "platform/windows/system/Wide.h"
// After windows.h.
#include "OutlookVelkor.h"

namespace velkor {

ComPtr<IStorage> ReadStorageFile(const std::wstring& path) {
  const std::string doing = "The document " + ToUtf8(path) + " cannot be opened";
  ComPtr<IStorage> file;
  Check(
      ::StgOpenStorage(path.c_str(), nullptr, STGM_READ | STGM_SHARE_DENY_WRITE, nullptr, 0, &file),
      doing);
  ComPtr<ILockBytes> bytes;
  ComPtr<IStorage> copy;
  Check(::CreateILockBytesOnHGlobal(nullptr, TRUE, &bytes), doing);
  Check(::StgCreateDocfileOnILockBytes(
            bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, &copy),
        doing);
  Check(file->CopyTo(0, nullptr, nullptr, copy.Get()), doing);
  return copy;
}

void WriteStorageFile(const std::wstring& path, const std::function<void(IStorage&)>& write) {
  const std::string doing = "The document " + ToUtf8(path) + " cannot be written";
  const std::wstring unfinished = path + L".new";
  try {
    ComPtr<IStorage> file;
    Check(::StgCreateDocfile(unfinished.c_str(),
                             STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, &file),
          doing);
    Check(::WriteClassStg(file.Get(), CLSID_YearPlan), doing);
    write(*file.Get());
    Check(file->Commit(STGC_DEFAULT), doing);
    file.Reset();
    if (!::MoveFileExW(unfinished.c_str(), path.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
      Check(HRESULT_FROM_WIN32(::GetLastError()), doing);
    }
  } catch (const Error&) {
    ::DeleteFileW(unfinished.c_str());
    throw;
  }
}

}  // namespace velkor
