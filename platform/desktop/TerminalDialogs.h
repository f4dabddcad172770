// platform/desktop/TerminalDialogs.h: dialogs and progress of a program without windows.
#pragma once

#include <ostream>

#include "platform/CommonDialogs.h"
#include "platform/MessageBoxes.h"
#include "platform/Progress.h"

namespace velkor {

/// Cancelled each, since nobody can be asked.
class TerminalCommonDialogs : public CommonDialogs {
 public:
  std::string ShowOpen(const FileDialog&) override { return {}; }
  std::string ShowSave(const FileDialog&) override { return {}; }
  std::optional<Colour> ShowColour(Colour) override { return std::nullopt; }
};

/// Cancelled each, since nobody can be asked.
class TerminalInputBoxes : public InputBoxes {
 public:
  std::string Ask(const std::string&, const std::string&) override { return {}; }
};

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
