// platform/desktop/RefreshProtocol.h: what a program and its cache utility write to one another.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/CacheUtility.h"

namespace velkor::refresh_protocol {

/// Each message is a JSON object on a line of its own. The utility reads commands from its standard
/// input and answers each start with one report on its standard output; it ends when its standard
/// input is closed, whatever it is doing. In bytes; a longer line is no message.
inline constexpr std::size_t LongestLine = std::size_t{1} << 20;

/// Start with inputs, or stop what runs.
struct Command {
  std::optional<RefreshInputs> start;
};

struct Report {
  short synchResult = 0;
  long synchError = 0;
  /// Why it failed, in words; may be empty.
  std::string words;
};

/// With the line's end.
std::string Encode(const Command& command);
std::string Encode(const Report& report);

/// Without the line's end; none for a text that is no such message.
std::optional<Command> DecodeCommand(std::string_view line);
std::optional<Report> DecodeReport(std::string_view line);

}  // namespace velkor::refresh_protocol
