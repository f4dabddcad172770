// tests/platform/desktop/QtFormWindowTest.cpp: forms that place their elements, as a user sizes
// and closes them.
#include "platform/desktop/QtFormWindow.h"

#include <gmock/gmock.h>

#include <QScreen>
#include <QTest>

#include "platform/desktop/QtForms.h"
#include "platform/desktop/QtMessageBoxes.h"
#include "tests/platform/PageForm.h"
#include "tests/platform/desktop/OpenDialog.h"
#include "values/Error.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(QtFormWindow, TellsTheFormEachOfItsSizesOnce) {
  PageForm form;
  WhenOpen([&](QDialog& window) {
    EXPECT_THAT(form.widths, ElementsAre(9000));
    EXPECT_TRUE(window.windowFlags() & Qt::WindowMaximizeButtonHint);
    const auto* const page = window.findChild<QWidget*>("pic1");
    ASSERT_EQ(page->parentWidget(), window.findChild<QWidget*>("picParent"));
    EXPECT_EQ(page->mapTo(&window, QPoint(0, 0)), QPoint(20, 60));
    window.resize(650, 500);
    window.resize(700, 500);
    QCoreApplication::processEvents();
    window.resize(700, 500);
    QCoreApplication::processEvents();
    EXPECT_THAT(form.widths, ElementsAre(9000, 10500));
    window.close();
  });
  QtForms().ShowModal(form);
  EXPECT_FALSE(form.IsOpen());
}

TEST(QtFormWindow, KeysGoToThePictureThatHearsThemAndEscapeUnloadsTheForm) {
  PageForm form;
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  WhenOpen([&](QDialog& window) {
    EXPECT_FALSE(QGuiApplication::overrideCursor());
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_PageDown}) {
      QTest::keyClick(window.focusWidget(), key);
    }
    QTest::keyClick(&window, Qt::Key_Return);
    QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(form.IsOpen());
  });
  QtForms().ShowModal(form);
  EXPECT_TRUE(QGuiApplication::overrideCursor());
  QGuiApplication::restoreOverrideCursor();
  EXPECT_THAT(form.keys, ElementsAre(Key::Enter, Key::PageDown));
  EXPECT_EQ(form.presses, 0);
}

TEST(QtFormWindow, ShowsMessagesWhileItIsArrangedAndDoesLaterSizesAfterThem) {
  PageForm form;
  form.onResize = [&] {
    if (form.widths.size() > 1) return form.Unload();
    QWidget* const window = QApplication::activeModalWidget();
    ASSERT_TRUE(window && window->isVisible());
    WhenOpen([&](QDialog& box) {
      EXPECT_EQ(box.parentWidget(), window);
      window->resize(650, 500);
      QCoreApplication::processEvents();
      EXPECT_EQ(form.widths.size(), 1U) << "arranged while it is being arranged";
      QTest::keyClick(&box, Qt::Key_Return);
    });
    QtMessageBoxes().Show({.text = "No room", .title = "A page"});
  };
  QtForms().ShowModal(form);
  EXPECT_THAT(form.widths, ElementsAre(9000, 9750));
}

TEST(QtFormWindow, IsGoneWhenTheFormUnloadsItselfInItsFirstSize) {
  PageForm form;
  for (std::size_t round = 1; round <= 2; ++round) {
    form.onResize = [&] { form.Unload(); };
    QtForms().ShowModal(form);
    EXPECT_EQ(form.widths.size(), round);
    EXPECT_FALSE(form.pic1.Peer());
  }
}

TEST(QtFormWindow, FitsTheScreenAndStaysLargeEnoughToUse) {
  for (const Extent wanted : {Extent{1e9, 1e9}, Extent{0, 0}}) {
    PageForm form(wanted);
    WhenOpen([&](QDialog& window) {
      const QSize available = window.screen()->availableSize();
      EXPECT_TRUE(window.size().boundedTo(available) == window.size());
      EXPECT_GE(window.width(), 300);
      window.close();
    });
    QtForms().ShowModal(form);
  }
}

TEST(QtFormWindow, RefusesElementsThatItCannotShow) {
  for (const bool held : {false, true}) {
    UnplaceableForm form(held);
    EXPECT_THROW(QtForms().ShowModal(form), Error);
    EXPECT_FALSE(form.IsOpen() || form.lblText.Peer());
  }
}

}  // namespace
}  // namespace velkor
