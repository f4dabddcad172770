// support/TextPrefixes.h: ampersands that mark the letter after them.
#pragma once

#include <string>
#include <string_view>

namespace velkor {

/// The text without its prefixes: "&x" is x, "&&" one ampersand.
inline std::string WithoutPrefixes(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '&' && ++at == text.size()) break;
    result.push_back(text[at]);
  }
  return result;
}

}  // namespace velkor
