// platform/headless/RecordingPrinter.h: printers that a script describes, and what they print.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/OffscreenPicture.h"
#include "platform/Printer.h"
#include "platform/headless/RecordingSurface.h"

namespace velkor {

/// Keeps the log of what is drawn on it.
class RecordingPicture : public OffscreenPicture {
 public:
  explicit RecordingPicture(PixelSize pixel) : drawing_(pixel) {}

  RecordingSurface& Drawing() override { return drawing_; }
  /// Logged where the surface keeps a log.
  void CopyTo(Surface& surface, const Rect& rect) override;

 private:
  RecordingSurface drawing_;
};

/// The first of `devices` is current at first. Devices print on the whole sheet.
class RecordingPrinter : public Printer {
 public:
  struct Document {
    std::string name;
    /// As the printer stood when it began.
    PrinterSettings settings;
    std::vector<std::shared_ptr<RecordingSurface>> pages;
    /// False for one that is on its way or was given up.
    bool ended = false;
  };

  /// Each with its own settings.
  std::vector<PrinterSettings> devices{
      {.device = "Recorder", .driver = "recorder", .port = "memory:"}};
  /// Sheets upright, in twips, by their DMPAPER codes; devices take these and no others.
  std::map<int, Extent> sheets{{device_mode::PaperLetter, {12240, 15840}},
                               {device_mode::PaperA4, {11906, 16838}}};
  /// Size of a pixel of the pages and of what measures for them.
  PixelSize pixel;

  /// What the dialogs are answered, in order; beyond them they are cancelled.
  std::deque<PrinterSettings> answers;
  /// The settings that dialogs were filled with.
  std::vector<PrinterSettings> shown;

  /// The user is asked where a document goes to, and cancels.
  bool cancelsDocuments = false;
  /// The page, counted from 1, on which every document fails when it is begun; 0 for none.
  int failingPage = 0;
  /// Documents that were begun, the given-up ones too.
  std::vector<std::shared_ptr<Document>> documents;

  /// All printers are gone from here on.
  void Disappear() { devices.clear(); }

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
  PrinterSettings& CurrentDevice();

  std::size_t current_ = 0;
  std::unique_ptr<RecordingSurface> measuring_;
};

}  // namespace velkor
