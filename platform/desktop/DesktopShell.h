// platform/desktop/DesktopShell.h: the event loop, the pointer and the browser of the desktop.
#pragma once

#include "platform/System.h"

namespace velkor {

/// Needs a QCoreApplication; without a QGuiApplication there is no pointer to change.
class DesktopShell : public Shell {
 public:
  /// Runs the event loop for two milliseconds: whoever waits through many rounds sleeps while there
  /// is nothing to do, and gives another process the time to answer however much there is. Returns
  /// at once when the application is about to quit.
  void ProcessMessages() override;
  void SetWaitPointer(bool wait) override;
  void Beep() override;
  void OpenPage(const std::string& address) override;
};

}  // namespace velkor
