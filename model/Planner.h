// model/Planner.h: what the lower layers need from the control above them.
#pragma once

#include <functional>

#include "values/Colour.h"

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
  /// Runs steps that bring in what others changed in the calendar: refreshes that are asked for
  /// within them are started as one afterwards, and of many that fail one is told.
  /// @param steps  answers whether the user was told of trouble with the changes already
  virtual void FollowChanges(const std::function<bool()>& steps) = 0;
  /// A refresh is being started or cancelled: what others changed is better taken afterwards.
  virtual bool IsRefreshBusy() const = 0;
};

}  // namespace velkor
