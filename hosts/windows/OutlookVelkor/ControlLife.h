// hosts/windows/OutlookVelkor/ControlLife.h: keeps a control alive for as long as it is at work.
#pragma once

#include <memory>
#include <vector>

#include "platform/windows/com/ComError.h"
#include "platform/windows/com/ComObject.h"
#include "platform/windows/system/DialogOwner.h"
#include "platform/windows/system/MessageWindow.h"

namespace velkor {

/// Whoever is called outside, and whatever processes messages, may close the control, take its
/// place away and let it go before it returns. So a call from outside is answered by Answer or
/// within an EntryScope of the owner; somebody outside is called by Tell; and what a call may have
/// changed is read anew after it. The control then lives on until nothing of it is at work.
class ControlLife {
 public:
  /// @param control  the object that this is a part of, or the whole that the control is a part of
  explicit ControlLife(IUnknown& control);
  ~ControlLife();
  ControlLife(const ControlLife&) = delete;
  ControlLife& operator=(const ControlLife&) = delete;

  /// Of the control's dialogs.
  DialogOwner& Owner() { return owner_; }

  /// Does what a call from outside asks for; nothing is thrown to the caller.
  template <typename Work>
  HRESULT Answer(const Work& work) {
    const EntryScope entry(owner_);
    return velkor::Answer(work);
  }

  /// Calls somebody outside, who is kept until the end of the call as well.
  /// @param outside  null for nobody, who agrees to all
  template <typename Interface, typename Call>
  HRESULT Tell(ComPtr<Interface> outside, const Call& call) {
    if (!outside) return S_OK;
    const BusyScope busy(owner_);
    return call(*outside.Get());
  }

  /// Keeps what the control has done with until nothing of it can be at work any more.
  void Retire(std::shared_ptr<void> object);

 private:
  void Enter(bool begins);
  void KeepWhileBusy(bool busy);
  void SettleSoon();
  void Settle();

  IUnknown& control_;
  DialogOwner owner_;
  /// How many calls from outside are being answered.
  int entries_ = 0;
  /// A reference to the control, from the beginning of a busy time until nothing is at work.
  bool kept_ = false;
  /// Whether it was kept when the outermost call from outside began.
  bool keptBefore_ = false;
  MessageWindow keeper_;
  std::vector<std::shared_ptr<void>> retired_;
};

}  // namespace velkor
