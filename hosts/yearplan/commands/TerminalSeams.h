// hosts/yearplan/commands/TerminalSeams.h: the seams of a command, which asks nobody while it runs.
#pragma once

#include <iosfwd>
#include <set>
#include <string>
#include <vector>

#include "hosts/yearplan/CalendarPlace.h"
#include "hosts/yearplan/commands/CommandLine.h"
#include "platform/MessageBoxes.h"
#include "platform/Platform.h"
#include "platform/desktop/DesktopLocale.h"
#include "platform/desktop/DesktopRegistry.h"
#include "platform/desktop/PdfPrinter.h"
#include "platform/desktop/QtPages.h"
#include "platform/desktop/TerminalDialogs.h"
#include "platform/headless/MemorySettings.h"
#include "platform/headless/ScriptedDialogs.h"
#include "platform/headless/ScriptedForms.h"
#include "platform/headless/ScriptedScrollBars.h"
#include "platform/headless/ScriptedShell.h"
#include "platform/headless/ScriptedSystem.h"

namespace velkor {

/// Keeps what is told, for a command that knows only at its end whether that was its failure.
class KeptMessages : public MessageBoxes {
 public:
  /// Answers Cancel where there is one, and else the default button, since nobody can be asked.
  MessageAnswer Show(const Message& message) override;
  /// All texts since the last call, joined by "; "; empty for none.
  std::string Take();

 private:
  std::string texts_;
};

/// A text of KeptMessages without the number of an error and what stands before it: what was being
/// done, which whoever gave a command knows.
std::string ReasonOf(const std::string& told);

/// A cache file that the command did not bring up to date itself counts as absent.
class FreshFiles : public CalendarFiles {
 public:
  void MarkFresh(const std::string& path) { fresh_.insert(path); }
  bool ReadInto(std::string& bytes, const std::string& path) override {
    return fresh_.contains(path) && CalendarFiles::ReadInto(bytes, path);
  }

 private:
  std::set<std::string> fresh_;
};

/// Its paper is the file that a command writes. Nobody looks at a preview, which is drawn on a
/// speck.
class CommandPrinter : public PdfPrinter {
 public:
  using PdfPrinter::PdfPrinter;
  std::unique_ptr<OffscreenPicture> PagePicture() override {
    return std::make_unique<QtPagePicture>(Extent{});
  }
};

/// Outlives what works on its platform. The command line is the script: it fills in what dialogs
/// and input boxes answer, once, and what is asked beyond that is cancelled.
struct TerminalSeams {
  /// @param stream  shows the progress where it is a terminal's; outlives this
  TerminalSeams(const CommandLine& line, std::ostream& stream);

  /// Stands still.
  ScriptedClock clock;
  CalendarEnvironment environment;
  FreshFiles files;
  DesktopLocale locale;
  DesktopRegistry registry;
  ScriptedShell shell;
  KeptMessages messages;
  MemorySettings settings;
  ScriptedDialogs dialogs;
  /// A form that does not come to be shown had its reason told.
  ScriptedForms forms{[](const std::string&) {}};
  ScriptedInputBoxes inputs;
  CommandPrinter printer;
  ScriptedScrollBars scrollBars;
  TerminalProgress progress;
  std::string listSeparator;

  Platform On(OutlookApplication& outlook, CacheUtilities& cacheUtilities);
};

}  // namespace velkor
