// tests/hosts/SharedWindowTest.cpp: a window over an address of a server that answers by a script.
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <atomic>

#include "tests/calendar/net/ScriptedServer.h"
#include "tests/hosts/WindowCase.h"
#include "tests/platform/desktop/OpenDialog.h"

namespace velkor {
namespace {

class SharedWindow : public WindowCase {
 protected:
  static bool Until(const std::function<bool()>& isSo) { return QTest::qWaitFor(isSo, 15000); }

  void Choose(const char* entry) {
    for (QAction* const action : window_.findChildren<QAction*>()) {
      if (action->text().remove('&') == entry) return action->trigger();
    }
    ADD_FAILURE() << "No entry " << entry;
  }
  bool StateIs(int row, const char* part) {
    QString state;
    const bool so = Until([&] {
      auto* const item = window_.findChild<QListWidget*>("calendarList")->item(row);
      state = item ? item->data(Qt::AccessibleTextRole).toString() : QString();
      return state.contains(part);
    });
    EXPECT_TRUE(so) << state.toStdString();
    return so;
  }
  QWidget& Notice() { return *window_.findChild<QWidget*>("NoticeLine"); }

  std::atomic<int> status_ = 200;
  const std::string calendar_ =
      CalendarOf({{"20260504", "Public holiday"}, {"20261225", "Christmas"}}).toStdString();
  ScriptedServer server_{[this](const ScriptedRequest& request) -> ScriptedAnswer {
    const bool knows = request.headers.contains("authorization");
    if (status_ == 401 && !knows) {
      return {.status = 401, .headers = {{"WWW-Authenticate", "Basic realm=\"x\""}}};
    }
    return {.status = status_ == 401 ? 200 : status_.load(), .body = calendar_};
  }};
};

TEST_F(SharedWindow, AnAddressIsCheckedBeforeItIsAddedAndItsFaultsLeaveItsLastGoodCopy) {
  OpenWith({{"20260505", "Party"}});
  WhenOpen([&](QDialog& dialog) {
    auto& add = *dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    auto& address = *dialog.findChild<QLineEdit*>("address");
    auto& complaint = *dialog.findChild<QLabel*>("complaint");
    status_ = 404;
    address.setText(QString::fromStdString(server_.Url("/holidays.ics")));
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_TRUE(Until([&] { return !complaint.text().isEmpty(); }));
    status_ = 200;
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_TRUE(Until([&] { return add.isEnabled(); }));
    EXPECT_TRUE(dialog.findChild<QLabel*>("found")->text().contains("2 appointments"));
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  Choose("Add Address...");
  EXPECT_TRUE(Shows(3));
  EXPECT_TRUE(StateIs(1, "holidays: Read-only"));
  status_ = 500;
  Choose("Force Refresh");
  EXPECT_TRUE(StateIs(1, "Failing"));
  EXPECT_TRUE(Shows(3));
  EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(SharedWindow, APasswordIsAskedForInALineAndNothingIsAskedBeforeTheYearIsDrawn) {
  status_ = 401;
  Write("team.yearplan", QByteArray::fromStdString(
                             R"({"yearplan": 1, "calendars": [{"address": ")" +
                             server_.Url("/h.ics") + R"(", "user": "anna", "name": "Days"}]})"));
  ASSERT_TRUE(window_.OpenCalendar(Path("team.yearplan"), Year));
  EXPECT_EQ(server_.Requests().size(), 0U);
  window_.show();
  EXPECT_TRUE(StateIs(0, "The password is needed"));
  ASSERT_TRUE(Notice().isVisible());
  WhenOpen([](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>("user")->text(), "anna");
    dialog.findChild<QLineEdit*>("password")->setText("secret");
    dialog.findChild<QAbstractButton*>("remember")->setChecked(false);
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  QTest::mouseClick(window_.findChild<QPushButton*>("answer0"), Qt::LeftButton);
  EXPECT_TRUE(Shows(2));
  EXPECT_TRUE(Until([&] { return !Notice().isVisible(); }));
}

}  // namespace
}  // namespace velkor
