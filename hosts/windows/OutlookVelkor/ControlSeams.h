// hosts/windows/OutlookVelkor/ControlSeams.h: everything outside of one control, on Windows.
#pragma once

#include <functional>

#include "platform/Platform.h"
#include "platform/windows/AutomationOutlook.h"
#include "platform/windows/ComCacheUtility.h"
#include "platform/windows/DialogOwner.h"
#include "platform/windows/WindowsDialogs.h"
#include "platform/windows/WindowsFiles.h"
#include "platform/windows/WindowsForms.h"
#include "platform/windows/WindowsInputBox.h"
#include "platform/windows/WindowsLocale.h"
#include "platform/windows/WindowsMessageBoxes.h"
#include "platform/windows/WindowsPrinter.h"
#include "platform/windows/WindowsProgress.h"
#include "platform/windows/WindowsRegistry.h"
#include "platform/windows/WindowsScrollBars.h"
#include "platform/windows/WindowsSettings.h"
#include "platform/windows/WindowsShell.h"
#include "platform/windows/WindowsSystem.h"

namespace velkor {

class Error;

class ControlSeams {
 public:
  /// @param owner  outlives this
  /// @param onError  hears what a refresh reports as the calendar program's error
  ControlSeams(DialogOwner& owner, std::function<void(const Error&)> onError);

  Platform All();
  /// Whether the wait pointer is to be shown.
  bool IsWaiting() const { return shell_.IsWaiting(); }

 private:
  WindowsMessageBoxes messages_;
  WindowsForms forms_;
  WindowsCommonDialogs dialogs_;
  WindowsInputBoxes inputs_;
  WindowsProgress progress_;
  WindowsPrinter printer_;
  WindowsScrollBars scrollBars_;
  WindowsClock clock_;
  WindowsEnvironment environment_;
  WindowsFiles files_;
  WindowsLocale locale_;
  WindowsRegistry registry_;
  WindowsSettings settings_;
  WindowsShell shell_;
  ComCacheUtilities cacheUtilities_;
  AutomationOutlook outlook_;
};

}  // namespace velkor
