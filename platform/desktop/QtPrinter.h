// platform/desktop/QtPrinter.h: the printers of the desktop, and the files that its print dialog
// offers.
#pragma once

#include <QPointer>
#include <QPrinter>
#include <QWidget>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/Printer.h"
#include "platform/desktop/PdfPrinter.h"
#include "platform/desktop/QtDialogs.h"
#include "platform/desktop/QtPages.h"

namespace velkor {

/// The desktop's default printer is current at first, or its first one where it has no default.
/// Driver and port are make and place of the printer as the desktop words them. A document reaches
/// the printer when it ends; one that fails or is given up does not.
///
/// Where the user chooses a PDF file in the print dialog, the current printer keeps its name, and
/// paper, page size and documents are those of that file until a printer is chosen again.
/// A desktop without printers has a PDF file as its printer: each document asks for the file that
/// it goes to, unless one was chosen in the print dialog.
/// Needs a QApplication.
class QtPrinter : public Printer {
 public:
  /// @param parent  what dialogs open over, unless another dialog is open
  /// @param fileInUse  a path that no PDF file is written to; empty for none
  explicit QtPrinter(QWidget* parent = nullptr, std::string fileInUse = {})
      : parent_(parent), fileInUse_(std::move(fileInUse)), fileDialogs_(parent, fileInUse_) {}
  QtPrinter(const QtPrinter&) = delete;
  QtPrinter& operator=(const QtPrinter&) = delete;

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
  /// What stands in for a printer, or null where Device is current.
  PdfPrinter* File();
  /// The current printer, which is still there.
  QPrinter& Device();
  void SetDevice(const QPrinterInfo& info);
  void AskForFiles();
  /// Throws Error (BadFileName) for the file in use.
  void CheckFile(const QString& path) const;

  QPointer<QWidget> parent_;
  std::string fileInUse_;
  QtCommonDialogs fileDialogs_;
  /// Null where there was none.
  std::unique_ptr<QPrinter> printer_;
  /// The paper asked for last, since sheets of one size have several codes.
  int paper_ = device_mode::PaperA4;
  /// Instead of the printer.
  std::optional<PdfPrinter> file_;
  std::optional<QtMeasuringPage> measuring_;
};

}  // namespace velkor
