// model/Guard.h: ends an operation that fails with a message box that says why.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "values/Error.h"

namespace velkor {

class MessageBoxes;

/// Shows a text; OK only, default title.
void Tell(MessageBoxes& messages, std::string_view text);

/// The error's number in decimal, a blank and its description.
std::string Describe(const Error& error);

/// Shows the prefix (which ends in its own blank) and the error's description, as Tell does.
void TellError(MessageBoxes& messages, std::string_view prefix, const Error& error);

/// Runs an operation. An Error that it throws ends it and is told as TellError does; everything
/// else that it throws goes on.
/// @return the error that was told; none when the operation ran to its end
std::optional<Error> Guard(MessageBoxes& messages, std::string_view prefix,
                           const std::function<void()>& operation);

}  // namespace velkor
