// print/PrinterSetup.cpp: which printer is current, and how it is set.
#include "print/PrinterSetup.h"

#include <algorithm>
#include <string>
#include <vector>

#include "platform/Printer.h"
#include "print/PrintOptions.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

PrinterSettings CurrentSettings(Printer& printer, const PrinterSettings& known) {
  try {
    return printer.Current();
  } catch (const Error& error) {
    if (error.Number() != errors::DeviceUnavailable) throw;
  }
  PrinterSettings settings = known;
  settings.device.clear();
  return settings;
}

void SelectByName(Printer& printer, const std::string& name) {
  const std::vector<std::string> devices = printer.Devices();
  const auto found = std::find_if(devices.begin(), devices.end(), [&](const std::string& device) {
    return CompareText(device, name) == 0;
  });
  if (found != devices.end()) printer.SelectDevice(*found);
}

}  // namespace

void ApplyStoredSettings(Printer& printer, const PrintOptions& options) {
  PrinterSettings settings = printer.Current();
  settings.paperSize = options.PaperSize().value_or(settings.paperSize);
  settings.orientation = options.Orientation();
  printer.Apply(settings);
}

bool SetUpPrinter(Printer& printer, const PrinterSettings& known) {
  const PrinterSettings before = CurrentSettings(printer, known);
  PrinterSettings chosen = before;
  if (!printer.ShowDialog(chosen)) return false;
  if (chosen.device != before.device) SelectByName(printer, chosen.device);
  printer.Apply(chosen);
  return true;
}

}  // namespace velkor
