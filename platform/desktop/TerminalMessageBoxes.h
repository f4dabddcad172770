// platform/desktop/TerminalMessageBoxes.h: messages of a program without windows.
#pragma once

#include <ostream>

#include "platform/MessageBoxes.h"

namespace velkor {

/// Prints title and text and answers the default button, since nobody can be asked.
class TerminalMessageBoxes : public MessageBoxes {
 public:
  /// The stream outlives this.
  explicit TerminalMessageBoxes(std::ostream& stream) : stream_(stream) {}

  MessageAnswer Show(const Message& message) override;

 private:
  std::ostream& stream_;
};

}  // namespace velkor
