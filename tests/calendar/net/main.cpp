// tests/calendar/net/main.cpp: runs the tests that wait for a network in an event loop.
#include <gmock/gmock.h>

#include <QCoreApplication>

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
