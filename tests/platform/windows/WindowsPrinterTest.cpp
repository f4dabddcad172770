// tests/platform/windows/WindowsPrinterTest.cpp: a real printer set up, printed on and lost.
#include "platform/windows/WindowsPrinter.h"

#include <gmock/gmock.h>

#include "platform/windows/DialogOwner.h"
#include "platform/windows/WindowsFiles.h"
#include "platform/windows/WindowsPages.h"
#include "platform/windows/WindowsSystem.h"
#include "print/PrintDocument.h"
#include "tests/platform/windows/DriveDialog.h"
#include "tests/platform/windows/TestPrinter.h"
#include "tests/support/ErrorOf.h"
#include "tests/view/SampleGrid.h"

namespace velkor {
namespace {

TEST(WindowsPrinter, Probe) {
  DialogOwner owner;
  WindowsPrinter printer(owner);
  TestPrinter made("Velkor Test");
  auto s = printer.Current();
  s.orientation = 2;
  s.paperSize = 1;
  s.copies = 2;
  printer.Apply(s);
  s = printer.Current();
  {
    const DriveDialog drive([] {
      const HWND d = WaitForWindow({});
      printf("title %ls\n", TitleOf(d).c_str());
      ::EnumChildWindows(
          d,
          [](HWND w, LPARAM) -> BOOL {
            wchar_t c[100], t[100];
            ::GetClassNameW(w, c, 100);
            ::GetWindowTextW(w, t, 100);
            printf("%d %ls '%ls' en%d\n", ::GetDlgCtrlID(w), c, t, ::IsWindowEnabled(w));
            return TRUE;
          },
          0);
      fflush(stdout);
      Answer(d, IDOK);
    });
    printf("%d\n", printer.ShowDialog(s));
  }
  printf("%s|%s|%s o%d c%d p%d d%d\n", s.device.c_str(), s.driver.c_str(), s.port.c_str(),
         s.orientation, s.copies, s.paperSize, s.duplex);
}

TEST(WindowsPrinter, ProbePicture) {
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
  auto picture = printer.PagePicture();
  printf("pixel %g\n", picture->Drawing().Pixel().width);
  document.DrawPage(picture->Drawing(), 1);
  DibSection shown(600, 800);
  GdiSurface surface(shown.Dc());
  surface.Fill({0, 0, 9000, 12000}, Colour::FromRgb(160, 160, 156));
  picture->CopyTo(surface, {300, 300, 300 + 8129, 300 + 11200});
  FILE* f = fopen("Z:\\tmp\\wt\\printer\\build\\pic.ppm", "wb");
  fprintf(f, "P6 600 800 255\n");
  for (int y = 0; y < 800; ++y)
    for (int x = 0; x < 600; ++x) {
      auto c = shown.At(x, y);
      fputc(c.Red(), f);
      fputc(c.Green(), f);
      fputc(c.Blue(), f);
    }
  fclose(f);
}

}  // namespace
}  // namespace velkor
