// hosts/windows/OutlookVelkor/ControlSeams.cpp: each seam over its owner of dialogs.
#include "hosts/windows/OutlookVelkor/ControlSeams.h"

#include <string>
#include <utility>

#include "platform/windows/system/Modules.h"

namespace velkor {
namespace {

std::string FolderOf(const std::string& path) {
  const std::size_t end = path.find_last_of('\\');
  return path.substr(0, end == path.npos ? 0 : end);
}

/// Where the product's own pages lie: in the folder docs beside the library, or beside its folder
/// where those of both word sizes have the same pages.
std::string PagesFolder() {
  const std::string folder = FolderOf(ModulePath(ThisModule()));
  const std::string beside = folder + "\\docs";
  const bool isThere = ::GetFileAttributesW(ToWide(beside).c_str()) != INVALID_FILE_ATTRIBUTES;
  return isThere ? beside : FolderOf(folder) + "\\docs";
}

}  // namespace

ControlSeams::ControlSeams(DialogOwner& owner, std::function<void(const Error&)> onError)
    : messages_(owner),
      forms_(owner),
      dialogs_(owner),
      inputs_(owner),
      progress_(owner),
      printer_(owner),
      shell_(owner, PagesFolder()),
      cacheUtilities_(owner, std::move(onError)),
      outlook_(owner) {}

Platform ControlSeams::All() {
  return {cacheUtilities_, clock_,      dialogs_,  environment_, files_,   forms_,
          inputs_,         locale_,     messages_, outlook_,     printer_, progress_,
          registry_,       scrollBars_, settings_, shell_};
}

}  // namespace velkor
