// hosts/yearplan/commands/TerminalQuestions.cpp: lines from the terminal, shown or not.
#include "hosts/yearplan/commands/TerminalQuestions.h"

#include <termios.h>
#include <unistd.h>

#include <iostream>

#include "values/Text.h"

namespace velkor {
namespace {

/// Keeps the terminal from showing what is typed.
class NoEcho {
 public:
  NoEcho() {
    isTerminal_ = ::tcgetattr(STDIN_FILENO, &before_) == 0;
    termios quiet = before_;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    if (isTerminal_) ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
  }
  ~NoEcho() {
    if (isTerminal_) ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
  }
  NoEcho(const NoEcho&) = delete;
  NoEcho& operator=(const NoEcho&) = delete;

 private:
  termios before_{};
  bool isTerminal_ = false;
};

}  // namespace

bool TerminalQuestions::CanAsk() const {
  return ::isatty(STDIN_FILENO) != 0 && ::isatty(STDERR_FILENO) != 0;
}

std::optional<std::string> TerminalQuestions::Secret(const std::string& question) {
  std::string line;
  {
    const NoEcho quiet;
    prompts_ << question << ' ' << std::flush;
    std::getline(std::cin, line);
  }
  prompts_ << std::endl;
  return line.empty() ? std::nullopt : std::optional(line);
}

bool TerminalQuestions::Confirms(const std::string& question) {
  std::string line;
  prompts_ << question << " [y/N] " << std::flush;
  std::getline(std::cin, line);
  return !line.empty() && Upper(line.front()) == 'Y';
}

}  // namespace velkor
