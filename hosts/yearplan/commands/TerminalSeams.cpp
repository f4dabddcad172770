// hosts/yearplan/commands/TerminalSeams.cpp: what a command is told, and its platform.
#include "hosts/yearplan/commands/TerminalSeams.h"

#include <unistd.h>

#include <ostream>

#include "platform/desktop/TerminalMessageBoxes.h"
#include "support/RegIO.h"

namespace velkor {

MessageAnswer KeptMessages::Show(const Message& message) {
  texts_.push_back(message.text);
  std::ostream nowhere(nullptr);
  return TerminalMessageBoxes(nowhere).Show(message);
}

std::string KeptMessages::Text() const {
  std::string all;
  for (const std::string& text : texts_) all += (all.empty() ? "" : "; ") + text;
  return all;
}

TerminalSeams::TerminalSeams(const std::string& calendar, std::ostream& stream)
    : environment(calendar), progress(stream, ::isatty(STDERR_FILENO) != 0) {
  TerminalMessageBoxes told(stream);
  listSeparator = RegIO::ListSeparator(registry, told);
}

Platform TerminalSeams::On(OutlookApplication& outlook) {
  return {cacheUtilities, clock,   dialogs, environment, files,    forms,      inputs,   locale,
          messages,       outlook, printer, progress,    registry, scrollBars, settings, shell};
}

}  // namespace velkor
