// exchange/CategoryImport.h: the command that is to import categories from a file.
#pragma once

#include "platform/Platform.h"

namespace velkor {

/// Lets the user choose a file and tells which one is still to be imported; no file is read. Ends
/// without a message when nothing is chosen or the dialog fails.
void ImportCategories(const Platform& platform);

}  // namespace velkor
