// tests/hosts/ServerDialogsTest.cpp: the dialogs about addresses and servers, without a network.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

#include "hosts/yearplan/window/AccountDialog.h"
#include "hosts/yearplan/window/AddressDialog.h"
#include "hosts/yearplan/window/ServerQuestions.h"
#include "tests/platform/desktop/OpenDialog.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void Type(QDialog& dialog, const char* field, const char* text) {
  auto* const line = dialog.findChild<QLineEdit*>(field);
  line->selectAll();
  QTest::keyClicks(line, text);
}

QPushButton& Ok(QDialog& dialog) {
  return *dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
}

void Click(QDialog& dialog, const char* button) {
  QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
}

QString Complaint(QDialog& dialog) {
  return dialog.findChild<QLabel*>("complaint")->text();
}

TEST(AddressDialog, AddsOnlyWhatWasFoundAndStopsWhatTheUserStops) {
  std::vector<AddressWish> asked;
  int stopped = 0;
  AddressDialog dialog(nullptr, {.check = [&](const AddressWish& wish) { asked.push_back(wish); },
                                 .stop = [&] { ++stopped; }});
  dialog.show();
  for (const char* const wrong : {"", "team", "ftp://x.org/a.ics", "https://", "file:///a.ics"}) {
    Type(dialog, "address", wrong);
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_NE(Complaint(dialog), "") << wrong;
  }
  EXPECT_THAT(asked, IsEmpty());
  const char* const address = "webcal://x.org/a.ics";
  Type(dialog, "address", address);
  QTest::keyClick(&dialog, Qt::Key_Return);
  Click(dialog, "cancelProgress");
  EXPECT_EQ(stopped, 1);
  Click(dialog, "check");
  EXPECT_FALSE(Ok(dialog).isEnabled());
  EXPECT_FALSE(dialog.findChild<QLineEdit*>("user")->isVisible());
  dialog.AskForLogin("x.org wants a name and a password.");
  Type(dialog, "user", "anna");
  Type(dialog, "password", "secret");
  QTest::keyClick(&dialog, Qt::Key_Return);
  EXPECT_THAT(
      asked, ElementsAre(AddressWish{address, {"", "", true}}, AddressWish{address, {"", "", true}},
                         AddressWish{address, {"anna", "secret", true}}));
  dialog.ShowFound("Holidays", "34 appointments.");
  EXPECT_EQ(stopped, 1);
  Type(dialog, "name", "Days off");
  QTest::keyClick(&dialog, Qt::Key_Return);
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(dialog.Name(), "Days off");
}

TEST(AccountDialog, FindsTicksMakesAndForgetsWhatIsOfAnotherAccount) {
  std::vector<std::string> asked;
  AccountDialog dialog(
      nullptr,
      {.find = [&](const ServerAccount& it) { asked.push_back(it.login.user + " " + it.address); },
       .make = [&](const ServerAccount&, auto home, auto name) { asked.push_back(name + home); },
       .stop = [&] { asked.emplace_back("stop"); }});
  dialog.show();
  QTest::keyClick(&dialog, Qt::Key_Return);
  EXPECT_NE(Complaint(dialog), "");
  Type(dialog, "address", "example.org");
  Type(dialog, "user", "anna");
  QTest::keyClick(&dialog, Qt::Key_Return);
  dialog.AskForLogin("Wrong password.");
  EXPECT_EQ(Complaint(dialog), "Wrong password.");
  Click(dialog, "find");
  EXPECT_EQ(Complaint(dialog), "");
  const FoundCalendar own{"u1", "Own", "#ff0000", false};
  const FoundCalendar team{"u2", "Team", "", true};
  dialog.ShowCalendars({"/", {own, team}});
  auto& list = *dialog.findChild<QListWidget*>("calendars");
  EXPECT_TRUE(list.item(1)->text().contains("read-only"));
  EXPECT_FALSE(Ok(dialog).isEnabled());
  list.setCurrentRow(1);
  QTest::keyClick(&list, Qt::Key_Space);
  EXPECT_TRUE(Ok(dialog).isEnabled());
  WhenOpen([](QDialog& question) {
    question.findChild<QLineEdit*>()->setText("Trips");
    QTest::keyClick(&question, Qt::Key_Return);
  });
  Click(dialog, "new");
  EXPECT_FALSE(Ok(dialog).isEnabled());
  const FoundCalendar trips{"u3", "Trips", "", false};
  dialog.ShowCalendars({"/", {own, team, trips}});
  EXPECT_THAT(dialog.Chosen(), ElementsAre(team, trips));
  Type(dialog, "user", "bert");
  EXPECT_THAT(dialog.Chosen(), IsEmpty());
  Click(dialog, "find");
  dialog.reject();
  EXPECT_THAT(asked, ElementsAre("anna example.org", "anna example.org", "Trips/",
                                 "bert example.org", "stop"));
}

TEST(ServerQuestions, NobodyIsTrustedInHasteAndAPasswordIsAskedForByHost) {
  CertificateFault shown;
  shown.host = "x.org";
  shown.sha256 = std::string(64, 'a');
  for (const bool trust : {false, true}) {
    WhenOpen([trust](QDialog& dialog) {
      EXPECT_TRUE(dialog.findChild<QLabel*>("fingerprint")->text().startsWith("AA:AA"));
      trust ? Click(dialog, "trust") : QTest::keyClick(&dialog, Qt::Key_Return);
    });
    EXPECT_EQ(AskToTrust(nullptr, shown), trust);
  }
  WhenOpen([](QDialog& dialog) {
    EXPECT_FALSE(Ok(dialog).isEnabled());
    Type(dialog, "password", "secret");
    QTest::mouseClick(dialog.findChild<QCheckBox*>("remember"), Qt::LeftButton, {}, QPoint(8, 8));
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  EXPECT_EQ(AskForPassword(nullptr, "x.org", {.user = "anna", .remember = true}),
            (ServerLogin{"anna", "secret", false}));
  WhenOpen([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(AskForPassword(nullptr, "x.org", {}), std::nullopt);
}

}  // namespace
}  // namespace velkor
