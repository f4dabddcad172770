// categories/ColourList.cpp: the text of a colour record, as lines and as categories.
#include "categories/ColourList.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "model/ColourRecord.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::string_view LineBreak = "\r\n";
constexpr int UnusedCategories = 14;

Error FaultOf(std::size_t line, long number, const std::string& what) {
  return {number, "Line " + std::to_string(line) + " of the colour list " + what};
}

/// The category of a line; `line` counts from 1.
Category CategoryOf(const std::string& text, std::size_t line) {
  const std::vector<std::string> parts = Split(text, "|");
  const std::string_view number = parts.size() > 1 ? Trim(parts[1]) : std::string_view();
  const std::string_view digits =
      number.substr(number.starts_with('-') || number.starts_with('+') ? 1 : 0);
  if (digits.empty() || !std::all_of(digits.begin(), digits.end(), IsDigit)) {
    throw FaultOf(line, errors::TypeMismatch, "has no colour: \"" + text + "\"");
  }
  using Limits = std::numeric_limits<std::int32_t>;
  const std::optional<long long> value = ParseInteger(number);
  if (!value || *value < Limits::min() || *value > Limits::max()) {
    throw FaultOf(line, errors::Overflow, "has a colour beyond 32 bits: \"" + text + "\"");
  }
  return {parts[0], Colour{static_cast<std::int32_t>(*value)}};
}

}  // namespace

std::string_view TrimColourList(std::string_view body) {
  const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= 32; };
  while (!body.empty() && isBlank(body.front())) body.remove_prefix(1);
  while (!body.empty() && isBlank(body.back())) body.remove_suffix(1);
  return body;
}

std::vector<std::string> SplitColourList(std::string_view body) {
  return Split(TrimColourList(body), LineBreak);
}

ListedCategories CategoriesOf(const std::vector<std::string>& lines) {
  ListedCategories listed;
  try {
    for (std::size_t k = 1; k < lines.size(); ++k) {
      if (k > CategoryTable::MostCategories) {
        throw FaultOf(k + 1, errors::Overflow, "is one category too many");
      }
      listed.categories.push_back(CategoryOf(lines[k], k + 1));
    }
  } catch (const Error& error) {
    listed.fault = error;
  }
  return listed;
}

std::string ColourListText(const std::vector<Category>& categories) {
  std::string text(colour_record::Header);
  for (const Category& category : categories) {
    text.append(LineBreak).append(category.name).append("|");
    text.append(std::to_string(category.colour.value));
  }
  return text;
}

std::vector<Category> DefaultCategories() {
  std::vector<Category> categories;
  for (int number = 1; number <= UnusedCategories; ++number) {
    categories.push_back({(number < 10 ? "Unused 0" : "Unused ") + std::to_string(number),
                          Colour{888888 - 10101 * number}});
  }
  categories.push_back({"Other", Colour::FromRgb(0xCC, 0xCC, 0xCC)});
  return categories;
}

std::vector<std::string> CategoryNamesOf(const std::vector<std::string>& lines) {
  std::vector<std::string> names;
  for (std::size_t k = 1; k < lines.size(); ++k) {
    names.push_back(lines[k].substr(0, lines[k].find('|')));
  }
  return names;
}

}  // namespace velkor
