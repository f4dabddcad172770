// tests/platform/desktop/QtPrinterTest.cpp: PDF files as printed, paper by its codes, and a desktop
// without printers.
#include "platform/desktop/QtPrinter.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QTest>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "platform/desktop/PaperSizes.h"
#include "tests/platform/desktop/ChildProcess.h"
#include "tests/platform/desktop/FolderCase.h"
#include "tests/platform/desktop/OpenDialog.h"
#include "values/Error.h"

namespace velkor {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr Colour Green = Colour::FromRgb(0, 128, 0);

PrinterSettings PaperOf(int paper, int orientation) {
  return {.device = {}, .driver = {}, .port = {}, .orientation = orientation, .paperSize = paper};
}

class Pdf : public FolderCase {
 protected:
  /// A bar of 2 inches and a word on the first page, a word on the second one.
  static void Draw(PrintJob& job) {
    const Font font{.face = "Arial", .size = 6};
    job.Page().Fill({1440, 1440, 4320, 2880}, Green);
    job.Page().Text({1440, 3000, 9000, 4000}, "first page", font, colours::Black,
                    text_flags::NoPrefix);
    job.NewPage();
    job.Page().Text({0, 0, 9000, 4000}, "second page", font, colours::Black, text_flags::NoPrefix);
  }
};

TEST_F(Pdf, HasPagesOfItsPaperWithColoursAndTextThatIsFound) {
  PdfPrinter printer(Path("a.pdf"));
  printer.Apply(PaperOf(device_mode::PaperA4, device_mode::Landscape));
  const Extent size = printer.PageSize();
  EXPECT_NEAR(size.width, 16838, 20);
  EXPECT_NEAR(size.height, 11906, 20);
  const auto job = printer.Begin("Year 2026");
  EXPECT_FALSE(QFile::exists(folder_.filePath("a.pdf")));
  Draw(*job);
  job->EndDocument();

  const auto info = Output("pdfinfo", {"a.pdf"});
  if (!info) GTEST_SKIP() << "no PDF tools";
  EXPECT_THAT(*info, AllOf(HasSubstr("842 x 595 pts (A4)"), HasSubstr("Year 2026"),
                           testing::ContainsRegex("Pages: +2")));
  EXPECT_THAT(*Output("pdftotext", {"-l", "1", "a.pdf", "-"}),
              AllOf(HasSubstr("first page"), Not(HasSubstr("second"))));
  EXPECT_THAT(*Output("pdffonts", {"a.pdf"}),
              testing::ContainsRegex("LiberationSans.* yes +(yes|no) +yes"));
  Output("pdftoppm", {"-r", "72", "-png", "-singlefile", "-aaVector", "no", "a.pdf", "page"});
  const QImage page(folder_.filePath("page.png"));
  ASSERT_EQ(page.size(), QSize(842, 595));
  const auto green = qRgb(Green.Red(), Green.Green(), Green.Blue());
  for (const QPoint inside : {QPoint(73, 73), QPoint(214, 142)}) {
    EXPECT_EQ(page.pixel(inside), green) << inside.x();
  }
  EXPECT_EQ(page.pixel(70, 73), qRgb(255, 255, 255));
  EXPECT_EQ(page.pixel(218, 142), qRgb(255, 255, 255));
}

TEST_F(Pdf, GivenUpOrFailedDocumentsLeaveTheOlderFileAndNothingElse) {
  QFile older(folder_.filePath("a.pdf"));
  ASSERT_TRUE(older.open(QIODevice::WriteOnly) && older.write("older") == 5);
  older.close();
  PdfPrinter printer(Path("a.pdf"));
  Draw(*printer.Begin("given up"));
  // A limit on the file's size stands for the full disk.
  ChildProcess full([&] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1000, 1000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const auto job = printer.Begin("too large");
    Draw(*job);
    try {
      job->EndDocument();
    } catch (const Error& error) {
      return error.Description().find(std::strerror(EFBIG)) == std::string::npos ? 1 : 2;
    }
    return 0;
  });
  EXPECT_EQ(full.Wait(), 2);
  EXPECT_EQ(Bytes("a.pdf"), "older");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
  EXPECT_THAT(
      [&] { PdfPrinter(Path("absent/a.pdf")).Begin("a"); },
      testing::Throws<Error>(testing::Property(&Error::Description, HasSubstr("absent/a.pdf"))));
}

TEST_F(Pdf, MeasuresAsItDraws) {
  PdfPrinter printer(Path("a.pdf"));
  const auto job = printer.Begin("a");
  const Font font{.face = "Arial", .size = 6};
  const Extent measured = printer.MeasuringSurface().Measure("Täglich, jeden Tag", font);
  const Extent drawn = job->Page().Measure("Täglich, jeden Tag", font);
  EXPECT_EQ(measured.width, drawn.width);
  EXPECT_EQ(measured.height, drawn.height);
}

