// model/Guard.cpp: ends an operation that fails with a message box that says why.
#include "model/Guard.h"

#include <string>

#include "platform/MessageBoxes.h"

namespace velkor {

void Tell(MessageBoxes& messages, std::string_view text) {
  messages.Show({.text = std::string(text), .title = {}});
}

std::string Describe(const Error& error) {
  return std::to_string(error.Number()) + " " + error.Description();
}

void TellError(MessageBoxes& messages, std::string_view prefix, const Error& error) {
  Tell(messages, std::string(prefix) + Describe(error));
}

std::optional<Error> Guard(MessageBoxes& messages, std::string_view prefix,
                           const std::function<void()>& operation) {
  try {
    operation();
    return std::nullopt;
  } catch (const Error& error) {
    TellError(messages, prefix, error);
    return error;
  }
}

}  // namespace velkor
