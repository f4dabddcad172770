// calendar/ics/read/IcsLines.cpp: unfolding lines and splitting them into name, parameters and
// value.
#include "calendar/ics/read/IcsLines.h"

#include <algorithm>

#include "values/Text.h"

namespace velkor {
namespace {

bool IsNameCharacter(char c) {
  return IsLetter(c) || IsDigit(c) || c == '-' || c == '_' || c == '.';
}

/// First place of `wanted` outside double quotes.
std::size_t FindUnquoted(std::string_view text, char wanted) {
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') quoted = !quoted;
    if (text[i] == wanted && !quoted) return i;
  }
  return std::string_view::npos;
}

/// Takes the first of parameters that begin with its semicolon.
std::string_view TakeParameter(std::string_view& rest) {
  rest.remove_prefix(1);
  const std::string_view parameter = rest.substr(0, FindUnquoted(rest, ';'));
  rest.remove_prefix(parameter.size());
  return parameter;
}

}  // namespace

std::string_view IcsLines::TakePhysicalLine() {
  const std::size_t end = bytes_.find('\n', at_);
  std::string_view line = bytes_.substr(at_, end == std::string_view::npos ? end : end - at_);
  at_ = end == std::string_view::npos ? bytes_.size() : end + 1;
  while (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  ++number_;
  return line;
}

/// A soft line break too many must not swallow it.
bool IcsLines::IsBeforeEndOfComponent() const {
  const std::string_view next = bytes_.substr(at_, std::string_view("BEGIN:").size());
  return next.empty() || SameName(next, "BEGIN:") || SameName(next.substr(0, 4), "END:");
}

bool IcsLines::Next(IcsLine& line) {
  if (at_ >= bytes_.size()) return false;
  line.begin = at_;
  line.number = number_;
  line.text = TakePhysicalLine();
  line.tooLong = line.text.size() > longest_;
  line.text = line.text.substr(0, longest_);
  const auto isFold = [&] {
    return at_ < bytes_.size() && (bytes_[at_] == ' ' || bytes_[at_] == '\t');
  };
  // Known once the colon before the value is there, which no longer head delays.
  constexpr std::size_t LongestHead = 1000;
  std::optional<bool> quotedPrintable;
  const auto endsInSoftBreak = [&] {
    if (!line.text.ends_with('=') || IsBeforeEndOfComponent()) return false;
    if (!quotedPrintable && line.text.size() <= LongestHead) {
      if (const auto property = ReadProperty(line)) quotedPrintable = property->IsQuotedPrintable();
    }
    return quotedPrintable.value_or(false);
  };
  bool joins = false;
  while (true) {
    const bool softBreak = endsInSoftBreak();
    if (!softBreak && !isFold()) break;
    if (!joins) joined_.assign(line.text);
    joins = true;
    if (softBreak) joined_.pop_back();
    const std::string_view more = TakePhysicalLine().substr(softBreak ? 0 : 1);
    const std::size_t room = longest_ - joined_.size();
    line.tooLong = line.tooLong || more.size() > room;
    line.text = joined_.append(more.substr(0, room));
  }
  line.end = at_;
  return true;
}

bool IcsProperty::Is(std::string_view upperCaseName) const {
  return SameName(name, upperCaseName);
}

std::optional<std::string_view> IcsProperty::Parameter(std::string_view upperCaseName) const {
  for (std::string_view rest = parameters; !rest.empty();) {
    const std::string_view parameter = TakeParameter(rest);
    const std::size_t equal = parameter.find('=');
    if (equal == std::string_view::npos || !SameName(parameter.substr(0, equal), upperCaseName)) {
      continue;
    }
    std::string_view text = parameter.substr(equal + 1);
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
      text = text.substr(1, text.size() - 2);
    }
    return text;
  }
  return std::nullopt;
}

bool IcsProperty::IsQuotedPrintable() const {
  constexpr std::string_view Name = "QUOTED-PRINTABLE";
  if (const auto encoding = Parameter("ENCODING")) return SameName(*encoding, Name);
  for (std::string_view rest = parameters; !rest.empty();) {
    if (SameName(TakeParameter(rest), Name)) return true;
  }
  return false;
}

std::optional<IcsProperty> ReadProperty(const IcsLine& line) {
  IcsProperty property;
  property.line = line.number;
  std::size_t nameEnd = 0;
  while (nameEnd < line.text.size() && IsNameCharacter(line.text[nameEnd])) ++nameEnd;
  property.name = line.text.substr(0, nameEnd);
  const std::string_view rest = line.text.substr(nameEnd);
  if (nameEnd == 0 || rest.empty() || (rest[0] != ':' && rest[0] != ';')) return std::nullopt;
  std::size_t colon = FindUnquoted(rest, ':');
  // A quote that is never closed hides no value.
  if (colon == std::string_view::npos) colon = rest.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  property.parameters = rest.substr(0, colon);
  property.value = rest.substr(colon + 1);
  return property;
}

std::string_view TakePart(std::string_view& rest, char separator) {
  const std::size_t end = rest.find(separator);
  const std::string_view part = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  return part;
}

}  // namespace velkor
