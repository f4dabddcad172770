// calendar/ics/write/IcsComponentEdit.cpp: a component as a list of lines, some of them replaced.
#include "calendar/ics/write/IcsComponentEdit.h"

#include <algorithm>

#include "calendar/ics/read/IcsLines.h"
#include "calendar/ics/write/IcsText.h"
#include "values/Text.h"

namespace velkor {
namespace {

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
  return upper;
}

/// Calls visit(name, whole) for each parameter; `whole` begins with its semicolon.
template <typename Visit>
void ForEachParameter(std::string_view parameters, const Visit& visit) {
  std::size_t begin = 0;
  bool quoted = false;
  for (std::size_t i = 1; i <= parameters.size(); ++i) {
    if (i < parameters.size() && parameters[i] == '"') quoted = !quoted;
    if (i < parameters.size() && (quoted || parameters[i] != ';')) continue;
    const std::string_view whole = parameters.substr(begin, i - begin);
    visit(whole.substr(1, whole.find('=') - 1), whole);
    begin = i;
  }
}

}  // namespace

IcsComponentEdit::IcsComponentEdit(std::string_view bytes, const IcsComponent& component,
                                   const IcsLimits& limits)
    : bytes_(bytes) {
  IcsLines lines(bytes, component.begin, component.end, component.line, limits.lineLength);
  IcsLine line;
  int depth = 0;
  std::string inside;
  std::optional<std::size_t> end;
  while (lines.Next(line)) {
    Line& kept = lines_.emplace_back();
    kept.begin = line.begin;
    kept.end = line.end;
    const auto property = line.tooLong ? std::nullopt : ReadProperty(line);
    const bool begins = property && property->Is("BEGIN");
    const bool ends = property && property->Is("END");
    if (begins && ++depth == 2) inside = UpperCase(Trim(property->value));
    // The component's own END ends all that is open inside it.
    if (ends && depth > 1 && SameName(Trim(property->value), component.name)) depth = 1;
    if (depth > 1) kept.inside = inside;
    if (ends && --depth == 0 && !end) end = lines_.size() - 1;
    if (depth == 1 && property && !begins && !ends) {
      kept.name = UpperCase(property->name);
      kept.spelled = std::string(property->name);
      kept.parameters = std::string(property->parameters);
    }
  }
  lineEnd_ = lines_.empty() ? "" : LineEndOf(lines_.front());
  if (lineEnd_.empty()) lineEnd_ = "\r\n";
  componentsEnd_ = end.value_or(lines_.size());
  const auto firstInside = std::find_if(lines_.begin(), lines_.end(),
                                        [](const Line& one) { return !one.inside.empty(); });
  propertiesEnd_ = std::min(componentsEnd_, static_cast<std::size_t>(firstInside - lines_.begin()));
}

std::string IcsComponentEdit::LineEndOf(const Line& line) const {
  const std::string_view text = bytes_.substr(line.begin, line.end - line.begin);
  const std::size_t last = text.find_last_not_of("\r\n");
  return text.ends_with('\n')
             ? std::string(text.substr(last == std::string_view::npos ? 0 : last + 1))
             : std::string();
}

const IcsComponentEdit::Line* IcsComponentEdit::Find(std::string_view name) const {
  const auto is = [&](const Line& line) { return line.name == name; };
  if (name == "DTSTART") {
    const auto first = std::find_if(lines_.begin(), lines_.end(), is);
    return first == lines_.end() ? nullptr : &*first;
  }
  const auto last = std::find_if(lines_.rbegin(), lines_.rend(), is);
  return last == lines_.rend() ? nullptr : &*last;
}

std::string IcsComponentEdit::ParametersWithout(
    std::string_view name, std::initializer_list<std::string_view> left) const {
  std::string kept;
  if (const Line* line = Find(name)) {
    ForEachParameter(line->parameters, [&](std::string_view parameter, std::string_view whole) {
      const bool leave = std::any_of(
          left.begin(), left.end(), [&](std::string_view one) { return SameName(one, parameter); });
      if (!leave) kept += whole;
    });
  }
  return kept;
}

std::string IcsComponentEdit::ParameterOf(std::string_view name, std::string_view parameter) const {
  std::string found;
  if (const Line* line = Find(name)) {
    ForEachParameter(line->parameters, [&](std::string_view one, std::string_view whole) {
      if (found.empty() && SameName(one, parameter)) found = whole;
    });
  }
  return found;
}

void IcsComponentEdit::Set(std::string_view name, std::string_view parameters,
                           std::string_view value) {
  const Line* found = Find(name);
  std::string text(found ? found->spelled : name);
  text.append(parameters).append(":").append(value);
  if (!found) {
    addedProperties_ += FoldLine(text, lineEnd_);
    return;
  }
  Line& line = lines_[static_cast<std::size_t>(found - lines_.data())];
  const std::string end = LineEndOf(line);
  line.replaced = FoldLine(text, end.empty() ? lineEnd_ : end);
  if (end.empty()) line.replaced->resize(line.replaced->size() - lineEnd_.size());
}

void IcsComponentEdit::Remove(std::string_view name) {
  for (Line& line : lines_) {
    if (line.name != name) continue;
    line.name.clear();
    line.replaced = "";
  }
}

void IcsComponentEdit::KeepFirst(std::string_view name) {
  bool isFirst = true;
  for (Line& line : lines_) {
    if (line.name != name) continue;
    if (!isFirst) {
      line.name.clear();
      line.replaced = "";
    }
    isFirst = false;
  }
}

bool IcsComponentEdit::HasComponent(std::string_view name) const {
  return std::any_of(lines_.begin(), lines_.end(),
                     [&](const Line& line) { return line.inside == name && !line.replaced; });
}

void IcsComponentEdit::RemoveComponents(std::string_view name) {
  for (Line& line : lines_) {
    if (line.inside == name) line.replaced = "";
  }
}

void IcsComponentEdit::AddComponent(std::span<const std::string_view> lines) {
  for (const std::string_view line : lines) {
    addedComponents_ += FoldLine(line, lineEnd_);
  }
}

std::string IcsComponentEdit::Text() const {
  std::string text;
  const auto add = [&](const std::string& added) {
    if (added.empty()) return;
    if (!text.empty() && text.back() != '\n') text += lineEnd_;
    text += added;
  };
  for (std::size_t i = 0; i <= lines_.size(); ++i) {
    if (i == propertiesEnd_) add(addedProperties_);
    if (i == componentsEnd_) add(addedComponents_);
    if (i == lines_.size()) break;
    const Line& line = lines_[i];
    text.append(line.replaced ? std::string_view(*line.replaced)
                              : bytes_.substr(line.begin, line.end - line.begin));
  }
  return text;
}

}  // namespace velkor
