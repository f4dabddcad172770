// categories/MasterList.cpp: the category names that Outlook itself offers its user.
#include "categories/MasterList.h"

#include <cstddef>
#include <string_view>

#include "platform/Outlook.h"
#include "support/RegIO.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::string_view OfficeKey = "HKEY_CURRENT_USER\\Software\\Microsoft\\Office\\";
constexpr std::string_view CategoriesKey = ".0\\Outlook\\Categories";

constexpr bool IsLeadingSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

constexpr bool IsTrailingSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

/// UTF-8 of UTF-16 with the low byte first. A byte too many and NULs at the end are dropped; a
/// surrogate without its other half is U+FFFD.
std::string TextOfUtf16(std::string_view bytes) {
  const auto unitAt = [&](std::size_t index) {
    return static_cast<char32_t>(static_cast<unsigned char>(bytes[2 * index]) |
                                 static_cast<unsigned char>(bytes[2 * index + 1]) << 8);
  };
  std::size_t count = bytes.size() / 2;
  while (count > 0 && unitAt(count - 1) == 0) --count;

  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    char32_t character = unitAt(i);
    if (IsLeadingSurrogate(character) && i + 1 < count && IsTrailingSurrogate(unitAt(i + 1))) {
      ++i;
      character = 0x10000 + ((character - 0xD800) << 10) + (unitAt(i) - 0xDC00);
    }
    AppendCharacter(text, character);
  }
  return text;
}

}  // namespace

std::vector<std::string> MasterCategories(OutlookApplication& outlook, Registry& registry,
                                          MessageBoxes& messages) {
  const std::string version = outlook.Version();
  const std::string key =
      std::string(OfficeKey) + version.substr(0, version.find('.')) + std::string(CategoriesKey);
  const std::string list = RegIO::ReadValue(registry, messages, key, "MasterList");
  std::vector<std::string> names;
  if (list == RegIO::Failed) return names;
  ForEachPiece(TextOfUtf16(list), ";", [&](std::string_view piece) {
    const std::string_view name = Trim(piece);
    if (!name.empty()) names.emplace_back(name);
    return true;
  });
  return names;
}

}  // namespace velkor
