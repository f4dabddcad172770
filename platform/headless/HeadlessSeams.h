// platform/headless/HeadlessSeams.h: all scripted seams in one hand.
#pragma once

#include "platform/Platform.h"
#include "platform/headless/FixedLocale.h"
#include "platform/headless/MemoryFiles.h"
#include "platform/headless/MemoryRegistry.h"
#include "platform/headless/MemorySettings.h"
#include "platform/headless/ScriptedCacheUtility.h"
#include "platform/headless/ScriptedForms.h"
#include "platform/headless/ScriptedMessageBoxes.h"
#include "platform/headless/ScriptedShell.h"
#include "platform/headless/ScriptedSystem.h"

namespace velkor {

/// Outlives the control that works on its platform.
struct HeadlessSeams {
  ScriptedCacheUtilities cacheUtilities;
  ScriptedClock clock;
  ScriptedEnvironment environment;
  MemoryFiles files;
  ScriptedForms forms;
  FixedLocale locale;
  ScriptedMessageBoxes messages;
  MemoryRegistry registry;
  MemorySettings settings;
  ScriptedShell shell;

  Platform On(OutlookApplication& outlook) {
    return {cacheUtilities, clock,   environment, files,    forms, locale,
            messages,       outlook, registry,    settings, shell};
  }
};

}  // namespace velkor
