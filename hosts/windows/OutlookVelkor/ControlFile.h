// hosts/windows/OutlookVelkor/ControlFile.h: a control that is a file of its own, as a document
// that is one object.
#pragma once

#include <functional>
#include <string>

#include "platform/windows/com/ComObject.h"

namespace velkor {

/// A copy in memory of the storage that a file is; the file is not held. Throws Error.
ComPtr<IStorage> ReadStorageFile(const std::wstring& path);

/// Makes a file a storage of the control's class. A file that was there is replaced when all was
/// written. Throws Error, and what `write` throws.
void WriteStorageFile(const std::wstring& path, const std::function<void(IStorage&)>& write);

}  // namespace velkor
