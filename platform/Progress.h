// platform/Progress.h: how far a long operation is, and the user's wish to end it.
#pragma once

#include <memory>
#include <string_view>

namespace velkor {

/// On show from its making, or a moment later, to its end.
class ProgressReport {
 public:
  virtual ~ProgressReport() = default;
  /// `done` of `total` steps are done, `total` above 0; cheap enough to be called for every step.
  /// Lets waiting messages be processed now and then; other windows of the program hear no input
  /// meanwhile.
  /// @return false when the user wants the operation to end
  virtual bool Step(int done, int total, std::string_view text) = 0;
};

class ProgressReports {
 public:
  virtual ~ProgressReports() = default;
  /// The report must not outlive this.
  virtual std::unique_ptr<ProgressReport> Begin(std::string_view title) = 0;
};

}  // namespace velkor
