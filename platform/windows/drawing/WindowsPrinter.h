// platform/windows/drawing/WindowsPrinter.h: the printers of the system and its print dialog.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Printer.h"
#include "platform/windows/drawing/GdiSurface.h"
#include "platform/windows/drawing/PrinterDevice.h"

namespace velkor {

class DialogOwner;

/// The user's default printer is current at first, or the first one without a default. Settings
/// are this object's own; the system's stay as they are.
class WindowsPrinter : public Printer {
 public:
  explicit WindowsPrinter(DialogOwner& owner) : owner_(owner) {}
  WindowsPrinter(const WindowsPrinter&) = delete;
  WindowsPrinter& operator=(const WindowsPrinter&) = delete;

  /// From here on documents are written to this file in place of the printer's port, in the
  /// printer's own language; empty for the port. A port that is a file asks for its name.
  void SetOutputFile(std::string path) { outputFile_ = std::move(path); }

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
  struct Measuring {
    explicit Measuring(MemoryDc context)
        : dc(std::move(context)), surface(dc.get(), PixelOf(dc.get())) {}
    MemoryDc dc;
    GdiSurface surface;
  };

  PrinterDevice& Device();

  DialogOwner& owner_;
  std::string outputFile_;
  std::optional<PrinterDevice> device_;
  std::optional<Measuring> measuring_;
};

}  // namespace velkor
