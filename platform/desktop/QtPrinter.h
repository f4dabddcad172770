// platform/desktop/QtPrinter.h: the printers of the desktop, and the files that its print dialog
// offers.
#pragma once

#include <QPointer>
#include <QPrinter>
#include <QWidget>
#include <memory>
#include <optional>

#include "platform/Printer.h"
#include "platform/desktop/PdfPrinter.h"
#include "platform/desktop/QtPages.h"

namespace velkor {

/// The desktop's default printer is current at first, or its first one where it has no default.
/// Driver and port are make and place of the printer as the desktop words them. A document reaches
/// the printer when it ends; one that fails or is given up does not.
///
/// Where the user chooses a PDF file in the print dialog, the current printer keeps its name, and
/// paper, page size and documents are those of that file until a printer is chosen again.
/// Needs a QApplication.
class QtPrinter : public Printer {
 public:
  /// @param parent  what the dialog opens over, unless another dialog is open
  explicit QtPrinter(QWidget* parent = nullptr) : parent_(parent) {}

  std::vector<std::string> Devices() override;
  PrinterSettings Current() override;
  void SelectDevice(const std::string& device) override;
  void Apply(const PrinterSettings& settings) override;
  Extent PageSize() override;
  Surface& MeasuringSurface() override;
  std::unique_ptr<OffscreenPicture> PagePicture() override;
  bool ShowDialog(PrinterSettings& settings) override;
  std::unique_ptr<PrintJob> Begin(const std::string& documentName) override;

 private:
  /// The current printer, which is still there.
  QPrinter& Device();

  QPointer<QWidget> parent_;
  std::unique_ptr<QPrinter> printer_;
  /// The paper asked for last, since sheets of one size have several codes.
  int paper_ = device_mode::PaperA4;
  /// What the user chose instead of the printer.
  std::optional<PdfPrinter> file_;
  std::optional<QtMeasuringPage> measuring_;
};

}  // namespace velkor
