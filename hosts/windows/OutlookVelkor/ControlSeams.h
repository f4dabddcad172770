// hosts/windows/OutlookVelkor/ControlSeams.h: everything outside of one control, on Windows.
#pragma once

#include <functional>

#include "platform/Platform.h"
#include "platform/windows/com/ComCacheUtility.h"
#include "platform/windows/dialogs/WindowsDialogs.h"
#include "platform/windows/dialogs/WindowsForms.h"
#include "platform/windows/dialogs/WindowsInputBox.h"
#include "platform/windows/dialogs/WindowsMessageBoxes.h"
#include "platform/windows/dialogs/WindowsProgress.h"
#include "platform/windows/drawing/WindowsPrinter.h"
#include "platform/windows/elements/WindowsScrollBars.h"
#include "platform/windows/outlook/AutomationOutlook.h"
#include "platform/windows/system/DialogOwner.h"
#include "platform/windows/system/WindowsFiles.h"
#include "platform/windows/system/WindowsLocale.h"
#include "platform/windows/system/WindowsRegistry.h"
#include "platform/windows/system/WindowsSettings.h"
#include "platform/windows/system/WindowsShell.h"
#include "platform/windows/system/WindowsSystem.h"

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
