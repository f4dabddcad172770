// platform/windows/drawing/PrinterDevice.h: one printer of the system, with the device mode that it
// is set to.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "platform/Printer.h"
#include "platform/windows/drawing/GdiHandles.h"
#include "values/Error.h"

namespace velkor {

/// Error about printing; `code` is the system's, 0 where it gave none.
Error PrinterError(long number, const std::string& what, DWORD code = 0);

struct ClosePrinterHandle {
  void operator()(HANDLE printer) const;
};
using PrinterHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, ClosePrinterHandle>;

/// Names of the printers of this machine and of those that the user is connected to, UTF-8.
std::vector<std::string> PrinterNames();

/// The user's default printer, or the first one without a default; empty without any printer.
std::string DefaultPrinterName();

/// Settings are kept here, not in the system. Members that ask the system throw Error
/// (DeviceUnavailable) when the printer is gone.
class PrinterDevice {
 public:
  /// Takes the user's own settings of a printer.
  /// @param name  as PrinterNames gives it
  explicit PrinterDevice(std::string name);

  const std::string& Name() const { return name_; }
  PrinterSettings Settings() const;
  /// The driver decides: what it cannot do stays as it is, and so do values outside of the ranges
  /// of the device mode.
  void Apply(const PrinterSettings& settings);

  /// Asks the user for a file where the printer's port is one ("FILE:"), in an own dialog.
  /// @return its path; empty where nobody needs to be asked, none when the
  /// user cancels
  std::optional<std::string> AskForFile(const std::string& documentName) const;

  /// To print on.
  MemoryDc PrintingContext() const;
  /// To ask about pages and to measure on.
  MemoryDc InformationContext() const;

 private:
  /// A device mode and what the driver keeps behind it.
  using ModeBytes = std::vector<std::byte>;

  DEVMODEA& Mode() { return *reinterpret_cast<DEVMODEA*>(mode_.data()); }
  const DEVMODEA& Mode() const { return *reinterpret_cast<const DEVMODEA*>(mode_.data()); }
  PrinterHandle Open() const;
  /// @param wanted  null for the user's own settings
  ModeBytes AskDriver(HANDLE printer, ModeBytes* wanted) const;
  bool HasPaper(int paper) const;
  bool HasDuplex() const;
  MemoryDc Checked(HDC dc) const;

  std::string name_;
  /// Its name as the system's functions take it.
  std::string ansi_;
  ModeBytes mode_;
};

/// Size of a printer's pixel in twips.
PixelSize PixelOf(HDC printer);

}  // namespace velkor
