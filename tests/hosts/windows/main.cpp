// tests/hosts/windows/main.cpp: runs the tests of the hosts' programs.
#include <gmock/gmock.h>

#include "tests/hosts/windows/ControlCase.h"

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  const velkor::ContainerThread thread;
  return RUN_ALL_TESTS();
}
