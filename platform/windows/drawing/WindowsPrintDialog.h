// platform/windows/drawing/WindowsPrintDialog.h: the system's print dialog, filled and read back.
#pragma once

#include "platform/Printer.h"
#include "platform/windows/system/Win32.h"

namespace velkor {

/// Shows the dialog over a window, or none, filled with the settings of a printer that is there.
/// @return false when the user cancels; `settings` are as they were then
/// Throws Error: DeviceUnavailable where there is no printer, InvalidProcedureCall where the dialog
/// cannot be shown.
bool ShowPrintDialog(HWND over, PrinterSettings& settings);

}  // namespace velkor
