// tests/platform/desktop/DesktopShellTest.cpp: waiting for messages within bounds.
#include "platform/desktop/DesktopShell.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTimer>

namespace velkor {
namespace {

TEST(DesktopShell, ARoundOfMessagesIsShortHoweverManyWait) {
  DesktopShell shell;
  QTimer busy;
  int handled = 0;
  QObject::connect(&busy, &QTimer::timeout, [&] { ++handled; });
  for (const bool flood : {false, true}) {
    // A timer without an interval always waits.
    if (flood) busy.start(0);
    QElapsedTimer clock;
    clock.start();
    for (int round = 0; round < 200; ++round) shell.ProcessMessages();
    // 2000 rounds then take some four seconds: never none, and not without end.
    EXPECT_GE(clock.elapsed(), 200);
    EXPECT_LT(clock.elapsed(), 2000);
  }
  EXPECT_GT(handled, 200);
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
