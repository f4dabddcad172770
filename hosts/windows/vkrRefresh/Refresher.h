// hosts/windows/vkrRefresh/Refresher.h: the work of the cache utility, one refresh after another.
#pragma once

#include <functional>
#include <memory>

#include "model/SynchResult.h"
#include "platform/CacheUtility.h"
#include "platform/windows/system/MessageWindow.h"

namespace velkor {

class OutlookApplication;

/// Opens the calendar program; throws Error when it cannot be had.
using OpenOutlook = std::function<std::unique_ptr<OutlookApplication>()>;

/// Refreshes on the thread that made it, from a window timer. Messages are processed between two
/// items, so that what they bring is heard in the middle of a refresh; it may let go of the last
/// reference to this.
class Refresher : public std::enable_shared_from_this<Refresher> {
 public:
  /// Starts a window's timer (SetTimer); false when there is none to be had.
  using StartTimer = std::function<bool(HWND, UINT_PTR)>;

  explicit Refresher(OpenOutlook openOutlook, StartTimer startTimer = SystemTimer);

  /// Set by whoever hears the completions, of which each start brings one, never from within a call
  /// of a member.
  WriteComplete onComplete;

  /// Begins a refresh and returns. Throws Error while one runs.
  void Start(const RefreshInputs& inputs);
  /// The refresh ends before its next item, with NothingToReport.
  void Stop() { stopped_ = true; }

 private:
  static bool SystemTimer(HWND window, UINT_PTR id);
  void Hear(UINT message);
  void Run();
  void Complete(SynchResult result, long error);
  bool Proceed();

  OpenOutlook openOutlook_;
  StartTimer startTimer_;
  RefreshInputs inputs_;
  /// From Start to the completion.
  bool busy_ = false;
  bool stopped_ = false;
  MessageWindow window_;
};

}  // namespace velkor
