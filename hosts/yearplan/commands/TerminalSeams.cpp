// hosts/yearplan/commands/TerminalSeams.cpp: what a command is told, and its platform.
#include "hosts/yearplan/commands/TerminalSeams.h"

#include <unistd.h>

#include <QFileInfo>
#include <ostream>
#include <regex>

#include "platform/desktop/DesktopSystem.h"
#include "platform/desktop/TerminalMessageBoxes.h"
#include "support/RegIO.h"

namespace velkor {

MessageAnswer KeptMessages::Show(const Message& message) {
  texts_ += (texts_.empty() ? "" : "; ") + message.text;
  using enum MessageButtons;
  if (message.buttons == OkCancel || message.buttons == YesNoCancel) return MessageAnswer::Cancel;
  std::ostream nowhere(nullptr);
  return TerminalMessageBoxes(nowhere).Show(message);
}

std::string KeptMessages::Take() {
  return std::exchange(texts_, {});
}

std::string ReasonOf(const std::string& told) {
  static const std::regex Before(R"(^([^]*\r)?Error[^0-9]* -?[0-9]+ )");
  return std::regex_replace(told, Before, "");
}

TerminalSeams::TerminalSeams(const CommandLine& line, std::ostream& stream)
    : clock(line.today ? *line.today : DesktopClock().Now()),
      environment(line.calendar),
      printer(QFileInfo(QString::fromStdString(line.output)).absoluteFilePath().toStdString()),
      progress(stream, ::isatty(STDERR_FILENO) != 0) {
  TerminalMessageBoxes told(stream);
  listSeparator = RegIO::ListSeparator(registry, told);
}

Platform TerminalSeams::On(OutlookApplication& outlook, CacheUtilities& cacheUtilities) {
  return {cacheUtilities, clock,   dialogs, environment, files,    forms,      inputs,   locale,
          messages,       outlook, printer, progress,    registry, scrollBars, settings, shell};
}

}  // namespace velkor
