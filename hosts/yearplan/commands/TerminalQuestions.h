// hosts/yearplan/commands/TerminalQuestions.h: asks the user of a terminal.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

namespace velkor {

class TerminalQuestions {
 public:
  /// @param prompts  where questions go; outlives this
  explicit TerminalQuestions(std::ostream& prompts) : prompts_(prompts) {}

  /// Whether somebody can be asked: standard input and standard error are terminals.
  bool CanAsk() const;
  /// One line that is not shown while it is typed; none at the end of the input and for an empty
  /// line.
  std::optional<std::string> Secret(const std::string& question);
  /// False but for an answer that begins with y.
  bool Confirms(const std::string& question);

 private:
  std::ostream& prompts_;
};

}  // namespace velkor
