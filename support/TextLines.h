// support/TextLines.h: breaks a text into lines of a width, at line ends and blanks.
#pragma once

#include <algorithm>
#include <string_view>

#include "values/Text.h"
#include "values/Twips.h"

namespace velkor {
namespace text_lines {

/// The longest start of a word that is no wider than `width`, but at least one character. The word
/// as a whole is wider. What is measured stays within twice what fits.
template <typename WidthOf>
std::string_view FittingStart(std::string_view word, double width, WidthOf& widthOf) {
  std::string_view rest = word;
  TakeCharacter(rest);
  const std::size_t first = word.size() - rest.size();
  const auto fits = [&](std::size_t bytes) {
    return widthOf(CutAtCharacter(word, bytes)) <= width;
  };
  std::size_t low = first;
  std::size_t high = std::min(2 * low, word.size());
  while (high < word.size() && fits(high)) {
    low = high;
    high = std::min(2 * low, word.size());
  }
  while (high - low > 1) {
    const std::size_t middle = low + (high - low) / 2;
    (fits(middle) ? low : high) = middle;
  }
  return word.substr(0, std::max(first, CutAtCharacter(word, low).size()));
}

/// The part of a paragraph that its first line takes, with the blanks at its end.
template <typename WidthOf>
std::string_view FirstLine(std::string_view paragraph, double width, WidthOf& widthOf) {
  std::size_t end = 0;
  double used = 0;
  while (end < paragraph.size()) {
    const std::size_t letters = paragraph.find_first_not_of(' ', end);
    if (letters == std::string_view::npos) return paragraph;
    const std::size_t next = std::min(paragraph.find(' ', letters), paragraph.size());
    used += widthOf(paragraph.substr(end, next - end));
    if (used > width) {
      return end > 0 ? paragraph.substr(0, letters)
                     : FittingStart(paragraph.substr(0, next), width, widthOf);
    }
    end = next;
  }
  return paragraph;
}

}  // namespace text_lines

/// Calls `visit(line)` for each line until a call returns false. Lines end at CR, LF and CR LF, and
/// at the blanks before a word for which there is no room; these blanks are no part of a line. A
/// word wider than `width` is broken. A line end that ends the text begins no line. Each word is
/// measured once, by `widthOf(text)` in the unit of `width`.
template <typename WidthOf, typename Visit>
void ForEachLine(std::string_view text, double width, WidthOf&& widthOf, Visit&& visit) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    std::string_view paragraph = text.substr(0, end);
    text.remove_prefix(end);
    if (!text.empty()) text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
    do {
      std::string_view line = text_lines::FirstLine(paragraph, width, widthOf);
      paragraph.remove_prefix(line.size());
      while (line.ends_with(' ')) line.remove_suffix(1);
      if (!visit(line)) return;
      while (paragraph.starts_with(' ')) paragraph.remove_prefix(1);
    } while (!paragraph.empty());
  }
}

/// Width of the widest of these lines and the height of all of them.
template <typename WidthOf>
Extent LinesExtent(std::string_view text, double width, double lineHeight, WidthOf&& widthOf) {
  Extent extent;
  ForEachLine(text, width, widthOf, [&](std::string_view line) {
    extent.width = std::max(extent.width, widthOf(line));
    extent.height += lineHeight;
    return true;
  });
  return extent;
}

}  // namespace velkor
