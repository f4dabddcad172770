// platform/desktop/PdfPrinter.h: a printer whose paper is a PDF file.
#pragma once

#include <QPageLayout>
#include <functional>
#include <optional>
#include <string>

#include "platform/Printer.h"
#include "platform/desktop/QtPages.h"

namespace velkor {

/// Pages have no margins of their own, their texts can be searched, and fonts are embedded. The
/// file is put in place when the document ends, over an older one, for whom the umask says; a
/// document that fails or is given up leaves the older file and nothing else. It has every paper
/// with a code from 1 to 41, makes one copy, and has no dialog: ShowDialog is always cancelled.
/// Needs a QGuiApplication.
class PdfPrinter : public Printer {
 public:
  static constexpr const char* DeviceName = "PDF file";
  /// The file for a document of this name, UTF-8; empty for one that is not to be printed.
  using FileQuestion = std::function<std::string(const std::string& documentName)>;

  /// @param path  UTF-8
  explicit PdfPrinter(std::string path);
  /// Has no file until a document begins.
  explicit PdfPrinter(FileQuestion ask);

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
  FileQuestion ask_;
  std::string path_;
  int paper_ = device_mode::PaperA4;
  QPageLayout layout_;
  std::optional<QtMeasuringPage> measuring_;
};

}  // namespace velkor
