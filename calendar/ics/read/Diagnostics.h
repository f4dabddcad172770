// calendar/ics/read/Diagnostics.h: what a calendar file gets wrong, with file and line.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velkor {

/// Note: nothing is missing, or something was left out on purpose. Warning: something of the file
/// is missing or shown other than it says.
enum class Severity { Note, Warning };

struct Diagnostic {
  std::string file;
  /// From 1; 0 for the file as a whole.
  int line = 0;
  Severity severity = Severity::Warning;
  /// What is wrong and what was done about it.
  std::string text;

  friend bool operator==(const Diagnostic&, const Diagnostic&) = default;
};

/// "file.ics:12: text".
std::string ToText(const Diagnostic& diagnostic);

/// Gathers diagnostics of a file, or of one after another, up to a limit; the last one then says
/// that there are more. What a text holds of the file reaches nobody's terminal unless it is
/// printable.
class Diagnostics {
 public:
  Diagnostics(std::string file, std::size_t limit) : file_(std::move(file)), limit_(limit) {}

  void Warn(int line, std::string_view text) { Add(line, Severity::Warning, text); }
  void Note(int line, std::string_view text) { Add(line, Severity::Note, text); }
  /// What follows is of another file.
  void BeginFile(std::string file);
  /// In the order of files and lines.
  std::vector<Diagnostic> Take();

 private:
  void SortFile();
  void Add(int line, Severity severity, std::string_view text);

  std::string file_;
  std::size_t limit_;
  std::vector<Diagnostic> list_;
  /// Where those of the file begin.
  std::size_t ofFile_ = 0;
  std::size_t dropped_ = 0;
};

/// A piece of a file in double quotes for a message: valid UTF-8, one line, at most 60 bytes.
std::string Quoted(std::string_view bytes);

}  // namespace velkor
