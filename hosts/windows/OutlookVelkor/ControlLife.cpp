// hosts/windows/OutlookVelkor/ControlLife.cpp: counts calls from outside, and settles after them.
#include "hosts/windows/OutlookVelkor/ControlLife.h"

#include <utility>

namespace velkor {
namespace {

constexpr UINT MessagesFlowAgain = WM_APP;

}  // namespace

ControlLife::ControlLife(IUnknown& control)
    : control_(control), keeper_([this](UINT message, WPARAM) {
        if (message == MessagesFlowAgain) Settle();
      }) {
  owner_.onBusy = [this](bool busy) { KeepWhileBusy(busy); };
  owner_.onEntry = [this](bool begins) { Enter(begins); };
}

ControlLife::~ControlLife() {
  owner_.onBusy = nullptr;
  owner_.onEntry = nullptr;
}

void ControlLife::Retire(std::shared_ptr<void> object) {
  const BusyScope busy(owner_);
  retired_.push_back(std::move(object));
}

/// What became busy within a call from outside is over with that call, also where no messages will
/// flow any more. What was busy before may have callers still at work, as a timer's tick.
void ControlLife::Enter(bool begins) {
  if (begins) {
    control_.AddRef();
    if (entries_++ == 0) keptBefore_ = kept_;
    return;
  }
  if (--entries_ == 0 && kept_ && !owner_.IsBusy()) {
    if (keptBefore_) {
      SettleSoon();
    } else {
      Settle();
    }
  }
  control_.Release();
}

void ControlLife::KeepWhileBusy(bool busy) {
  if (!busy) {
    if (entries_ == 0) SettleSoon();
  } else if (!kept_) {
    kept_ = true;
    control_.AddRef();
  }
}

/// Callers of a busy part may still be at work when it ends: only the next message from the
/// outermost loop finds none of them.
void ControlLife::SettleSoon() {
  ::PostMessageW(keeper_.Get(), MessagesFlowAgain, 0, 0);
}

void ControlLife::Settle() {
  if (owner_.IsBusy() || entries_ > 0 || !kept_) return;
  kept_ = false;
  retired_.clear();
  control_.Release();
}

}  // namespace velkor
