// hosts/windows/TryOut/Console.cpp: standard output and standard error by their handles.
#include "hosts/windows/TryOut/Console.h"

#include <string>

#include "platform/windows/system/Wide.h"

namespace velkor {
namespace {

void Join(DWORD stream) {
  const HANDLE there = ::GetStdHandle(stream);
  if (there != nullptr && there != INVALID_HANDLE_VALUE) return;
  const HANDLE console = ::CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE,
                                       nullptr, OPEN_EXISTING, 0, nullptr);
  if (console != INVALID_HANDLE_VALUE) ::SetStdHandle(stream, console);
}

void Write(DWORD stream, std::string_view text) {
  const HANDLE handle = ::GetStdHandle(stream);
  if (handle == nullptr || handle == INVALID_HANDLE_VALUE) return;
  const std::string line = std::string(text) + "\r\n";
  DWORD mode = 0;
  DWORD written = 0;
  if (::GetConsoleMode(handle, &mode)) {
    const std::wstring wide = ToWide(line);
    ::WriteConsoleW(handle, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
  } else {
    ::WriteFile(handle, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
  }
}

}  // namespace

void JoinConsole() {
  if (!::AttachConsole(ATTACH_PARENT_PROCESS)) return;
  Join(STD_OUTPUT_HANDLE);
  Join(STD_ERROR_HANDLE);
}

void WriteLine(std::string_view text) {
  Write(STD_OUTPUT_HANDLE, text);
}

void WriteErrorLine(std::string_view text) {
  Write(STD_ERROR_HANDLE, text);
}

}  // namespace velkor
