// platform/headless/HeadlessSeams.h: bundles one scripted implementation of every seam.
#pragma once

#include "platform/Platform.h"
#include "platform/headless/FixedLocale.h"
#include "platform/headless/MemoryFiles.h"
#include "platform/headless/MemoryRegistry.h"
#include "platform/headless/MemorySettings.h"
#include "platform/headless/RecordingPrinter.h"
#include "platform/headless/ScriptedCacheUtility.h"
#include "platform/headless/ScriptedDialogs.h"
#include "platform/headless/ScriptedForms.h"
#include "platform/headless/ScriptedMessageBoxes.h"
#include "platform/headless/ScriptedScrollBars.h"
#include "platform/headless/ScriptedShell.h"
#include "platform/headless/ScriptedSystem.h"

namespace velkor {

/// Outlives the control that works on its platform.
struct HeadlessSeams {
  ScriptedCacheUtilities cacheUtilities;
  ScriptedClock clock;
  ScriptedDialogs dialogs;
  ScriptedEnvironment environment;
  MemoryFiles files;
  ScriptedForms forms;
  ScriptedInputBoxes inputs;
  FixedLocale locale;
  ScriptedMessageBoxes messages;
  ScriptedProgress progress;
  RecordingPrinter printer;
  MemoryRegistry registry;
  ScriptedScrollBars scrollBars;
  MemorySettings settings;
  ScriptedShell shell;

  Platform On(OutlookApplication& outlook) { return On(outlook, messages); }
  /// With other message boxes.
  Platform On(OutlookApplication& outlook, MessageBoxes& boxes) {
    return {cacheUtilities, clock,   dialogs, environment, files,    forms,      inputs,   locale,
            boxes,          outlook, printer, progress,    registry, scrollBars, settings, shell};
  }
};

}  // namespace velkor
