// tests/platform/windows/main.cpp: runs the Windows tests, or the writer that one of them kills.
#include <gmock/gmock.h>

#include <string_view>

#include "platform/windows/system/Win32.h"
#include "platform/windows/system/WindowsFiles.h"

int main(int argc, char** argv) {
  // Writes to a file, and never ends by itself.
  if (argc == 3 && std::string_view(argv[1]) == "--hold") {
    const auto file = velkor::WindowsFiles().OpenForWriting(argv[2]);
    if (file == nullptr) return 1;
    file->Write("half");
    file->Flush();
    ::Sleep(INFINITE);
  }
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
