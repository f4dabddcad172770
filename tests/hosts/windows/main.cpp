// tests/hosts/windows/main.cpp: runs the tests of the hosts' programs.
#include <gmock/gmock.h>

#include "tests/platform/windows/Apartment.h"

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  const velkor::Apartment thread;
  return RUN_ALL_TESTS();
}
