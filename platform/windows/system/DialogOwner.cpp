// platform/windows/system/DialogOwner.cpp: the window to open over, and the count of open dialogs.
#include "platform/windows/system/DialogOwner.h"

namespace velkor {

HWND DialogOwner::Get() const {
  const HWND active = ::GetActiveWindow();
  if (active != nullptr && ::IsWindowEnabled(active) && ::IsWindowVisible(active)) return active;
  if (window_ == nullptr || !::IsWindow(window_)) return nullptr;
  // While another program is active a dialog may be open all the same.
  const HWND root = ::GetAncestor(window_, GA_ROOT);
  const HWND dialog = ::GetLastActivePopup(root);
  return ::IsWindowEnabled(dialog) && ::IsWindowVisible(dialog) ? dialog : root;
}

BusyScope::BusyScope(DialogOwner& owner) : owner_(owner) {
  if (owner_.depth_++ == 0 && owner_.onBusy) owner_.onBusy(true);
}

BusyScope::~BusyScope() {
  if (--owner_.depth_ == 0 && owner_.onBusy) owner_.onBusy(false);
}

EntryScope::EntryScope(const DialogOwner& owner) : onEntry_(owner.onEntry) {
  if (onEntry_) onEntry_(true);
}

EntryScope::~EntryScope() {
  if (onEntry_) onEntry_(false);
}

ModalScope::ModalScope(DialogOwner& owner)
    : busy_(owner),
      owner_(owner),
      window_(owner.Get()),
      awareness_(window_),
      wasEnabled_(window_ != nullptr && ::IsWindowEnabled(window_)) {
  if (owner_.onModal) owner_.onModal(true);
}

ModalScope::~ModalScope() {
  // A dialog that WM_QUIT ends leaves it disabled.
  if (wasEnabled_ && !::IsWindowEnabled(window_)) ::EnableWindow(window_, TRUE);
  if (owner_.onModal) owner_.onModal(false);
}

}  // namespace velkor
