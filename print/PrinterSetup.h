// print/PrinterSetup.h: which printer is current, and how it is set.
#pragma once

namespace velkor {

class Printer;
class PrintOptions;
struct PrinterSettings;

/// Sets the current printer's paper and orientation to those stored last. Throws Error where there
/// is no printer.
void ApplyStoredSettings(Printer& printer, const PrintOptions& options);

/// Shows the print dialog filled with the current printer's settings, then makes the printer
/// current that the user chose, its name matched without regard to case, and gives it the settings
/// chosen. A printer that is gone does not keep the user from choosing another one.
/// @param known  settings that the dialog is filled with where the current printer is gone
/// @return false when the user cancels; nothing has changed then
bool SetUpPrinter(Printer& printer, const PrinterSettings& known);

}  // namespace velkor
