// hosts/yearplan/commands/PrintTask.h: what `yearplan print` is to print, and on what.
#pragma once

#include <QCommandLineParser>
#include <string>
#include <vector>

#include "platform/Printer.h"
#include "print/PrintOptionSet.h"

namespace velkor {

struct PrintTask {
  PrintOptionSet options;
  int paper = device_mode::PaperA4;
  int orientation = device_mode::Landscape;
  /// Tell what each page would hold, and write nothing.
  bool pages = false;
};

/// The names of the options that only `print` takes.
const std::vector<const char*>& PrintOptionNames();
void AddPrintOptions(QCommandLineParser& parser);

/// Throws UsageError.
/// @param firstMonth  of the year that is printed, 1 to 12
PrintTask ReadPrintTask(const QCommandLineParser& parser, int firstMonth);

}  // namespace velkor
