// hosts/windows/TryOut/Console.h: lines to whoever started the program.
#pragma once

#include <string_view>

namespace velkor {

/// A program of windows has no console of its own: this takes that of the program that started it,
/// unless its output goes elsewhere.
void JoinConsole();

/// UTF-8, where the line goes to a file or a pipe.
void WriteLine(std::string_view text);
void WriteErrorLine(std::string_view text);

}  // namespace velkor
