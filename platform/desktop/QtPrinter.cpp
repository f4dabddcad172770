// platform/desktop/QtPrinter.cpp: the printers of the desktop, and the files that its print dialog
// offers.
#include "platform/desktop/QtPrinter.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <utility>

#include "platform/desktop/KeptPage.h"
#include "platform/desktop/PaperSizes.h"
#include "platform/desktop/QtText.h"
#include "values/Error.h"
#include "values/Twips.h"

namespace velkor {
namespace {

[[noreturn]] void FailWithout(const std::string& what) {
  throw Error(errors::DeviceUnavailable, what, "Printer");
}

bool IsThere(const QPrinter& printer) {
  return !QPrinterInfo::printerInfo(printer.printerName()).isNull();
}

QPrinter::DuplexMode ToQtDuplex(int duplex) {
  if (duplex == device_mode::DuplexVertical) return QPrinter::DuplexLongSide;
  if (duplex == device_mode::DuplexHorizontal) return QPrinter::DuplexShortSide;
  return QPrinter::DuplexNone;
}

int FromQtDuplex(QPrinter::DuplexMode duplex, int orientation) {
  switch (duplex) {
    case QPrinter::DuplexNone:
      return device_mode::DuplexSimplex;
    case QPrinter::DuplexLongSide:
      return device_mode::DuplexVertical;
    case QPrinter::DuplexShortSide:
      return device_mode::DuplexHorizontal;
    case QPrinter::DuplexAuto:
      break;
  }
  // The long side of upright pages, the short one of others.
  return orientation == device_mode::Landscape ? device_mode::DuplexHorizontal
                                               : device_mode::DuplexVertical;
}

/// A document's name as that of a file.
std::string FileNameOf(const std::string& documentName) {
  QString name = ToQt(documentName);
  for (QChar& c : name) {
    if (c.unicode() < u' ' || QStringLiteral("\\/:*?\"<>|").contains(c)) c = u'-';
  }
  return (name.isEmpty() ? "Document" : name.toStdString()) + ".pdf";
}

/// The printer's own sheet of a size, whose name it knows; none where it has no such sheet.
QPageSize SheetOf(const QPrinterInfo& info, int paper) {
  const QPageSize wanted = PageSizeOfPaper(paper);
  if (!wanted.isValid()) return {};
  const QList<QPageSize> sheets = info.supportedPageSizes();
  const auto found = std::find_if(sheets.begin(), sheets.end(), [&](const QPageSize& sheet) {
    return IsSameSheet(wanted, sheet);
  });
  if (found != sheets.end()) return *found;
  return sheets.isEmpty() ? wanted : QPageSize();
}

/// What cannot be printed on is left as the printer says.
void UseWholePrintableArea(QPrinter& printer) {
  QPageLayout layout = printer.pageLayout();
  layout.setMode(QPageLayout::StandardMode);
  layout.setMargins(layout.minimumMargins());
  printer.setPageLayout(layout);
}

void Set(QPrinter& printer, const PrinterSettings& settings) {
  const QPrinterInfo info(printer);
  const QPageSize sheet = SheetOf(info, settings.paperSize);
  if (sheet.isValid()) printer.setPageSize(sheet);
  if (IsOrientation(settings.orientation)) {
    printer.setPageOrientation(ToQtOrientation(settings.orientation));
  }
  if (settings.copies > 0) printer.setCopyCount(settings.copies);
  const QPrinter::DuplexMode duplex = ToQtDuplex(settings.duplex);
  if (info.supportedDuplexModes().contains(duplex)) printer.setDuplex(duplex);
  UseWholePrintableArea(printer);
}

PrinterSettings SettingsOf(const QPrinter& printer, int preferredPaper) {
  const QPageLayout layout = printer.pageLayout();
  const int orientation = FromQtOrientation(layout.orientation());
  const QPrinterInfo info(printer);
  return {.device = printer.printerName().toStdString(),
          .driver = info.makeAndModel().toStdString(),
          .port = info.location().toStdString(),
          .orientation = orientation,
          .copies = printer.copyCount(),
          .paperSize = PaperOfPageSize(layout.pageSize(), preferredPaper),
          .duplex = FromQtDuplex(printer.duplex(), orientation)};
}

/// The page that the dialog calls properties begins with the printer's usual paper, which is what
/// the dialog hands on even where nobody saw that page.
class PaperOfDialog {
 public:
  PaperOfDialog(QPrintDialog& dialog, const QPrinter& printer)
      : dialog_(dialog), printer_(printer.printerName()), paper_(printer.pageLayout().pageSize()) {
    const auto* const properties = dialog.findChild<QPushButton*>("properties");
    if (properties == nullptr) return;
    QObject::connect(properties, &QPushButton::released, &dialog,
                     [this] { QTimer::singleShot(0, &dialog_, [this] { ShowOnce(); }); });
  }

