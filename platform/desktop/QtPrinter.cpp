// platform/desktop/QtPrinter.cpp: the printers of the desktop, and the files that its print dialog
// offers.
#include "platform/desktop/QtPrinter.h"

#include <QApplication>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <algorithm>
#include <functional>
#include <utility>

#include "platform/desktop/PaperSizes.h"
#include "platform/desktop/QtText.h"
#include "support/values/Error.h"

namespace velkor {
namespace {

constexpr double TwipsPerPoint = 20;

[[noreturn]] void FailWithout(const std::string& what) {
  throw Error(errors::DeviceUnavailable, what, "Printer");
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

/// Keeps what is drawn, to draw it later; the toolkit cannot take back what a printer was given.
class KeptPage : public Surface {
 public:
  void DrawOn(Surface& surface) const {
    for (const Call& call : calls_) call(surface);
  }

  PixelSize Pixel() const override { return PagePixel; }
  void Fill(const Rect& rect, Colour colour) override {
    Keep([=](Surface& on) { on.Fill(rect, colour); });
  }
  void Outline(const Rect& rect, Colour colour, int pen) override {
    Keep([=](Surface& on) { on.Outline(rect, colour, pen); });
  }
  void Line(Point from, Point to, Colour colour, int pen) override {
    Keep([=](Surface& on) { on.Line(from, to, colour, pen); });
  }
  void Text(const Rect& rect, std::string_view text, const Font& font, Colour colour,
            TextFlags flags) override {
    Keep([=, kept = std::string(text)](Surface& on) { on.Text(rect, kept, font, colour, flags); });
  }
  Extent Measure(std::string_view text, const Font& font) override {
    return measuring_.Page().Measure(text, font);
  }
  Extent MeasureLines(std::string_view text, const Font& font, Twips width,
                      TextFlags flags) override {
    return measuring_.Page().MeasureLines(text, font, width, flags);
  }
  void EnterView(const Rect& clip, Point origin) override {
    Keep([=](Surface& on) { on.EnterView(clip, origin); });
  }
  void LeaveView() override {
    Keep([](Surface& on) { on.LeaveView(); });
  }

 private:
  using Call = std::function<void(Surface&)>;

  void Keep(Call call) { calls_.push_back(std::move(call)); }

  std::vector<Call> calls_;
  QtMeasuringPage measuring_;
};

class Job : public PrintJob {
 public:
  /// @param print  takes the pages at the end
  explicit Job(std::function<void(const std::vector<std::unique_ptr<KeptPage>>&)> print)
      : print_(std::move(print)) {
    NewPage();
  }

  Surface& Page() override { return *pages_.back(); }
  void NewPage() final { pages_.push_back(std::make_unique<KeptPage>()); }
  void EndDocument() override { print_(pages_); }

 private:
  std::function<void(const std::vector<std::unique_ptr<KeptPage>>&)> print_;
  std::vector<std::unique_ptr<KeptPage>> pages_;
};

}  // namespace

QPrinter& QtPrinter::Device() {
  if (printer_) {
    const QString name = printer_->printerName();
    if (QPrinterInfo::printerInfo(name).isNull()) {
      FailWithout("The printer " + name.toStdString() + " is not there any more");
    }
    return *printer_;
  }
  QPrinterInfo info = QPrinterInfo::defaultPrinter();
  if (info.isNull()) info = QPrinterInfo::availablePrinters().value(0);
  if (info.isNull()) FailWithout("There is no printer");
  printer_ = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
  UseWholePrintableArea(*printer_);
  return *printer_;
}

std::vector<std::string> QtPrinter::Devices() {
  std::vector<std::string> names;
  for (const QString& name : QPrinterInfo::availablePrinterNames()) {
    names.push_back(name.toStdString());
  }
  return names;
}

PrinterSettings QtPrinter::Current() {
  PrinterSettings settings = SettingsOf(Device(), paper_);
  if (file_) {
    const PrinterSettings ofFile = file_->Current();
    settings.orientation = ofFile.orientation;
    settings.copies = ofFile.copies;
    settings.paperSize = ofFile.paperSize;
    settings.duplex = ofFile.duplex;
  }
  return settings;
}

void QtPrinter::SelectDevice(const std::string& device) {
  const QPrinterInfo info = QPrinterInfo::printerInfo(ToQt(device));
  if (info.isNull()) FailWithout("There is no printer " + device);
  file_.reset();
  printer_ = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
  UseWholePrintableArea(*printer_);
}

void QtPrinter::Apply(const PrinterSettings& settings) {
  if (file_) return file_->Apply(settings);
  Set(Device(), settings);
  paper_ = settings.paperSize;
}

Extent QtPrinter::PageSize() {
  if (file_) return file_->PageSize();
  const QRectF area = Device().pageLayout().paintRect(QPageLayout::Point);
  return {area.width() * TwipsPerPoint, area.height() * TwipsPerPoint};
}

Surface& QtPrinter::MeasuringSurface() {
  Device();
  if (!measuring_) measuring_.emplace();
  return measuring_->Page();
}

std::unique_ptr<OffscreenPicture> QtPrinter::PagePicture() {
  return std::make_unique<QtPagePicture>(PageSize());
}

bool QtPrinter::ShowDialog(PrinterSettings& settings) {
  QPrinter chosen(QPrinterInfo(Device()), QPrinter::HighResolution);
  Set(chosen, settings);
  QWidget* const open = QApplication::activeModalWidget();
  QPrintDialog dialog(&chosen, open != nullptr ? open : parent_.data());
  dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize |
                    QAbstractPrintDialog::PrintCollateCopies);
  if (dialog.exec() != QDialog::Accepted) return false;

  const std::string device = settings.device;
  settings = SettingsOf(chosen, settings.paperSize);
  file_.reset();
  if (chosen.outputFormat() == QPrinter::PdfFormat) {
    settings.device = device;
    file_.emplace(chosen.outputFileName().toStdString());
  }
  return true;
}

std::unique_ptr<PrintJob> QtPrinter::Begin(const std::string& documentName) {
  if (file_) return file_->Begin(documentName);
  Device();
  return std::make_unique<Job>([this, documentName](const auto& pages) {
    QPrinter& printer = Device();
    printer.setDocName(ToQt(documentName));
    printer.setCreator(QStringLiteral("OutlookVelkor"));
    QtPages target(printer, printer.resolution());
    for (std::size_t i = 0; i < pages.size(); ++i) {
      if (i > 0) target.NewPage();
      pages[i]->DrawOn(target.Page());
    }
    target.End();
  });
}

}  // namespace velkor
