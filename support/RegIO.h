// support/RegIO.h: registry values by a textual key path.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/MessageBoxes.h"
#include "platform/Registry.h"

namespace velkor::RegIO {

/// What ReadValue answers instead of failing.
inline constexpr std::string_view Failed = "Error";

struct KeyPath {
  RootKey root;
  std::string subKey;
};

/// Root and sub-key of a path that begins with "HKEY_"; a backslash at its end is dropped. Any
/// other path is shown in a message and yields nothing; so does an unknown root, without message.
std::optional<KeyPath> SplitKeyPath(MessageBoxes& messages, std::string_view path);

/// The value as text (a binary one as its bytes), or "Error" whatever went wrong.
std::string ReadValue(Registry& registry, MessageBoxes& messages, std::string_view path,
                      std::string_view name);

/// The user's list separator; "," when it cannot be read.
std::string ListSeparator(Registry& registry, MessageBoxes& messages);

/// What a code of the registry functions means, in words.
std::string ErrorText(long code);

}  // namespace velkor::RegIO