  /// Gives the printer that was accepted the paper that the user saw last.
  void HandOn(QPrinter& printer) const {
    const bool same =
        printer.outputFormat() == QPrinter::NativeFormat && printer.printerName() == printer_;
    if (same && !seen_) printer.setPageSize(paper_);
  }

 private:
  void ShowOnce() {
    auto* const sizes = dialog_.findChild<QComboBox*>("pageSizeCombo");
    if (seen_ || sizes == nullptr) return;
    seen_ = true;
    const int place = sizes->findText(paper_.name());
    if (place >= 0) sizes->setCurrentIndex(place);
  }

  QPrintDialog& dialog_;
  QString printer_;
  QPageSize paper_;
  bool seen_ = false;
};

using KeptPages = std::vector<std::unique_ptr<KeptPage>>;

void PrintPages(const KeptPages& pages, QPrinter& printer) {
  QtPages target(printer, printer.resolution());
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (i > 0) target.NewPage();
    pages[i]->DrawOn(target.Page());
  }
  target.End();
}

class Job : public PrintJob {
 public:
  /// @param print  takes the pages at the end
  explicit Job(std::function<void(const KeptPages&)> print) : print_(std::move(print)) {
    NewPage();
  }

  Surface& Page() override { return *pages_.back(); }
  void NewPage() final { pages_.push_back(std::make_unique<KeptPage>()); }
  void EndDocument() override { print_(pages_); }

 private:
  std::function<void(const KeptPages&)> print_;
  KeptPages pages_;
};

}  // namespace

PdfPrinter* QtPrinter::File() {
  if (!printer_ && !file_) {
    QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) info = QPrinterInfo::availablePrinters().value(0);
    if (info.isNull()) {
      AskForFiles();
    } else {
      SetDevice(info);
    }
  }
  return file_ ? &*file_ : nullptr;
}

QPrinter& QtPrinter::Device() {
  if (!IsThere(*printer_)) {
    FailWithout("The printer " + printer_->printerName().toStdString() + " is not there any more");
  }
  return *printer_;
}

void QtPrinter::SetDevice(const QPrinterInfo& info) {
  file_.reset();
  printer_ = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
  UseWholePrintableArea(*printer_);
}

void QtPrinter::AskForFiles() {
  printer_.reset();
  file_.emplace([this](const std::string& documentName) {
    const FileDialog dialog{.filter = "PDF Files(*.pdf)|*.pdf",
                            .title = "Print to a PDF file",
                            .flags = file_dialog_flags::OverwritePrompt,
                            .defaultExtension = "pdf"};
    return fileDialogs_.ShowSave(dialog, FileNameOf(documentName));
  });
}

std::vector<std::string> QtPrinter::Devices() {
  std::vector<std::string> names;
  for (const QString& name : QPrinterInfo::availablePrinterNames()) {
    names.push_back(name.toStdString());
  }
  if (names.empty()) names.emplace_back(PdfPrinter::DeviceName);
  return names;
}

