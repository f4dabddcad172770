// support/CodePage1252.h: text to and from the Western European code page.
#pragma once

#include <string>
#include <string_view>

namespace velkor {

/// UTF-8 to the bytes of code page 1252. A character that the page lacks and an invalid byte become
/// '?'; the page's undefined bytes 81, 8D, 8F, 90 and 9D (hexadecimal) stand for the control
/// characters of the same code.
std::string ToCodePage1252(std::string_view utf8);

/// The bytes of code page 1252 as UTF-8; every byte has a character.
std::string FromCodePage1252(std::string_view bytes);

}  // namespace velkor
