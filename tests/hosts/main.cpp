// tests/hosts/main.cpp: runs the tests of the desktop programs without a display.
#include <gmock/gmock.h>

#include "hosts/yearplan/window/PlannerApplication.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const velkor::PlannerApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
