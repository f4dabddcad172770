// categories/ColourList.cpp: the text of a colour record, as lines and as categories.
#include "categories/ColourList.h"

#include <limits>
#include <optional>

#include "support/values/Error.h"
#include "support/values/Text.h"

namespace velkor {
namespace {

constexpr std::string_view LineBreak = "\r\n";

std::string_view TrimControls(std::string_view text) {
  const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= 32; };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::optional<std::int32_t> ColourValue(std::string_view text) {
  const std::optional<long long> value = ParseInteger(Trim(text));
  using Limits = std::numeric_limits<std::int32_t>;
  if (!value || *value < Limits::min() || *value > Limits::max()) return std::nullopt;
  return static_cast<std::int32_t>(*value);
}

}  // namespace

std::vector<std::string> SplitColourList(std::string_view body) {
  return Split(TrimControls(body), LineBreak);
}

std::vector<Category> CategoriesOf(const std::vector<std::string>& lines) {
  std::vector<Category> categories;
  for (std::size_t k = 1; k < lines.size(); ++k) {
    const std::vector<std::string> parts = Split(lines[k], "|");
    const std::optional<std::int32_t> colour =
        parts.size() > 1 ? ColourValue(parts[1]) : std::nullopt;
    if (!colour) {
      throw Error(errors::TypeMismatch, "Line " + std::to_string(k + 1) +
                                            " of the colour list has no colour: \"" + lines[k] +
                                            "\"");
    }
    categories.push_back({parts[0], Colour{*colour}});
  }
  return categories;
}

}  // namespace velkor
