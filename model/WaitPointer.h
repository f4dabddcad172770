// model/WaitPointer.h: the wait pointer for as long as something lasts.
#pragma once

#include "platform/System.h"

namespace velkor {

class WaitPointer {
 public:
  /// `shell` outlives this.
  explicit WaitPointer(Shell& shell) : shell_(shell) { shell_.SetWaitPointer(true); }
  ~WaitPointer() { shell_.SetWaitPointer(false); }
  WaitPointer(const WaitPointer&) = delete;
  WaitPointer& operator=(const WaitPointer&) = delete;

 private:
  Shell& shell_;
};

}  // namespace velkor
