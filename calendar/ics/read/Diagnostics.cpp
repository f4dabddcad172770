// calendar/ics/read/Diagnostics.cpp: gathering and wording of diagnostics.
#include "calendar/ics/read/Diagnostics.h"

#include <algorithm>

#include "values/Text.h"

namespace velkor {

std::string ToText(const Diagnostic& diagnostic) {
  std::string text = diagnostic.file;
  if (diagnostic.line > 0) text.append(":").append(std::to_string(diagnostic.line));
  return text.append(": ").append(diagnostic.text);
}

void Diagnostics::Add(int line, Severity severity, std::string_view text) {
  if (list_.size() < limit_) {
    list_.push_back({file_, line, severity, Printable(text)});
  } else {
    ++dropped_;
  }
}

void Diagnostics::SortFile() {
  std::stable_sort(list_.begin() + static_cast<std::ptrdiff_t>(ofFile_), list_.end(),
                   [](const Diagnostic& a, const Diagnostic& b) { return a.line < b.line; });
}

void Diagnostics::BeginFile(std::string file) {
  SortFile();
  ofFile_ = list_.size();
  file_ = std::move(file);
}

std::vector<Diagnostic> Diagnostics::Take() {
  SortFile();
  if (dropped_ > 0) {
    list_.push_back(
        {file_, 0, Severity::Warning, std::to_string(dropped_) + " more problems are not listed"});
  }
  return std::move(list_);
}

std::string Quoted(std::string_view bytes) {
  constexpr std::size_t Longest = 60;
  std::string text = Printable(bytes.substr(0, Longest + 4));
  const bool cut = bytes.size() > Longest;
  text = std::string(CutAtCharacter(text, Longest));
  std::string quoted(1, '"');
  return quoted.append(text).append(cut ? "...\"" : "\"");
}

}  // namespace velkor
