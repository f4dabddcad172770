// platform/windows/com/ClassesKeys.h: keys and values below Software\Classes, which programs of
// both word sizes and of other makers share.
#pragma once

#include <span>
#include <string>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// Whom a class is registered for: everybody (HKEY_LOCAL_MACHINE, needs administrator rights), or
/// the current user (HKEY_CURRENT_USER). Both lie below Software\Classes.
enum class Registration { Machine, User };

/// Programs of which word size see a key. The system gives each its own CLSID and Interface; names
/// of programs and type libraries are common to both ("Registry Keys Affected by WOW64").
enum class WordSize { Own, Other };

/// A text value below Software\Classes; an empty name is the key's own value.
struct ClassesValue {
  std::string key;
  std::string name;
  std::string text;
};

/// Makes the keys and writes the values. Throws Error with the system's number at the first that
/// cannot be written; those before stay.
void WriteClasses(Registration registration, std::span<const ClassesValue> values);

/// Removes a key with all below it; one that is not there is no failure. Throws Error.
/// @param key  below Software\Classes, not empty
void RemoveClasses(Registration registration, const std::string& key,
                   WordSize seenBy = WordSize::Own);
/// Removes a key that holds neither keys nor values; any other stays. Throws Error.
void RemoveEmptyClasses(Registration registration, const std::string& key);

bool HasClasses(Registration registration, const std::string& key, WordSize seenBy = WordSize::Own);
/// Whether there are keys below a key besides those named.
bool HasKeysBesides(Registration registration, const std::string& key,
                    std::span<const std::string_view> named);

/// Makes those keys that all makers share, where a user has none yet, and notes in each that it was
/// made for the owner. Throws Error.
void ClaimSharedKeys(Registration registration, const std::string& owner);
/// Takes the owner's notes back. A key that was made so goes with its last note, where nothing else
/// is in it. Throws Error.
void DisclaimSharedKeys(Registration registration, const std::string& owner);

}  // namespace velkor
