// tests/platform/desktop/PrintedAlikeTest.cpp: preview, file and printer get the same calls.
#include <gtest/gtest.h>

#include "platform/OffscreenPicture.h"
#include "platform/desktop/KeptPage.h"
#include "platform/desktop/PdfPrinter.h"
#include "print/PrintDocument.h"
#include "tests/platform/desktop/FolderCase.h"
#include "tests/view/SampleGrid.h"

namespace velkor {
namespace {

/// Logs the calls, and lets another surface draw and measure.
class LoggedSurface : public RecordingSurface {
 public:
  explicit LoggedSurface(Surface& drawing) : RecordingSurface(drawing.Pixel()), drawing_(drawing) {}

  void Fill(const Rect& rect, Colour colour) override {
    RecordingSurface::Fill(rect, colour);
    drawing_.Fill(rect, colour);
  }
  void Outline(const Rect& rect, Colour colour, int pen) override {
    RecordingSurface::Outline(rect, colour, pen);
    drawing_.Outline(rect, colour, pen);
  }
  void Text(const Rect& rect, std::string_view text, const Font& font, Colour colour,
            TextFlags flags) override {
    RecordingSurface::Text(rect, text, font, colour, flags);
    drawing_.Text(rect, text, font, colour, flags);
  }
  Extent Measure(std::string_view text, const Font& font) override {
    return drawing_.Measure(text, font);
  }
  Extent MeasureLines(std::string_view text, const Font& font, Twips width,
                      TextFlags flags) override {
    return drawing_.MeasureLines(text, font, width, flags);
  }

 private:
  Surface& drawing_;
};

class PrintedAlike : public FolderCase {};

TEST_F(PrintedAlike, EveryPageOfPreviewPdfFileAndPrinterGetsTheSameCalls) {
  const YearGrid grid = SampleGrid({SampleEvent("a", At(2006, 1, 3), At(2006, 2, 9), "Holiday"),
                                    SampleEvent("b", At(2006, 7, 3), At(2006, 7, 4))});
  PdfPrinter printer(Path("year.pdf"));
  PrintDocument document(grid, {});
  PrintOptionSet options;
  options.VisibleText = true;
  options.MinBandHeight = 450;
  for (const std::int16_t format : {print_formats::Multiline, print_formats::SingleLine}) {
    options.PrintFormat = format;
    document.LayOut(options, printer.PageSize(), printer.MeasuringSurface());
    ASSERT_GT(document.PageCount(), 1);
    const auto job = printer.Begin(document.Name());
    for (int page = 1; page <= document.PageCount(); ++page) {
      if (page > 1) job->NewPage();
      LoggedSurface printed(job->Page());
      document.DrawPage(printed, page);
      const auto picture = printer.PagePicture();
      LoggedSurface shown(picture->Drawing());
      document.DrawPage(shown, page);
      EXPECT_FALSE(printed.Log().empty());
      EXPECT_EQ(printed.Log(), shown.Log()) << "page " << page;
      KeptPage kept;
      document.DrawPage(kept, page);
      LoggedSurface queued(picture->Drawing());
      kept.DrawOn(queued);
      EXPECT_EQ(queued.Log(), shown.Log()) << "page " << page;
    }
    job->EndDocument();
  }
}

}  // namespace
}  // namespace velkor
