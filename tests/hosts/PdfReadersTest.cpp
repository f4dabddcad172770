// tests/hosts/PdfReadersTest.cpp: a printed calendar as two independent readers of PDF see it.
#include <gmock/gmock.h>

#include <QImage>
#include <QStandardPaths>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "tests/hosts/YearplanCase.h"

namespace velkor {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

QString WithoutBlanks(QString text) {
  text.removeIf([](QChar c) { return c.isSpace(); });
  return text;
}

class PdfReaders : public Yearplan {
 protected:
  void SetUp() override {
    // The one of the system, whose packages it sees.
    python_ = QStandardPaths::findExecutable("python3", {"/usr/bin"});
    if (python_.isEmpty() || !Starts(python_, {"-c", "import pypdf"}) ||
        QStandardPaths::findExecutable("pdftotext").isEmpty()) {
      GTEST_SKIP() << "no PDF readers";
    }
  }

  /// What a reader says; a complaint is a failure.
  QByteArray Said(const QString& program, const QStringList& arguments) const {
    QProcess process;
    process.setWorkingDirectory(File(""));
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0) << program.toStdString();
    EXPECT_EQ(process.readAllStandardError().toStdString(), "") << program.toStdString();
    return process.readAllStandardOutput();
  }
  static bool Starts(const QString& program, const QStringList& arguments) {
    return QProcess::execute(program, arguments) == 0;
  }

  QString python_;
};

TEST_F(PdfReaders, BothFindEveryPageSubjectColourAndFont) {
  const QStringList year{SAMPLE_CALENDAR, "--year", "2026"};
  // Sheets on which the longest subjects of single days have room.
  const Outcome printed = Run(QStringList{"print"} + year +
                              QStringList{"-o", "a.pdf", "--paper", "E", "--subjects",
                                          "--multiline", "--min-band-height", "15"});
  ASSERT_THAT(printed.out, ContainsRegex("Year 2026, [2-9] pages")) << printed.messages;
  const auto laidOut =
      nlohmann::json::parse(Run(QStringList{"inspect"} + year + QStringList{"--json"}).out);
  const QStringList categories =
      QString::fromStdString(Run({"categories", SAMPLE_CALENDAR}).out).split('\n');

  const auto pages = nlohmann::json::parse(Said(python_, {PDF_PAGES, "a.pdf"}).toStdString());
  const std::string count = std::to_string(pages.size());
  EXPECT_THAT(printed.out, HasSubstr(", " + count + " pages"));
  EXPECT_THAT(Said("pdfinfo", {"a.pdf"}).toStdString(),
              AllOf(ContainsRegex("Pages: +" + count), HasSubstr("3168 x 2448 pts")));
  // In the order in which they were drawn.
  const QString text = WithoutBlanks(QString::fromUtf8(Said("pdftotext", {"-raw", "a.pdf", "-"})));
  EXPECT_THAT(Said("pdffonts", {"a.pdf"}).toStdString(), Not(ContainsRegex(" no +(yes|no) +yes")));
  Said("pdftoppm", {"-r", "20", "-png", "-aaVector", "no", "a.pdf", "page"});

  QString otherText;
  std::map<std::string, int> filled;
  std::set<QRgb> seen;
  for (std::size_t page = 0; page < pages.size(); ++page) {
    EXPECT_EQ(pages[page]["size"], nlohmann::json({3168, 2448}));
    EXPECT_TRUE(pages[page]["looseFonts"].empty()) << pages[page]["looseFonts"];
    otherText += QString::fromStdString(pages[page]["text"]);
    for (const auto& [colour, times] : pages[page]["filled"].items()) filled[colour] += int(times);
    const QImage picture(File("page-" + QString::number(page + 1) + ".png"));
    ASSERT_FALSE(picture.isNull());
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) seen.insert(picture.pixel(x, y));
    }
  }

  ASSERT_GT(laidOut["bars"].size(), 300U);
  std::map<qsizetype, int> bars;
  for (const auto& bar : laidOut["bars"]) {
    const auto& event = laidOut["events"][std::size_t(bar["event"])];
    ++bars[qsizetype(event["catIndex"])];
    const std::string subject = event["subject"];
    const QString found = WithoutBlanks(QString::fromStdString(subject));
    EXPECT_TRUE(text.contains(found)) << subject;
    EXPECT_TRUE(otherText.contains(found)) << subject;
  }
  for (qsizetype index = 1; index < categories.size(); ++index) {
    const QString colour = categories[index - 1].section(' ', 0, 0);
    // The legend has one on each page.
    EXPECT_EQ(filled[colour.toStdString()], bars[index] + int(pages.size()))
        << categories[index - 1].toStdString();
    EXPECT_TRUE(seen.contains(QColor(colour).rgb())) << categories[index - 1].toStdString();
  }
}

}  // namespace
}  // namespace velkor
