// model/Planner.h: what the lower layers need from the control above them.
#pragma once

#include <functional>

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
  /// The same for what others changed in the calendar: of many that fail one is told.
  /// @param told  the user knows of trouble with the changes already
  virtual void FollowChanges(bool force, bool told) = 0;
  /// Refreshes that are asked for within `steps` are started as one, after them.
  virtual void Together(const std::function<void()>& steps) = 0;
  /// A refresh is being started or cancelled: what others changed is better taken afterwards.
  virtual bool IsRefreshBusy() const = 0;
};

}  // namespace velkor
