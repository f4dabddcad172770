// tests/hosts/PdfReadersTest.cpp: a printed calendar as two independent readers of PDF see it.
#include <gmock/gmock.h>

#include <QColor>
#include <QImage>
#include <QPdfDocument>
#include <QPdfSelection>
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

std::set<QRgb> ColoursOf(const QImage& picture) {
  std::set<QRgb> colours;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) colours.insert(picture.pixel(x, y) | 0xFF000000);
  }
  return colours;
}

class PdfReaders : public Yearplan {
 protected:
  /// What a reader of the command line says; a complaint is a failure.
  QString Said(const QString& program, const QStringList& arguments) const {
    QProcess process;
    process.setWorkingDirectory(File(""));
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0) << program.toStdString();
    EXPECT_EQ(process.readAllStandardError().toStdString(), "") << program.toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
  }
};

TEST_F(PdfReaders, BothFindEveryPageSubjectAndColour) {
  const QStringList year{SAMPLE_CALENDAR, "--year", "2026"};
  // Sheets on which the longest subjects of single days have room.
  const Outcome printed =
      Run(QStringList{"print"} + year +
          QStringList{"-o", "a.pdf", "--paper", "E", "--multiline", "--min-band-height", "15"});
  QPdfDocument document;
  ASSERT_EQ(document.load(File("a.pdf")), QPdfDocument::Error::None) << printed.messages;
  const int pages = document.pageCount();
  ASSERT_GT(pages, 1);
  EXPECT_THAT(printed.out, HasSubstr("Year 2026, " + std::to_string(pages) + " pages"));
  const QString info = Said("pdfinfo", {"a.pdf"});
  EXPECT_THAT(info.toStdString(), ContainsRegex("Pages: +" + std::to_string(pages)));
  EXPECT_THAT(info.toStdString(), HasSubstr("3168 x 2448 pts"));
  EXPECT_THAT(Said("pdffonts", {"a.pdf"}).toStdString(), Not(ContainsRegex(" no +(yes|no) +yes")));
  Said("pdftoppm", {"-r", "20", "-png", "-aaVector", "no", "a.pdf", "page"});

  // In the order in which they were drawn.
  const QString text = WithoutBlanks(Said("pdftotext", {"-raw", "a.pdf", "-"}));
  QString otherText;
  std::set<QRgb> seen;
  std::set<QRgb> otherSeen;
  for (int page = 0; page < pages; ++page) {
    EXPECT_EQ(document.pagePointSize(page), QSizeF(3168, 2448));
    otherText += WithoutBlanks(document.getAllText(page).text());
    otherSeen.merge(ColoursOf(document.render(page, QSize(880, 680))));
    seen.merge(ColoursOf(QImage(File("page-" + QString::number(page + 1) + ".png"))));
  }

  const auto laidOut =
      nlohmann::json::parse(Run(QStringList{"inspect"} + year + QStringList{"--json"}).out);
  ASSERT_GT(laidOut["bars"].size(), 300U);
  for (const auto& bar : laidOut["bars"]) {
    const std::string subject = laidOut["events"][std::size_t(bar["event"])]["subject"];
    const QString found = WithoutBlanks(QString::fromStdString(subject));
    EXPECT_TRUE(text.contains(found)) << subject;
    EXPECT_TRUE(otherText.contains(found)) << subject;
  }
  const QStringList categories =
      QString::fromStdString(Run({"categories", SAMPLE_CALENDAR}).out).trimmed().split('\n');
  ASSERT_GT(categories.size(), 5);
  for (const QString& category : categories) {
    const QRgb colour = QColor(category.section(' ', 0, 0)).rgb();
    EXPECT_TRUE(seen.contains(colour)) << category.toStdString();
    EXPECT_TRUE(otherSeen.contains(colour)) << category.toStdString();
  }
}

}  // namespace
}  // namespace velkor
