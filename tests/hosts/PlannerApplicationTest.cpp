// tests/hosts/PlannerApplicationTest.cpp: a handler that throws ends neither loop nor program.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMessageBox>
#include <stdexcept>

#include "tests/platform/desktop/OpenDialog.h"

namespace velkor {
namespace {

TEST(PlannerApplication, WhatAHandlerThrowsIsToldAndTheLoopGoesOn) {
  QString told;
  WhenOpen([&](QDialog& dialog) {
    told = dynamic_cast<QMessageBox&>(dialog).informativeText();
    dialog.accept();
  });
  QObject receiver;
  bool later = false;
  QMetaObject::invokeMethod(
      &receiver, [] { throw std::runtime_error("no memory left"); }, Qt::QueuedConnection);
  QMetaObject::invokeMethod(
      &receiver, [&] { later = true; }, Qt::QueuedConnection);
  QCoreApplication::processEvents();
  QCoreApplication::processEvents();
  EXPECT_EQ(told, "no memory left");
  EXPECT_TRUE(later);
}

}  // namespace
}  // namespace velkor
