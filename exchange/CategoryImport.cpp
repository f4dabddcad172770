// exchange/CategoryImport.cpp: the command that is to import categories from a file.
#include "exchange/CategoryImport.h"

#include <string>

#include "model/Guard.h"
#include "platform/CommonDialogs.h"
#include "values/Error.h"

namespace velkor {
namespace {

std::string AskForFile(CommonDialogs& dialogs) {
  try {
    return dialogs.ShowOpen({.filter = "All Files|*.*",
                             .title = "Open Categories File",
                             .flags = 0,
                             .defaultExtension = {}});
  } catch (const Error&) {
    return {};
  }
}

}  // namespace

void ImportCategories(const Platform& platform) {
  const std::string fileName = AskForFile(platform.dialogs);
  if (!fileName.empty()) Tell(platform.messages, "To Do: " + fileName);
}

}  // namespace velkor
