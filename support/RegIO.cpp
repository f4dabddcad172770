// support/RegIO.cpp: registry values by a textual key path.
#include "support/RegIO.h"

#include <utility>

namespace velkor::RegIO {

std::optional<KeyPath> SplitKeyPath(MessageBoxes& messages, std::string_view path) {
  if (!path.starts_with("HKEY_")) {
    messages.Show({.text = "Incorrect Format:\n\n" + std::string(path), .title = {}});
    return std::nullopt;
  }
  if (path.ends_with('\\')) path.remove_suffix(1);
  const std::size_t slash = path.find('\\');
  const std::string_view rootName = path.substr(0, slash);
  const std::string_view subKey =
      slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
  for (const auto& [name, root] : RootKeyNames) {
    if (name == rootName) return KeyPath{root, std::string(subKey)};
  }
  return std::nullopt;
}

std::string ReadValue(Registry& registry, MessageBoxes& messages, std::string_view path,
                      std::string_view name) {
  const std::optional<KeyPath> key = SplitKeyPath(messages, path);
  if (!key) return std::string(Failed);
  RegistryAnswer answer = registry.QueryValue(key->root, key->subKey, name);
  return answer.code == registry_codes::Success ? std::move(answer.data) : std::string(Failed);
}

std::string ListSeparator(Registry& registry, MessageBoxes& messages) {
  std::string separator =
      ReadValue(registry, messages, "HKEY_CURRENT_USER\\Control Panel\\International", "sList");
  return separator == Failed ? "," : separator;
}

std::string ErrorText(long code) {
  switch (code) {
    case registry_codes::BadKey:
      return "Bad Key Name";
    case registry_codes::FileNotFound:
    case registry_codes::CantOpen:
      return "Can't Open Key";
    case registry_codes::CantRead:
      return "Can't Read Key";
    case registry_codes::AccessDenied:
      return "Access to this key is denied";
    case registry_codes::CantWrite:
      return "Can't Write Key";
    case registry_codes::OutOfMemory:
      return "Out of memory";
    case registry_codes::InvalidParameter:
      return "Invalid Parameter";
    case registry_codes::MoreData:
      return "There is more data than the buffer has been allocated to hold.";
    default:
      return "Undefined Error Code:  " + std::to_string(code);
  }
}

}  // namespace velkor::RegIO
