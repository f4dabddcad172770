// platform/windows/dialogs/WindowsProgress.h: a window that shows how far a long operation is.
#pragma once

#include "platform/Progress.h"

namespace velkor {

class DialogOwner;

/// A window with a bar and a button to cancel, closing it or Escape cancels too; it opens when the
/// operation takes longer than a moment, over a window that is disabled until it goes. Messages are
/// processed at most 25 times a second, no input among them before it is open. WM_QUIT cancels.
class WindowsProgress : public ProgressReports {
 public:
  explicit WindowsProgress(DialogOwner& owner) : owner_(owner) {}

  std::unique_ptr<ProgressReport> Begin(std::string_view title) override;

 private:
  DialogOwner& owner_;
};

}  // namespace velkor
