// hosts/windows/vkrRefresh/main.cpp: the cache utility as a COM server.
#include "platform/windows/Win32.h"
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  return 0;
}
