// tests/hosts/SharedWindowTest.cpp: a window over addresses and calendars of a server that answers
// by a script.
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <atomic>

#include "calendar/ics/read/IcsAppointments.h"
#include "calendar/mirror/MirrorWriter.h"
#include "calendar/mirror/Outbox.h"
#include "calendar/mirror/ReadMirror.h"
#include "calendar/set/LocalPlaces.h"
#include "platform/desktop/DesktopSystem.h"
#include "tests/calendar/net/ScriptedServer.h"
#include "tests/hosts/WindowCase.h"
#include "tests/platform/desktop/OpenDialog.h"
#include "values/Error.h"

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
  QTest::mouseClick(window_.findChild<QPushButton*>("answer1"), Qt::LeftButton);
  EXPECT_FALSE(Notice().isVisible());
  Choose("Force Refresh");
  ASSERT_TRUE(Until([&] { return Notice().isVisible(); }));
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
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

/// A mirror of a server that is away, with one edit of each kind that needs the user.
class MirroredWindow : public SharedWindow {
 protected:
  MirroredWindow() {
    for (const char* const uid : {"a", "b", "c"}) Put(uid, "1");
    Change("a");
    Put("a", "2", "SUMMARY:Theirs\r\nLAST-MODIFIED:20990101T000000Z\r\n");
    EXPECT_FALSE(outbox_.Prepare(EntryIdOfUid("a")));
    writer_.WriteDeletion(ItemOf("b"));
    Put("b", "2", "SUMMARY:Theirs\r\n");
    EXPECT_FALSE(outbox_.Prepare(EntryIdOfUid("b")));
    Change("c");
    outbox_.Refuse(*outbox_.Prepare(EntryIdOfUid("c")), "It is too large.");
  }

  void Put(const std::string& uid, const char* etag, const char* lines = "SUMMARY:Trip\r\n") {
    const QByteArray day = "DTSTART;VALUE=DATE:20260504\r\n";
    const QByteArray bytes = velkor::CalendarOf(Event(QByteArray::fromStdString(uid), day + lines));
    mirror_.Put("/team/" + uid + ".ics", etag, bytes.toStdString());
  }
  CalendarItem ItemOf(const char* uid) {
    for (const CalendarItem& item : ReadMirror(mirror_.Folder(), All).items) {
      if (item.entryId == EntryIdOfUid(uid)) return item;
    }
    throw Error(errors::CalendarFailed, std::string("No ") + uid, "Test");
  }
  void Change(const char* uid) {
    const ItemChange change{.subject = "Mine"};
    CalendarItem after = WithChange(ItemOf(uid), change);
    after.lastModified = Date::FromFields({2026, 1, 1, 12, 0, 0});
    writer_.WriteChange(after, change);
  }
  void Press(const char* button) {
    QTest::mouseClick(window_.findChild<QPushButton*>(button), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  std::string Told() { return window_.findChild<QLabel*>("noticeText")->text().toStdString(); }

  const DateWindow All{Date::FromFields({2025, 1, 1, 0, 0, 0}),
                       Date::FromFields({2027, 1, 1, 0, 0, 0})};
  const SetSource source_{.kind = SourceKind::Server, .location = server_.Url("/team/")};
  Mirror mirror_{LocalPlaceOf(source_, PrivateDataFolder())};
  MirrorWriter writer_{mirror_, "Team"};
  Outbox outbox_{mirror_};
};

TEST_F(MirroredWindow, QuestionsNotesAndRefusedEditsAreLinesWithAnswers) {
  status_ = 503;
  Write("team.yearplan", QByteArray::fromStdString(R"({"yearplan": 1, "calendars": [{"server": ")" +
                                                   source_.location + R"(", "name": "Team"}]})"));
  ASSERT_TRUE(window_.OpenCalendar(Path("team.yearplan"), Year));
  window_.show();
  ASSERT_TRUE(Notice().isVisible());
  EXPECT_THAT(Told(), testing::HasSubstr("was deleted here and changed by somebody else"));
  Press("answer0");
  EXPECT_THAT(outbox_.Questions(), testing::IsEmpty());
  EXPECT_THAT(Told(), testing::HasSubstr("later value \"Theirs\" stays; yours was \"Mine\""));
  Press("answer0");
  EXPECT_EQ(ItemOf("a").fields.subject, "Mine");
  EXPECT_THAT(Told(), testing::HasSubstr("It is too large."));
  Press("answer1");
  EXPECT_TRUE(outbox_.Refused().at(0).told);
  EXPECT_FALSE(Notice().isVisible());
  EXPECT_TRUE(StateIs(0, "1 edit refused"));
}

}  // namespace
}  // namespace velkor
