// platform/windows/system/MessagePump.cpp: takes messages from the queue and leaves WM_QUIT in it.
#include "platform/windows/system/MessagePump.h"

namespace velkor {

void Dispatch(const MSG& message) {
  ::TranslateMessage(&message);
  ::DispatchMessageW(&message);
}

Pumped ProcessMessage(const TakeMessage& take, UINT kinds) {
  MSG message;
  if (!::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | kinds)) return Pumped::Nothing;
  if (message.message == WM_QUIT) {
    ::PostQuitMessage(static_cast<int>(message.wParam));
    return Pumped::End;
  }
  if (!take || !take(message)) Dispatch(message);
  return Pumped::Message;
}

bool ProcessMessages() {
  Pumped last = Pumped::Message;
  while (last == Pumped::Message) last = ProcessMessage();
  return last != Pumped::End;
}

void WaitForMessage(DWORD milliseconds) {
  ::MsgWaitForMultipleObjectsEx(0, nullptr, milliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

}  // namespace velkor
