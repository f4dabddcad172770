// platform/headless/RecordingPrinter.cpp: printers that a script describes, and what they print.
#include "platform/headless/RecordingPrinter.h"

#include <algorithm>
#include <utility>

#include "values/Error.h"

namespace velkor {
namespace {

[[noreturn]] void Fail(const std::string& reason) {
  throw Error(errors::DeviceUnavailable, reason, "RecordingPrinter");
}

class Job : public PrintJob {
 public:
  /// The printer outlives this.
  Job(const RecordingPrinter& printer, std::shared_ptr<RecordingPrinter::Document> document)
      : printer_(printer), document_(std::move(document)) {
    BeginPage();
  }

  Surface& Page() override { return *document_->pages.back(); }
  void NewPage() override { BeginPage(); }
  void EndDocument() override {
    CheckDevice();
    document_->ended = true;
  }

 private:
  void CheckDevice() const {
    if (printer_.devices.empty()) Fail("The printer is gone");
  }
  void BeginPage() {
    CheckDevice();
    if (static_cast<int>(document_->pages.size()) + 1 == printer_.failingPage) {
      throw Error(errors::DeviceInputOutput, "The paper is jammed", "RecordingPrinter");
    }
    document_->pages.push_back(std::make_shared<RecordingSurface>(printer_.pixel));
  }

  const RecordingPrinter& printer_;
  std::shared_ptr<RecordingPrinter::Document> document_;
};

}  // namespace

void RecordingPicture::CopyTo(Surface& surface, const Rect& rect) {
  if (auto* const recording = dynamic_cast<RecordingSurface*>(&surface))
    recording->LogPicture(rect);
}

PrinterSettings& RecordingPrinter::CurrentDevice() {
  if (current_ >= devices.size()) Fail("There is no printer");
  return devices[current_];
}

std::vector<std::string> RecordingPrinter::Devices() {
  std::vector<std::string> names;
  for (const PrinterSettings& each : devices) names.push_back(each.device);
  return names;
}

PrinterSettings RecordingPrinter::Current() {
  return CurrentDevice();
}

void RecordingPrinter::SelectDevice(const std::string& device) {
  const auto found = std::find_if(devices.begin(), devices.end(),
                                  [&](const auto& each) { return each.device == device; });
  if (found == devices.end()) Fail("There is no printer " + device);
  current_ = static_cast<std::size_t>(found - devices.begin());
}

void RecordingPrinter::Apply(const PrinterSettings& settings) {
  PrinterSettings& device = CurrentDevice();
  using namespace device_mode;
  if (settings.orientation == Portrait || settings.orientation == Landscape) {
    device.orientation = settings.orientation;
  }
  if (settings.copies > 0) device.copies = settings.copies;
  if (sheets.contains(settings.paperSize)) device.paperSize = settings.paperSize;
  if (settings.duplex >= DuplexSimplex && settings.duplex <= DuplexHorizontal) {
    device.duplex = settings.duplex;
  }
}

Extent RecordingPrinter::PageSize() {
  const PrinterSettings& device = CurrentDevice();
  const Extent sheet = sheets.at(device.paperSize);
  if (device.orientation == device_mode::Landscape) return {sheet.height, sheet.width};
  return sheet;
}

Surface& RecordingPrinter::MeasuringSurface() {
  CurrentDevice();
  measuring_ = std::make_unique<RecordingSurface>(pixel);
  return *measuring_;
}

std::unique_ptr<OffscreenPicture> RecordingPrinter::PagePicture() {
  CurrentDevice();
  return std::make_unique<RecordingPicture>(pixel);
}

bool RecordingPrinter::ShowDialog(PrinterSettings& settings) {
  if (devices.empty()) Fail("There is no printer");
  shown.push_back(settings);
  if (answers.empty()) return false;
  settings = answers.front();
  answers.pop_front();
  return true;
}

std::unique_ptr<PrintJob> RecordingPrinter::Begin(const std::string& documentName) {
  if (cancelsDocuments) return nullptr;
  documents.push_back(std::make_shared<Document>(
      Document{.name = documentName, .settings = CurrentDevice(), .pages = {}}));
  return std::make_unique<Job>(*this, documents.back());
}

}  // namespace velkor
