// tools/SilentPlanner.h: stands in for the control where there is none to report to.
#pragma once

#include "model/Planner.h"

namespace velkor {

class SilentPlanner : public Planner {
 public:
  void ReportStatus(Colour) override {}
  bool RefreshOutstanding() const override { return false; }
  void CancelRefresh() override {}
  void StartRefresh(bool) override {}
  void FollowChanges(const std::function<bool()>& steps) override { steps(); }
  bool IsRefreshBusy() const override { return false; }
};

}  // namespace velkor
