// tests/platform/windows/WindowsPrinterTest.cpp: a real printer set up, printed on and lost.
#include "platform/windows/WindowsPrinter.h"

#include <gmock/gmock.h>

#include "platform/windows/DialogOwner.h"
#include "platform/windows/WindowsFiles.h"
#include "platform/windows/WindowsSystem.h"
#include "print/PrintDocument.h"
#include "tests/platform/windows/TestPrinter.h"
#include "tests/support/ErrorOf.h"
#include "tests/view/SampleGrid.h"

namespace velkor {
namespace {

TEST(WindowsPrinter, Probe) {
  DialogOwner owner;
  WindowsPrinter printer(owner);
  TestPrinter made("Velkor Test");
  const YearGrid grid = SampleGrid({SampleEvent("a", At(2006, 1, 3), At(2006, 2, 9), "Holiday"),
                                    SampleEvent("b", At(2006, 7, 3), At(2006, 7, 4))});
  PrintDocument document(grid, {});
  PrintOptionSet options;
  options.VisibleText = true;
  options.MinBandHeight = 450;
  document.LayOut(options, printer.PageSize(), printer.MeasuringSurface());
  printf("pages %d\n", document.PageCount());
  printer.SetOutputFile("C:\\out.ps");
  {
  auto job = printer.Begin("Yéar \"2006\"");
  document.Print(*job);
  }
  printer.SetOutputFile("C:\\out2.ps");
  {
  auto job = printer.Begin("Yéar \"2006\"");
  }
  printer.SetOutputFile("C:\\no\\such\\dir\\out2.ps");
  printf("%s\n", ErrorOf([&] { printer.Begin("abc"); }).what());
  printer.SetOutputFile("");
  made.Remove();
  printf("%s\n", ErrorOf([&] { printer.Begin("abc"); }).what());
  printf("%s\n", ErrorOf([&] { printer.Current(); }).what());
}

}  // namespace
}  // namespace velkor
