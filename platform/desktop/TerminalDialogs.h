// platform/desktop/TerminalDialogs.h: shows progress on a terminal.
#pragma once

#include <ostream>

#include "platform/Progress.h"

namespace velkor {

/// One line that is written over and over, at most ten times a second, and cleared at the end;
/// nothing where the stream is no terminal. Never cancels.
class TerminalProgress : public ProgressReports {
 public:
  /// The stream outlives this and its reports.
  TerminalProgress(std::ostream& stream, bool isTerminal)
      : stream_(stream), isTerminal_(isTerminal) {}

  std::unique_ptr<ProgressReport> Begin(std::string_view title) override;

 private:
  std::ostream& stream_;
  bool isTerminal_;
};

}  // namespace velkor
