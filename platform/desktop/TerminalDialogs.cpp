// platform/desktop/TerminalDialogs.cpp: the line of progress.
#include "platform/desktop/TerminalDialogs.h"

#include <chrono>
#include <string>

namespace velkor {
namespace {

constexpr std::chrono::milliseconds Interval{100};
/// Bytes of a text on the line, so that an ordinary terminal does not wrap it.
constexpr std::size_t LongestText = 60;

/// Printable, and cut between characters (UTF-8).
std::string OneLine(std::string_view text) {
  std::string line(text.substr(0, LongestText));
  if (text.size() > LongestText) {
    while (!line.empty() && (text[line.size()] & 0xC0) == 0x80) line.pop_back();
  }
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = ' ';
  }
  return line;
}

class Report : public ProgressReport {
 public:
  Report(std::ostream& stream, bool isTerminal, std::string_view title)
      : stream_(stream),
        isTerminal_(isTerminal),
        title_(title.empty() ? std::string() : OneLine(title) + ": ") {}
  ~Report() override {
    if (shown_) stream_ << "\r\x1B[K" << std::flush;
  }
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;

  bool Step(int done, int total, std::string_view text) override {
    if (!isTerminal_ || total <= 0) return true;
    const auto now = std::chrono::steady_clock::now();
    if (shown_ && now - last_ < Interval) return true;
    last_ = now;
    shown_ = true;
    // Clears the rest of the line (control sequence EL of ECMA-48).
    stream_ << '\r' << title_ << 100LL * done / total << "% " << OneLine(text) << "\x1B[K"
            << std::flush;
    return true;
  }

 private:
  std::ostream& stream_;
  bool isTerminal_;
  std::string title_;
  bool shown_ = false;
  std::chrono::steady_clock::time_point last_;
};

}  // namespace

std::unique_ptr<ProgressReport> TerminalProgress::Begin(std::string_view title) {
  return std::make_unique<Report>(stream_, isTerminal_, title);
}

}  // namespace velkor