TEST_F(Pdf, TakesEveryPaperWithACodeAndReadsItBack) {
  PdfPrinter printer(Path("a.pdf"));
  for (int paper = 1; paper <= 41; ++paper) {
    printer.Apply(PaperOf(paper, device_mode::Portrait));
    EXPECT_EQ(printer.Current().paperSize, paper);
    EXPECT_EQ(PaperOfPageSize(PageSizeOfPaper(paper), paper), paper);
  }
  for (const int unknown : {0, -1, 42, 256, 1 << 30}) {
    printer.Apply(PaperOf(unknown, 3));
    EXPECT_EQ(printer.Current().paperSize, 41) << unknown;
    EXPECT_EQ(printer.Current().orientation, device_mode::Portrait);
  }
  const auto named = [](QPageSize::PageSizeId id) { return PaperOfPageSize(QPageSize(id), 0); };
  EXPECT_EQ(named(QPageSize::A4), 9);
  EXPECT_EQ(named(QPageSize::Letter), 1);
  EXPECT_EQ(named(QPageSize::Ledger), 4);
  EXPECT_EQ(named(QPageSize::Tabloid), 3);
  EXPECT_EQ(named(QPageSize::Legal), 5);
  EXPECT_EQ(named(QPageSize::A3), 8);
  EXPECT_EQ(named(QPageSize::C5E), 28);
  EXPECT_EQ(named(QPageSize::A0), UserPaper);
}

/// A desktop that has no printer.
class QtPrinterWithoutPrinters : public Pdf {
 protected:
  void SetUp() override {
    if (!QPrinterInfo::availablePrinterNames().isEmpty()) GTEST_SKIP() << "there are printers";
  }
  /// Answers the file dialog that opens next; no file cancels it.
  static void WhenAsked(const QString& file) {
    WhenOpen([file](QDialog& dialog) {
      auto& files = dynamic_cast<QFileDialog&>(dialog);
      EXPECT_EQ(QFileInfo(files.selectedFiles().value(0)).fileName(), "Year 1-2.pdf");
      if (file.isEmpty()) return files.reject();
      auto& line = *files.findChild<QLineEdit*>("fileNameEdit");
      line.setText(file);
      QTest::keyClick(&line, Qt::Key_Return);
    });
  }
};

TEST_F(QtPrinterWithoutPrinters, AsksForAFileWhenADocumentBegins) {
  QtPrinter printer;
  EXPECT_THAT(printer.Devices(), testing::ElementsAre(printer.Current().device));
  printer.SelectDevice(printer.Current().device);
  EXPECT_THROW(printer.SelectDevice("Office"), Error);
  printer.Apply(PaperOf(device_mode::PaperLetter, device_mode::Landscape));
  EXPECT_NEAR(printer.PageSize().width, 11 * 1440, 20);
  EXPECT_GT(printer.MeasuringSurface().Measure("Year", {}).width, 0);
  EXPECT_TRUE(printer.PagePicture());

  WhenAsked(folder_.filePath("year"));
  const auto job = printer.Begin("Year 1/2");
  ASSERT_TRUE(job);
  Draw(*job);
  job->EndDocument();
  EXPECT_TRUE(Bytes("year.pdf").startsWith("%PDF"));
  EXPECT_EQ(job->File(), Path("year.pdf"));
  WhenAsked({});
  EXPECT_FALSE(printer.Begin("Year 1/2"));
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(QtPrinterWithoutPrinters, NeverWritesToTheFileInUse) {
  Write("calendar.ics", "appointments");
  QtPrinter printer(nullptr, Path("calendar.ics"));
  PrinterSettings settings = printer.Current();
  WhenOpen([&](QDialog& dialog) {
    // The dialog asks whether the file may be overwritten.
    WhenOpen([](QDialog& question) { Press(question, QDialogButtonBox::Yes); });
    dialog.findChild<QLineEdit*>("filename")->setText(folder_.filePath("calendar.ics"));
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_THROW(printer.ShowDialog(settings), Error);
  EXPECT_EQ(Bytes("calendar.ics"), "appointments");
}

TEST_F(QtPrinterWithoutPrinters, TakesPaperAndFileFromTheDialog) {
  QtPrinter printer;
  PrinterSettings settings = printer.Current();
  settings.paperSize = device_mode::PaperLetter;
  settings.orientation = device_mode::Landscape;
  const PrinterSettings before = settings;
  WhenOpen([](QDialog& dialog) { dialog.reject(); });
  EXPECT_FALSE(printer.ShowDialog(settings));
  EXPECT_EQ(settings, before);
  WhenOpen([&](QDialog& dialog) {
    dialog.findChild<QLineEdit*>("filename")->setText(folder_.filePath("chosen.pdf"));
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_TRUE(printer.ShowDialog(settings));
  EXPECT_EQ(settings, before);
  printer.Apply(settings);
  EXPECT_EQ(printer.Current().orientation, device_mode::Landscape);
  const auto job = printer.Begin("Year 1/2");
  Draw(*job);
  job->EndDocument();
  EXPECT_TRUE(Bytes("chosen.pdf").startsWith("%PDF"));
}

}  // namespace
}  // namespace velkor