PrinterSettings QtPrinter::Current() {
  PdfPrinter* const file = File();
  if (!file) return SettingsOf(Device(), paper_);
  PrinterSettings settings = file->Current();
  if (printer_) {
    const PrinterSettings instead = SettingsOf(*printer_, paper_);
    settings.device = instead.device;
    settings.driver = instead.driver;
    settings.port = instead.port;
  }
  return settings;
}

void QtPrinter::SelectDevice(const std::string& device) {
  const QPrinterInfo info = QPrinterInfo::printerInfo(ToQt(device));
  if (!info.isNull()) return SetDevice(info);
  if (device != PdfPrinter::DeviceName) FailWithout("There is no printer " + device);
  AskForFiles();
}

void QtPrinter::Apply(const PrinterSettings& settings) {
  if (PdfPrinter* const file = File()) return file->Apply(settings);
  Set(Device(), settings);
  paper_ = settings.paperSize;
}

Extent QtPrinter::PageSize() {
  if (PdfPrinter* const file = File()) return file->PageSize();
  const QRectF area = Device().pageLayout().paintRect(QPageLayout::Point);
  return {area.width() * TwipsPerPoint, area.height() * TwipsPerPoint};
}

Surface& QtPrinter::MeasuringSurface() {
  if (!File()) Device();
  if (!measuring_) measuring_.emplace();
  return measuring_->Page();
}

std::unique_ptr<OffscreenPicture> QtPrinter::PagePicture() {
  return std::make_unique<QtPagePicture>(PageSize());
}

bool QtPrinter::ShowDialog(PrinterSettings& settings) {
  QPrinter chosen(QPrinter::HighResolution);
  File();
  if (!printer_) {
    chosen.setOutputFileName(ToQt(file_->Current().port));
  } else if (IsThere(*printer_)) {
    chosen.setPrinterName(printer_->printerName());
  } else if (QPrinterInfo::availablePrinters().isEmpty()) {
    chosen.setOutputFormat(QPrinter::PdfFormat);
  }
  Set(chosen, settings);
  QWidget* const open = QApplication::activeModalWidget();
  QPrintDialog dialog(&chosen, open != nullptr ? open : parent_.data());
  dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize |
                    QAbstractPrintDialog::PrintCollateCopies);
  dialog.setWindowTitle(QStringLiteral("Printer setup"));
  const PaperOfDialog paper(dialog, chosen);
  // Nothing is printed yet.
  const auto* const buttons = dialog.findChild<QDialogButtonBox*>();
  QPushButton* const accept = buttons ? buttons->button(QDialogButtonBox::Ok) : nullptr;
  if (accept) accept->setText(QStringLiteral("OK"));
  if (dialog.exec() != QDialog::Accepted) return false;
  paper.HandOn(chosen);
  const bool toFile = chosen.outputFormat() == QPrinter::PdfFormat;
  if (toFile) CheckFile(chosen.outputFileName());

  const PrinterSettings before = std::exchange(settings, SettingsOf(chosen, settings.paperSize));
  file_.reset();
  if (toFile) {
    settings.device = before.device;
    settings.driver = before.driver;
    settings.port = before.port;
    file_.emplace(chosen.outputFileName().toStdString());
  }
  return true;
}

void QtPrinter::CheckFile(const QString& path) const {
  const QString target = QFileInfo(path).canonicalFilePath();
  if (target.isEmpty() || target != QFileInfo(ToQt(fileInUse_)).canonicalFilePath()) return;
  throw Error(errors::BadFileName, path.toStdString() + " is the calendar itself", "Printer");
}

std::unique_ptr<PrintJob> QtPrinter::Begin(const std::string& documentName) {
  if (PdfPrinter* const file = File()) return file->Begin(documentName);
  Device();
  return std::make_unique<Job>([this, documentName](const auto& pages) {
    QPrinter& printer = Device();
    printer.setDocName(ToQt(documentName));
    printer.setCreator(QStringLiteral("OutlookVelkor"));
    try {
      PrintPages(pages, printer);
    } catch (...) {
      printer.abort();
      throw;
    }
  });
}

}  // namespace velkor
