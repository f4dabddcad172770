// platform/windows/drawing/WindowsPrinter.cpp: the printers of the system and its print dialog.
#include "platform/windows/drawing/WindowsPrinter.h"

#include <algorithm>

#include "platform/windows/drawing/WindowsPages.h"
#include "platform/windows/drawing/WindowsPrintDialog.h"
#include "platform/windows/system/DialogOwner.h"
#include "platform/windows/system/Wide.h"

namespace velkor {
namespace {

Extent PageOf(HDC printer) {
  const PixelSize pixel = PixelOf(printer);
  return {::GetDeviceCaps(printer, HORZRES) * static_cast<double>(pixel.width),
          ::GetDeviceCaps(printer, VERTRES) * static_cast<double>(pixel.height)};
}

}  // namespace

PrinterDevice& WindowsPrinter::Device() {
  if (!device_) {
    const std::string name = DefaultPrinterName();
    if (name.empty()) throw PrinterError(errors::DeviceUnavailable, "There is no printer");
    device_.emplace(name);
  }
  return *device_;
}

std::vector<std::string> WindowsPrinter::Devices() {
  return PrinterNames();
}

PrinterSettings WindowsPrinter::Current() {
  return Device().Settings();
}

void WindowsPrinter::SelectDevice(const std::string& device) {
  device_ = PrinterDevice(device);
}

void WindowsPrinter::Apply(const PrinterSettings& settings) {
  Device().Apply(settings);
}

Extent WindowsPrinter::PageSize() {
  return PageOf(Device().InformationContext().get());
}

Surface& WindowsPrinter::MeasuringSurface() {
  return measuring_.emplace(Device().InformationContext()).surface;
}

std::unique_ptr<OffscreenPicture> WindowsPrinter::PagePicture() {
  const MemoryDc dc = Device().InformationContext();
  return std::make_unique<WindowsPagePicture>(PageOf(dc.get()), PixelOf(dc.get()));
}

bool WindowsPrinter::ShowDialog(PrinterSettings& settings) {
  PrinterSettings shown = settings;
  const std::vector<std::string> devices = Devices();
  if (std::find(devices.begin(), devices.end(), shown.device) == devices.end()) {
    shown.device = DefaultPrinterName();
    // Without any printer the dialog would only say so.
    if (shown.device.empty()) throw PrinterError(errors::DeviceUnavailable, "There is no printer");
    const PrinterSettings instead = PrinterDevice(shown.device).Settings();
    shown.driver = instead.driver;
    shown.port = instead.port;
  }
  const ModalScope modal(owner_);
  if (!ShowPrintDialog(modal.Window(), shown)) return false;
  settings = shown;
  return true;
}

std::unique_ptr<PrintJob> WindowsPrinter::Begin(const std::string& documentName) {
  MemoryDc dc = Device().PrintingContext();
  const std::string what = "\"" + documentName + "\" on the printer " + Device().Name();
  const std::wstring name = ToWide(documentName);
  const ModalScope modal(owner_);
  // Where the system asks by itself, not every one tells that the user cancelled.
  const auto path = outputFile_.empty() ? Device().AskForFile(documentName) : outputFile_;
  if (!path) return nullptr;
  const std::wstring output = ToWide(*path);
  DOCINFOW document{};
  document.cbSize = sizeof document;
  document.lpszDocName = name.c_str();
  if (!output.empty()) document.lpszOutput = output.c_str();
  ::SetLastError(ERROR_SUCCESS);
  if (::StartDocW(dc.get(), &document) <= 0) {
    const DWORD code = ::GetLastError();
    if (code == ERROR_CANCELLED || code == ERROR_PRINT_CANCELLED) return nullptr;
    throw PrinterError(errors::DeviceInputOutput, "Cannot begin " + what, code);
  }
  return std::make_unique<WindowsPrintJob>(std::move(dc), what);
}

}  // namespace velkor
