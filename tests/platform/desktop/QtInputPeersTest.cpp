// tests/platform/desktop/QtInputPeersTest.cpp: what a user types and clicks, and what a script
// calls, leave an input element in the same state.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>

#include "platform/desktop/QtPeers.h"

namespace velkor {
namespace {

using testing::ElementsAre;

void Show(QWidget& control) {
  control.resize(400, 300);
  control.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&control));
  control.activateWindow();
}

template <typename Widget, typename ElementType>
Widget& Peer(ElementType& element, QWidget& control) {
  return *qobject_cast<Widget*>(MakePeer(element, &control));
}

TEST(QtTextBox, TellsEachChangeAsItIsTypedComposedOrPasted) {
  TextBox box("tbFilter");
  std::vector<std::string> heard;
  box.onChange = [&] { heard.push_back(box.Text()); };
  QWidget control;
  auto& peer = Peer<QLineEdit>(box, control);
  Show(control);
  box.SetText("Leave");
  EXPECT_EQ(peer.text(), "Leave");
  box.SetFocus();
  EXPECT_EQ(peer.selectedText(), "Leave");
  QTest::keyClicks(&peer, "ab");
  QInputMethodEvent composed;
  composed.setCommitString("\u4f11");
  QCoreApplication::sendEvent(&peer, &composed);
  QApplication::clipboard()->setText("x y");
  QTest::keyClick(&peer, Qt::Key_V, Qt::ControlModifier);
  EXPECT_THAT(heard, ElementsAre("Leave", "a", "ab", "ab\u4f11", "ab\u4f11x y"));
  peer.setCursorPosition(1);
  box.SetText("ab\u4f11x y");
  EXPECT_EQ(peer.cursorPosition(), 1);
  const std::string damaged = "a\xFFz";
  box.SetText(damaged);
  EXPECT_EQ(box.Text(), damaged);
}

TEST(QtTextBox, KeysAreHeardBeforeTheyCountAndStayInTheBox) {
  TextBox box("txtEdit");
  std::vector<int> codes;
  int lost = 0;
  box.onKeyPress = [&](int code) {
    codes.push_back(code);
    return code != 'b' && code != key_codes::Escape;
  };
  box.onLostFocus = [&] { ++lost; };
  int outer = 0;
  PictureBox picture("picCats");
  picture.onKeyDown = [&](Key) { return ++outer > 0; };
  picture.SetBounds({0, 0, 3000, 3000});
  box.SetBounds({0, 0, 1500, 270});
  QWidget control;
  QWidget* const rows = MakePeer(picture, &control);
  auto& peer = *qobject_cast<QLineEdit*>(MakePeer(box, rows));
  Show(control);
  box.SetFocus();
  QTest::keyClicks(&peer, "ab");
  QTest::sendKeyEvent(QTest::Press, &peer, Qt::Key_Eacute, QString(u'\u00e9'), {});
  for (const Qt::Key key : {Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Up}) QTest::keyClick(&peer, key);
  QTest::keyClick(&peer, Qt::Key_A, Qt::ControlModifier);
  EXPECT_THAT(codes, ElementsAre('a', 'b', 0xE9, key_codes::Enter, key_codes::Escape));
  EXPECT_EQ(box.Text(), "a\u00e9");
  EXPECT_EQ(outer, 0);
  picture.SetFocus();
  EXPECT_TRUE(rows->hasFocus());
  EXPECT_EQ(lost, 1);
  box.SetFocus();
  box.SetVisible(false);
  EXPECT_EQ(lost, 1);
}

TEST(QtMaskedBox, TakesWhatFitsItsMaskAndShowsWhatItsOwnerSets) {
  MaskedBox box("tbFrom", "99/99/9999");
  QWidget control;
  auto& peer = Peer<QLineEdit>(box, control);
  Show(control);
  const std::vector<std::pair<const char*, const char*>> cases{
      {"1/2/2026", "1/2/2026"},
      {"01022026", "01/02/2026"},
      {"31/12/20267", "31/12/2026"},
      {"1a.-/1//2 6", "1/1/26"},
      {"//", "//"},
  };
  for (const auto& [typed, text] : cases) {
    box.SetText("");
    box.SetFocus();
    QTest::keyClicks(&peer, typed);
    EXPECT_EQ(box.Text(), text) << typed;
    EXPECT_EQ(peer.text().toStdString(), text) << typed;
  }
  box.SetText("some day");
  EXPECT_EQ(peer.text(), "some day");
  box.SetFocus();
  QTest::keyClicks(&peer, "5");
  EXPECT_EQ(box.Text(), "5");
}

