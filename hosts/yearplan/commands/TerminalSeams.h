// hosts/yearplan/commands/TerminalSeams.h: the seams of a command, which asks nobody while it runs.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "hosts/yearplan/CalendarPlace.h"
#include "platform/MessageBoxes.h"
#include "platform/Platform.h"
#include "platform/desktop/DesktopLocale.h"
#include "platform/desktop/DesktopRegistry.h"
#include "platform/desktop/DesktopShell.h"
#include "platform/desktop/DesktopSystem.h"
#include "platform/desktop/TerminalDialogs.h"
#include "platform/headless/MemorySettings.h"
#include "platform/headless/RecordingPrinter.h"
#include "platform/headless/ScriptedCacheUtility.h"
#include "platform/headless/ScriptedDialogs.h"
#include "platform/headless/ScriptedForms.h"
#include "platform/headless/ScriptedScrollBars.h"

namespace velkor {

/// Keeps what is told, for a command that knows only at its end whether that was its failure.
class KeptMessages : public MessageBoxes {
 public:
  /// Answers the default button, since nobody can be asked.
  MessageAnswer Show(const Message& message) override;
  /// All texts, joined by "; "; empty for none.
  std::string Text() const;

 private:
  std::vector<std::string> texts_;
};

/// Outlives what works on its platform. The command line is the script: it fills in what dialogs
/// and input boxes answer, once, and what is asked beyond that is cancelled.
struct TerminalSeams {
  /// @param calendar  as CalendarEnvironment takes it
  /// @param stream    shows the progress where it is a terminal's; outlives this
  TerminalSeams(const std::string& calendar, std::ostream& stream);

  DesktopClock clock;
  CalendarEnvironment environment;
  CalendarFiles files;
  DesktopLocale locale;
  DesktopRegistry registry;
  DesktopShell shell;
  KeptMessages messages;
  MemorySettings settings;
  ScriptedCacheUtilities cacheUtilities;
  ScriptedDialogs dialogs;
  ScriptedForms forms;
  ScriptedInputBoxes inputs;
  RecordingPrinter printer;
  ScriptedScrollBars scrollBars;
  TerminalProgress progress;
  std::string listSeparator;

  Platform On(OutlookApplication& outlook);
};

}  // namespace velkor
