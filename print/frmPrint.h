// print/frmPrint.h: the print preview: the printed year page by page, its printer and its options.
#pragma once

#include <array>
#include <memory>

#include "platform/Forms.h"
#include "platform/OffscreenPicture.h"
#include "print/PagePlan.h"
#include "print/PrintDocument.h"
#include "print/PrintOptions.h"
#include "support/cScrollBars.h"

namespace velkor {

struct Platform;

/// Keys of the buttons of tbPreview.
namespace preview_keys {
inline constexpr std::string_view Print = "Print";
inline constexpr std::string_view PrintSetup = "PrintSetup";
inline constexpr std::string_view PageSetup = "PageSetup";
inline constexpr std::string_view Zoom = "Zoom";
inline constexpr std::string_view Back = "Back";
inline constexpr std::string_view Next = "Next";
}  // namespace preview_keys

/// Pages are laid out for the current printer, from the year as it is then, when the window opens
/// or gets another size, which stays on the page on show, and when printer or options have changed.
/// A layout that fails is told; OK leads to the options, Cancel closes the preview. What the
/// printer or the settings store fail at is told and leaves the preview as it was.
class frmPrint : public Form {
 public:
  /// The grid, and what the platform refers to, outlive this.
  frmPrint(const YearGrid& grid, CalendarNames names, PrintedPlanner planner,
           const Platform& platform);

  /// Loads the options and sets the printer as it was set last; before the form is shown.
  /// @return false where there is no printer to lay pages out for, which was told
  bool Load();

  PrintOptions& Options() { return options_; }
  /// The pages as they are laid out now.
  const PrintDocument& Document() const { return document_; }
  /// Lays the pages out again and shows the first one.
  void OptionsChanged();

  void Form_Resize(Extent size, PixelSize pixel) override;

  Toolbar tbPreview;
  /// What is seen of the page, and the room around it.
  PictureBox picParent{"picParent"};
  /// The page on show, moved by the scroll bars of picParent.
  PictureBox pic1{"pic1"};
  /// "Page 1 of 3  Landscape A4, 210 x 297 mm"
  Label txtStatus{"txtStatus"};
  /// The page in its own size, from which pic1 is drawn; null while there is none to show.
  std::unique_ptr<OffscreenPicture> picTemp;

 private:
  void Connect();
  void tbPreview_ButtonClick(std::string_view key);
  void pic1_Paint(Surface& surface, const Rect& visible);
  bool pic1_KeyDown(Key key);
  void m_cScroll_Scroll() { PlacePage(); }
  void m_cScroll_MouseWheel(ScrollBarSide side, double notches);
  void Print_Click();
  void PrintSetup_Click();
  void PageSetup_Click();
  void Zoom_Click();

  /// Bounds of everything, and the scroll bars, by the zoom.
  void Arrange();
  void SetScrollRanges();
  void PlacePage();
  /// @return false where the page is shown whole
  bool ScrollBy(ScrollBarSide side, double way);
  /// @param page  is shown where there are so many
  void LayOut(int page = 1);
  void TellFailure(const PageFailure& failure);
  void Turn(void (PageTurner::*way)());
  /// @param picture  a white one of the page
  void ShowPage(const PageTurner& turner, std::unique_ptr<OffscreenPicture> picture);
  /// The page in pic1's coordinates.
  Rect PageRect() const;

  PrintOptions options_;
  PrintDocument document_;
  const Platform& platform_;
  cScrollBars m_cScroll;
  PageTurner turner_;
  /// The printer, and its page, for which the pages were laid out.
  PrinterSettings printer_;
  Extent page_;
  bool zoom_ = false;
  bool shown_ = false;
  Extent size_;
  /// What is seen between the scroll bars.
  Extent viewport_;
  PixelSize pixel_;
  /// Of turns of the wheel that came to no whole step yet.
  std::array<double, 2> wheelRest_{};
  /// A failed layout is being told.
  bool telling_ = false;
  bool optionsOpen_ = false;
  /// The options are wanted once more when they have closed.
  bool optionsAgain_ = false;
};

}  // namespace velkor
