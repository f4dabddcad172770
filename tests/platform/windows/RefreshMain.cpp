// tests/platform/windows/RefreshMain.cpp: runs the tests of the cache utility, or a client to kill.
#include <gmock/gmock.h>

#include <string_view>

#include "platform/windows/com/ComCacheUtility.h"
#include "platform/windows/system/DialogOwner.h"
#include "tests/platform/windows/PumpMessages.h"

int main(int argc, char** argv) {
  ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  if (argc == 6 && std::string_view(argv[1]) == "--client") {
    velkor::DialogOwner owner;
    const auto utility = velkor::ComCacheUtilities(owner, {}).Create([](short, long) {});
    utility->Start({2026, 1, argv[2], argv[3], argv[4], argv[5]});
    velkor::PumpFor(INFINITE);
  }
  if (argc == 2 && std::string_view(argv[1]) == "--sleep") ::Sleep(INFINITE);
  testing::InitGoogleMock(&argc, argv);
  const int failed = RUN_ALL_TESTS();
  ::CoUninitialize();
  return failed;
}
