// tests/platform/desktop/DesktopShellTest.cpp: waiting for messages within bounds.
#include "platform/desktop/DesktopShell.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QGuiApplication>
#include <QTimer>

namespace velkor {
namespace {

TEST(DesktopShell, ARoundOfMessagesWaitsAMomentAndEndsHoweverManyWait) {
  DesktopShell shell;
  // A timer without an interval always waits.
  for (const int interval : {1, 0}) {
    QTimer busy;
    int handled = 0;
    QObject::connect(&busy, &QTimer::timeout, [&] { ++handled; });
    busy.start(interval);
    for (int round = 0; round < 200; ++round) shell.ProcessMessages();
    EXPECT_GE(handled, 100) << "every " << interval << " milliseconds";
  }
}

TEST(DesktopShell, WaitPointersNest) {
  DesktopShell shell;
  shell.SetWaitPointer(true);
  shell.SetWaitPointer(true);
  shell.SetWaitPointer(false);
  ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
  shell.SetWaitPointer(false);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

}  // namespace
}  // namespace velkor
