// model/Planner.h: what the lower layers need from the control above them.
#pragma once

#include "support/values/Colour.h"

namespace velkor {

/// Implemented by the control, which outlives everything that it hands itself to.
class Planner {
 public:
  virtual ~Planner() = default;
  /// Sets the status indicator; one of the colours of model/Status.h.
  virtual void ReportStatus(Colour colour) = 0;
  virtual bool RefreshOutstanding() const = 0;
  virtual void CancelRefresh() = 0;
  /// Starts a background refresh of the displayed year; `force` cancels an outstanding one first.
  virtual void StartRefresh(bool force) = 0;
};

}  // namespace velkor
