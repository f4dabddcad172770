// tests/platform/desktop/QtDialogsTest.cpp: file, colour and input dialogs, and progress.
#include "platform/desktop/QtDialogs.h"

#include <QColorDialog>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <sstream>

#include "platform/desktop/TerminalDialogs.h"
#include "tests/platform/desktop/FolderCase.h"
#include "tests/platform/desktop/OpenDialog.h"

namespace velkor {
namespace {

/// Types a name where the dialog stands and presses Enter.
void Name(QDialog& dialog, const QString& name) {
  auto& line = *dialog.findChild<QLineEdit*>("fileNameEdit");
  line.setText(name);
  QTest::keyClick(&line, Qt::Key_Return);
}

class QtFileDialog : public FolderCase {
 protected:
  std::string Save(const std::function<void(QDialog&)>& steps) {
    WhenOpen(steps);
    return dialogs.ShowSave(dialog);
  }

  QtCommonDialogs dialogs{nullptr, Path("calendar.ics")};
  FileDialog dialog{.filter = "Velkor Data(*.xml)|*.xml|Plain|*.txt|All Files(*.*)|*.*",
                    .title = "Save Velkor Data",
                    .flags = file_dialog_flags::OverwritePrompt,
                    .defaultExtension = "xml"};
};

TEST_F(QtFileDialog, SavesUnderANameWithASuffixAndStartsWhereItEndedLast) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir("sub"));
  EXPECT_EQ(Save([&](QDialog& window) {
              EXPECT_EQ(window.windowTitle(), "Save Velkor Data");
              Name(window, File("sub/year"));
            }),
            Path("sub/year.xml"));
  EXPECT_EQ(Save([](QDialog& window) {
              auto& files = dynamic_cast<QFileDialog&>(window);
              EXPECT_EQ(files.nameFilters()[2], "All Files (*)");
              QTest::keyClick(window.findChild<QComboBox*>("fileTypeCombo"), Qt::Key_Down);
              Name(window, "year");
            }),
            Path("sub/year.txt"));
  EXPECT_EQ(Save([](QDialog& window) { Name(window, "year.data"); }), Path("sub/year.data"));
  EXPECT_EQ(Save([](QDialog& window) { window.reject(); }), "");
  WhenOpen([&](QDialog& window) {
    const auto& files = dynamic_cast<QFileDialog&>(window);
    EXPECT_EQ(files.directory().path().toStdString(), Path("sub"));
    window.reject();
  });
  EXPECT_EQ(dialogs.ShowOpen(dialog), "");
}

TEST_F(QtFileDialog, AsksBeforeAFileIsReplacedWhenItShould) {
  Write("year.xml", {});
  for (const auto answer : {QDialogButtonBox::No, QDialogButtonBox::Yes}) {
    const std::string name = Save([&](QDialog& window) {
      WhenOpen([&](QDialog& question) { Press(question, answer); });
      Name(window, File("year"));
      if (answer == QDialogButtonBox::No) window.reject();
    });
    EXPECT_EQ(name, answer == QDialogButtonBox::Yes ? Path("year.xml") : "");
  }
  dialog.flags = 0;
  EXPECT_EQ(Save([&](QDialog& window) { Name(window, File("year")); }), Path("year.xml"));
}

TEST_F(QtFileDialog, NothingIsSavedOverTheCalendarInUse) {
  dialog.flags = 0;
  Write("calendar.ics", {});
  EXPECT_EQ(Save([&](QDialog& window) {
              WhenOpen([](QDialog& warning) {
                WhenOpen([](QDialog& again) { again.reject(); });
                warning.reject();
              });
              Name(window, "calendar.ics");
            }),
            "");
}

TEST(QtColourDialog, BeginsWithTheColourWhateverItsHighByte) {
  const Colour odd{static_cast<std::int32_t>(0xFF123456)};
  WhenOpen([](QDialog& window) {
    auto& picker = dynamic_cast<QColorDialog&>(window);
    EXPECT_EQ(picker.currentColor(), QColor(0x56, 0x34, 0x12));
    picker.setCurrentColor(QColor(1, 2, 3));
    window.accept();
  });
  EXPECT_EQ(QtCommonDialogs().ShowColour(odd), Colour::FromRgb(1, 2, 3));
  WhenOpen([](QDialog& window) { window.reject(); });
  EXPECT_EQ(QtCommonDialogs().ShowColour(odd), std::nullopt);
}

TEST(QtInputBoxes, HandsOnTheLineAsTyped) {
  for (const bool accepted : {true, false}) {
    WhenOpen([&](QDialog& window) {
      EXPECT_EQ(window.windowTitle(), "New Category");
      EXPECT_LT(window.width(), 800);
      auto& line = *window.findChild<QLineEdit*>();
      QTest::keyClicks(&line, "  a|b ");
      QTest::keyClick(&line, accepted ? Qt::Key_Return : Qt::Key_Escape);
    });
    EXPECT_EQ(
        QtInputBoxes().Ask(std::string(300, 'x') + " & " + std::string(300, 'y'), "New Category"),
        accepted ? "  a|b " : "");
  }
}

TEST(QtProgress, OpensAfterAMomentAndEndsByEscapeButtonOrClosing) {
  const std::vector<std::function<void(QDialog&)>> ways{
      [](QDialog& window) { QTest::keyClick(&window, Qt::Key_Escape); },
      [](QDialog& window) { QTest::mouseClick(window.findChild<QPushButton*>(), Qt::LeftButton); },
      [](QDialog& window) { window.close(); },
  };
  QtProgress progress;
  for (const auto& way : ways) {
    const auto report = progress.Begin("Export");
    EXPECT_TRUE(progress.IsOpen());
    EXPECT_TRUE(report->Step(1, 1000, "begun"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "at once";
    WhenOpen([&](QDialog& window) {
      EXPECT_TRUE(window.isModal());
      EXPECT_GE(dynamic_cast<QProgressDialog&>(window).value(), 1);
      way(window);
    });
    int done = 0;
    // Bounded, should nobody end it.
    while (report->Step(1 + done % 999, 1000, "Year 2026") && done < 100'000'000) ++done;
    EXPECT_FALSE(report->Step(1, 1000, "once more"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  }
}

TEST(TerminalProgress, WritesOneLineNowAndThenAndClearsIt) {
  std::ostringstream terminal;
  std::ostringstream file;
  for (auto* stream : {&terminal, &file}) {
    TerminalProgress progress(*stream, stream == &terminal);
    const auto report = progress.Begin("Export");
    for (int i = 0; i < 1000; ++i) EXPECT_TRUE(report->Step(i, 1000, "a\nb"));
  }
  EXPECT_EQ(terminal.str().substr(0, 17), "\rExport: 0% a b\x1B[");
  EXPECT_TRUE(terminal.str().ends_with("\r\x1B[K"));
  EXPECT_LT(terminal.str().size(), 200U);
  EXPECT_EQ(file.str(), "");
}

}  // namespace
}  // namespace velkor
