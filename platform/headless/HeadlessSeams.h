// platform/headless/HeadlessSeams.h: all scripted seams in one hand.
#pragma once

#include "platform/Platform.h"
#include "platform/headless/FixedLocale.h"
#include "platform/headless/MemoryFiles.h"
#include "platform/headless/MemoryRegistry.h"
#include "platform/headless/MemorySettings.h"
#include "platform/headless/ScriptedMessageBoxes.h"
#include "platform/headless/ScriptedSystem.h"

namespace velkor {

/// Outlives the control that works on its platform.
struct HeadlessSeams {
  ScriptedClock clock;
  ScriptedEnvironment environment;
  MemoryFiles files;
  FixedLocale locale;
  ScriptedMessageBoxes messages;
  MemoryRegistry registry;
  MemorySettings settings;

  Platform On(OutlookApplication& outlook) {
    return {clock, environment, files, locale, messages, outlook, registry, settings};
  }
};

}  // namespace velkor
