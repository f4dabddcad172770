// platform/windows/system/MessagePump.h: processes the messages that wait for this thread.
#pragma once

#include <functional>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// What became of a look for a message.
enum class Pumped { Nothing, Message, End };

/// Takes a message before it goes to its window, as a dialog takes its keys; false lets it go on.
using TakeMessage = std::function<bool(MSG& message)>;

/// Hands a message to its window.
void Dispatch(const MSG& message);

/// Processes one message, where one waits. `End` says that the thread is to end: the loops around
/// this one hear of it too.
/// @param kinds  PM_QS_INPUT and the like; 0 for all
Pumped ProcessMessage(const TakeMessage& take = {}, UINT kinds = 0);

/// Processes all messages that wait.
/// @return false once the thread is to end
bool ProcessMessages();

/// Waits until a message is there, or for so long.
void WaitForMessage(DWORD milliseconds);

}  // namespace velkor