TEST(QtCheckBox, ClickAndToggleAreTheSame) {
  CheckBox box("cbAND");
  int clicks = 0;
  box.onClick = [&] { ++clicks; };
  QWidget control;
  auto& peer = Peer<QCheckBox>(box, control);
  Show(control);
  peer.click();
  EXPECT_TRUE(box.Checked());
  box.Toggle();
  EXPECT_FALSE(peer.isChecked());
  box.SetChecked(true);
  EXPECT_TRUE(peer.isChecked());
  EXPECT_EQ(clicks, 2);
}

TEST(QtOptionButton, OneOfTheGroupIsChosenByClickKeyOrCall) {
  OptionButton categories("rbCatsOnly");
  OptionButton both("rbCatsAndAppts");
  categories.group = both.group = {&categories, &both};
  OptionButton other("rbOther");
  other.group = {&other};
  other.SetChosen();
  QWidget control;
  auto& first = Peer<QRadioButton>(categories, control);
  auto& second = Peer<QRadioButton>(both, control);
  auto& third = Peer<QRadioButton>(other, control);
  Show(control);
  const auto chosen = [&] {
    EXPECT_EQ(first.isChecked(), categories.Chosen());
    EXPECT_EQ(second.isChecked(), both.Chosen());
    EXPECT_TRUE(third.isChecked() && other.Chosen());
    return std::pair(categories.Chosen(), both.Chosen());
  };
  for (int i = 0; i < 2; ++i) {
    first.click();
    EXPECT_EQ(chosen(), std::pair(true, false));
  }
  both.Choose();
  EXPECT_EQ(chosen(), std::pair(false, true));
  QTest::keyClick(&second, Qt::Key_Down);
  EXPECT_EQ(chosen(), std::pair(true, false));
  EXPECT_TRUE(first.hasFocus());
}

class QtCheckListBox : public testing::Test {
 protected:
  QtCheckListBox() {
    list.onItemCheck = [this](std::size_t index) { checked.push_back(index); };
    list.SetBounds({0, 0, 3000, 3000});
    for (int i = 0; i < 3000; ++i) items.push_back({"Category " + std::to_string(i), false});
    list.SetItems(items);
    Show(control);
  }
  void ExpectMirrored() const {
    ASSERT_EQ(peer.count(), static_cast<int>(list.Items().size()));
    for (int i = 0; i < peer.count(); ++i) {
      const CheckListBox::Item& item = list.Items()[static_cast<std::size_t>(i)];
      ASSERT_EQ(peer.item(i)->text().toStdString(), item.text);
      ASSERT_EQ(peer.item(i)->checkState() == Qt::Checked, item.checked) << item.text;
    }
  }

  CheckListBox list{"lbCategories"};
  std::vector<CheckListBox::Item> items;
  std::vector<std::size_t> checked;
  QWidget control;
  QListWidget& peer = Peer<QListWidget>(list, control);
};

TEST_F(QtCheckListBox, BoxTextAndSpaceToggleAsACallDoes) {
  const QRect row = peer.visualItemRect(peer.item(2));
  QTest::mouseClick(peer.viewport(), Qt::LeftButton, {}, row.center());
  QTest::mouseClick(peer.viewport(), Qt::LeftButton, {}, QPoint(8, row.center().y()));
  QTest::mouseClick(peer.viewport(), Qt::RightButton, {}, row.center());
  QTest::keyClick(&peer, Qt::Key_Down);
  QTest::keyClick(&peer, Qt::Key_Space);
  list.ToggleItem(7);
  EXPECT_THAT(checked, ElementsAre(2, 2, 3, 7));
  EXPECT_TRUE(list.Items()[3].checked && list.Items()[7].checked && !list.Items()[2].checked);
  ExpectMirrored();
  list.SetEnabled(false);
  peer.item(5)->setCheckState(Qt::Checked);
  EXPECT_FALSE(list.Items()[5].checked);
  ExpectMirrored();
}

TEST_F(QtCheckListBox, StaysWhereItIsWhileItsEntriesChange) {
  peer.setCurrentRow(1000);
  const int scrolled = peer.verticalScrollBar()->value();
  ASSERT_GT(scrolled, 0);
  for (CheckListBox::Item& item : items) item.checked = true;
  list.SetItems(items);
  EXPECT_EQ(peer.verticalScrollBar()->value(), scrolled);
  EXPECT_EQ(peer.currentRow(), 1000);
  ExpectMirrored();
  items.erase(items.begin(), items.begin() + 10);
  list.SetItems(items);
  EXPECT_EQ(peer.currentItem()->text(), "Category 1000");
  ExpectMirrored();
  list.SetItems({});
  EXPECT_EQ(peer.count(), 0);
  EXPECT_TRUE(checked.empty());
}

}  // namespace
}  // namespace velkor
