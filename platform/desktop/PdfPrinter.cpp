// platform/desktop/PdfPrinter.cpp: a printer whose paper is a PDF file.
#include "platform/desktop/PdfPrinter.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPdfWriter>
#include <QSaveFile>
#include <utility>

#include "platform/desktop/PaperSizes.h"
#include "platform/desktop/QtText.h"
#include "platform/posix/SaveAll.h"
#include "values/Error.h"
#include "values/Twips.h"

namespace velkor {
namespace {

class Job : public PrintJob {
 public:
  Job(const std::string& path, const QPageLayout& layout, const std::string& name)
      : path_(path), file_(ToQt(path)) {
    // What cannot be written is told before anything is drawn.
    if (!OpenToSave(file_)) Fail();
    buffer_.open(QIODevice::WriteOnly);
    // Fine enough for letters to stand where their widths put them.
    constexpr int Resolution = 1440;
    writer_.emplace(&buffer_);
    writer_->setResolution(Resolution);
    writer_->setPageLayout(layout);
    writer_->setTitle(ToQt(name));
    writer_->setCreator(QStringLiteral("OutlookVelkor"));
    pages_.emplace(*writer_, Resolution);
  }

  Surface& Page() override { return pages_->Page(); }
  void NewPage() override { pages_->NewPage(); }
  void EndDocument() override {
    pages_->End();
    if (!SaveAll(file_, buffer_.data())) Fail();
  }
  std::string File() const override {
    return QFileInfo(file_.fileName()).absoluteFilePath().toStdString();
  }

 private:
  [[noreturn]] void Fail() const {
    throw Error(errors::DeviceInputOutput,
                "Cannot write " + path_ + ": " + file_.errorString().toStdString(), "Printer");
  }

  std::string path_;
  /// Written at the end, since a writer closes what it writes to, which this file forbids.
  QSaveFile file_;
  QBuffer buffer_;
  std::optional<QPdfWriter> writer_;
  std::optional<QtPages> pages_;
};

}  // namespace

PdfPrinter::PdfPrinter(std::string path)
    : PdfPrinter([path](const std::string& /*documentName*/) { return path; }) {
  path_ = std::move(path);
}

PdfPrinter::PdfPrinter(FileQuestion ask)
    : ask_(std::move(ask)),
      layout_(PageSizeOfPaper(paper_), QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)) {}

std::vector<std::string> PdfPrinter::Devices() {
  return {DeviceName};
}

PrinterSettings PdfPrinter::Current() {
  return {.device = DeviceName,
          .driver = "PDF",
          .port = path_,
          .orientation = FromQtOrientation(layout_.orientation()),
          .copies = 1,
          .paperSize = paper_,
          .duplex = device_mode::DuplexSimplex};
}

void PdfPrinter::SelectDevice(const std::string& device) {
  if (device != DeviceName) {
    throw Error(errors::DeviceUnavailable, "There is no printer " + device, "Printer");
  }
}

void PdfPrinter::Apply(const PrinterSettings& settings) {
  const QPageSize sheet = PageSizeOfPaper(settings.paperSize);
  if (sheet.isValid()) {
    paper_ = settings.paperSize;
    layout_.setPageSize(sheet);
  }
  if (IsOrientation(settings.orientation)) {
    layout_.setOrientation(ToQtOrientation(settings.orientation));
  }
}

Extent PdfPrinter::PageSize() {
  const QRectF page = layout_.fullRect(QPageLayout::Point);
  return {page.width() * TwipsPerPoint, page.height() * TwipsPerPoint};
}

Surface& PdfPrinter::MeasuringSurface() {
  if (!measuring_) measuring_.emplace();
  return measuring_->Page();
}

std::unique_ptr<OffscreenPicture> PdfPrinter::PagePicture() {
  return std::make_unique<QtPagePicture>(PageSize());
}

bool PdfPrinter::ShowDialog(PrinterSettings& /*settings*/) {
  return false;
}

std::unique_ptr<PrintJob> PdfPrinter::Begin(const std::string& documentName) {
  const std::string path = ask_(documentName);
  if (path.empty()) return nullptr;
  return std::make_unique<Job>(path, layout_, documentName);
}

}  // namespace velkor
