// platform/Printer.h: the current printer, its dialog, and the pages that are printed.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "values/Twips.h"

namespace velkor {

class OffscreenPicture;
class Surface;

/// Values of the device mode (wingdi.h).
namespace device_mode {
inline constexpr int Portrait = 1;
inline constexpr int Landscape = 2;
inline constexpr int PaperLetter = 1;
inline constexpr int PaperA4 = 9;
inline constexpr int DuplexSimplex = 1;
inline constexpr int DuplexVertical = 2;
inline constexpr int DuplexHorizontal = 3;
}  // namespace device_mode

struct PrinterSettings {
  /// Names of the device, its driver and its port, UTF-8.
  std::string device = {};
  std::string driver = {};
  std::string port = {};
  int orientation = device_mode::Portrait;
  int copies = 1;
  /// A DMPAPER code.
  int paperSize = device_mode::PaperA4;
  int duplex = device_mode::DuplexSimplex;

  friend bool operator==(const PrinterSettings&, const PrinterSettings&) = default;
};

/// A document on its way to the printer, with its first page begun. Destroyed without EndDocument,
/// it is given up.
class PrintJob {
 public:
  virtual ~PrintJob() = default;
  /// The page in hand, in twips from the top left corner of what can be printed on; valid until
  /// NewPage or the end.
  virtual Surface& Page() = 0;
  virtual void NewPage() = 0;
  virtual void EndDocument() = 0;
  /// The path of the file that the document goes to instead of paper; empty for none.
  virtual std::string File() const { return {}; }
};

/// The printer that is current for one planner. Members throw Error (DeviceUnavailable) where there
/// is no printer, or none any more.
class Printer {
 public:
  virtual ~Printer() = default;
  /// Device names of all printers; empty when there are none. Does not throw.
  virtual std::vector<std::string> Devices() = 0;
  virtual PrinterSettings Current() = 0;
  /// Makes another printer current, by its name as Devices gives it, with its own settings.
  virtual void SelectDevice(const std::string& device) = 0;
  /// Orientation, copies, paper size and duplex of the current printer; what it cannot do is left
  /// as it is.
  virtual void Apply(const PrinterSettings& settings) = 0;
  /// What can be printed on, in twips, of a page as it is oriented now.
  virtual Extent PageSize() = 0;
  /// Something to measure texts on as the printer draws them; valid until another member is called.
  virtual Surface& MeasuringSurface() = 0;
  /// A picture of a page, as large as PageSize says, on which everything falls as on the printer's
  /// own pages.
  virtual std::unique_ptr<OffscreenPicture> PagePicture() = 0;
  /// Shows the platform's print dialog, filled with the settings; also where the current printer is
  /// gone.
  /// @return false when the user cancels; `settings` are as they were then
  virtual bool ShowDialog(PrinterSettings& settings) = 0;
  /// Begins a document; its name is what a print queue shows.
  /// @return null when the user was asked where to, and cancelled
  virtual std::unique_ptr<PrintJob> Begin(const std::string& documentName) = 0;
};

}  // namespace velkor
