// print/frmPrint.cpp: the print preview: the printed year page by page, its printer and its
// options.
#include "print/frmPrint.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "model/Guard.h"
#include "model/WaitPointer.h"
#include "platform/MessageBoxes.h"
#include "platform/Platform.h"
#include "platform/Surface.h"
#include "print/NumberText.h"
#include "print/PageView.h"
#include "print/PrinterSetup.h"
#include "print/frmPrintOptions.h"
#include "values/FlagScope.h"

namespace velkor {
namespace {

constexpr std::string_view SetupFailed = "Error setting up the printer ";

constexpr Extent OpeningArea{16500, 12000};
constexpr Twips ToolbarHeight = 600;
constexpr Twips ToolbarMargin = 45;
constexpr Twips ButtonWidth = 540;
constexpr Twips StatusHeight = 375;
constexpr Twips StatusMargin = 120;

/// How far an arrow key, an arrow of a bar and a third of a wheel's notch scroll.
constexpr int ScrollStep = 300;
constexpr double StepsPerNotch = 3;

constexpr Colour DeskColour = Colour::FromRgb(160, 160, 156);
constexpr Colour PageEdgeColour = Colour::FromRgb(96, 96, 96);

ToolbarButton ButtonOf(std::string_view key, int image, std::string_view toolTip, bool enabled) {
  return {std::string(key), std::string(toolTip), enabled, false, image};
}

}  // namespace

frmPrint::frmPrint(const YearGrid& grid, CalendarNames names, PrintedPlanner planner,
                   const Platform& platform)
    : Form("frmPrint", "Print preview"),
      tbPreview(
          "tbPreview",
          {ButtonOf(preview_keys::Print, toolbar_images::Print, "Print all pages", true),
           ButtonOf(preview_keys::PrintSetup, toolbar_images::PrintSetup, "Printer setup", true),
           ButtonOf(preview_keys::PageSetup, toolbar_images::PageSetup, "Print options", true),
           ButtonOf(preview_keys::Zoom, toolbar_images::Zoom, "Actual size", true),
           ButtonOf(preview_keys::Back, toolbar_images::Back, "Previous page", false),
           ButtonOf(preview_keys::Next, toolbar_images::Next, "Next page", false)}),
      options_(platform.settings, std::move(planner), DecimalSign(platform.locale)),
      document_(grid, std::move(names)),
      platform_(platform),
      m_cScroll(platform.scrollBars) {
  Place({{&tbPreview}, {&picParent}, {&pic1, &picParent}, {&txtStatus}}, OpeningArea);
  Connect();
}

void frmPrint::Connect() {
  tbPreview.onButtonClick = [this](std::string_view key) { tbPreview_ButtonClick(key); };
  pic1.onPaint = [this](Surface& surface, const Rect& visible) { pic1_Paint(surface, visible); };
  pic1.onKeyDown = [this](Key key) { return pic1_KeyDown(key); };
  m_cScroll.onScroll = [this](ScrollBarSide) { m_cScroll_Scroll(); };
  m_cScroll.onChange = [this](ScrollBarSide) { m_cScroll_Scroll(); };
  m_cScroll.onMouseWheel = [this](ScrollBarSide side, double notches) {
    m_cScroll_MouseWheel(side, notches);
  };
}

bool frmPrint::Load() {
  options_.Load(platform_.messages);
  const auto apply = [this] { ApplyStoredSettings(platform_.printer, options_); };
  auto failure = Guard(platform_.messages, SetupFailed, apply);
  if (failure && failure->Number() == errors::DeviceUnavailable &&
      !platform_.printer.Devices().empty()) {
    failure = Guard(platform_.messages, SetupFailed, [&] {
      platform_.printer.SelectDevice(platform_.printer.Devices().front());
      apply();
    });
  }
  return !failure;
}

void frmPrint::OptionsChanged() {
  LayOut();
}

void frmPrint::Form_Resize(Extent size, PixelSize pixel) {
  // The window of picParent is there from the first showing on.
  if (!std::exchange(shown_, true)) m_cScroll.Create(picParent);
  size_ = size;
  pixel_ = pixel;
  Arrange();
  LayOut(turner_.Page());
}

void frmPrint::tbPreview_ButtonClick(std::string_view key) {
  if (key == preview_keys::Print) Print_Click();
  if (key == preview_keys::PrintSetup) PrintSetup_Click();
  if (key == preview_keys::PageSetup) PageSetup_Click();
  if (key == preview_keys::Zoom) Zoom_Click();
  if (key == preview_keys::Back) Turn(&PageTurner::Back);
  if (key == preview_keys::Next) Turn(&PageTurner::Next);
}

void frmPrint::Print_Click() {
  Guard(platform_.messages, "Error printing ", [this] {
    // A layout that failed says once more why there is nothing to print.
    if (document_.PageCount() == 0 || platform_.printer.Current() != printer_) LayOut();
    if (document_.PageCount() == 0 || platform_.printer.Current() != printer_) return;
    const auto job = platform_.printer.Begin(document_.Name());
    if (!job || document_.PageCount() == 0) return;
    const WaitPointer wait(platform_.shell);
    document_.Print(*job);
    if (const std::string file = job->File(); !file.empty()) {
      txtStatus.SetCaption("Printed to " + file);
    }
  });
}

void frmPrint::PrintSetup_Click() {
  bool chosen = false;
  Guard(platform_.messages, SetupFailed,
        [&] { chosen = SetUpPrinter(platform_.printer, printer_); });
  if (!chosen) return;
  Guard(platform_.messages, "Error saving the printer settings ", [this] {
    const PrinterSettings settings = platform_.printer.Current();
    options_.SetPaperSize(settings.paperSize);
    options_.SetOrientation(settings.orientation);
  });
  options_.Load(platform_.messages);
  Arrange();
  LayOut();
}

void frmPrint::PageSetup_Click() {
  // The dialog itself lays out: where that fails, it is wanted once more when it has closed.
  optionsAgain_ = true;
  if (optionsOpen_) return;
  const FlagScope open(optionsOpen_);
  while (std::exchange(optionsAgain_, false) && IsOpen()) {
    frmPrintOptions form(options_, platform_.messages, platform_.shell);
    form.onOptionsChanged = [this] { OptionsChanged(); };
    form.Load();
    platform_.forms.ShowModal(form);
  }
}

void frmPrint::Zoom_Click() {
  zoom_ = !zoom_;
  tbPreview.SetButtonChecked(preview_keys::Zoom, zoom_);
  wheelRest_ = {};
  Arrange();
}

void frmPrint::LayOut(int page) {
  if (telling_) return;
  const auto failure = Guard(platform_.messages, "Error laying out the pages ", [&] {
    Printer& printer = platform_.printer;
    // All that can fail comes first.
    const PrinterSettings settings = printer.Current();
    const Extent paper = printer.PageSize();
    auto picture = printer.PagePicture();
    document_.LayOut(options_.Values(), paper, printer.MeasuringSurface());
    printer_ = settings;
    page_ = paper;
    SetScrollRanges();
    PageTurner turner;
    turner.Begin(document_.PageCount(), page);
    ShowPage(turner, std::move(picture));
  });
  if (!failure && document_.Failure()) TellFailure(*document_.Failure());
}

void frmPrint::TellFailure(const PageFailure& failure) {
  MessageAnswer answer = MessageAnswer::Cancel;
  {
    const FlagScope telling(telling_);
    answer = platform_.messages.Show({.text = failure.message,
                                      .title = "Print",
                                      .buttons = MessageButtons::OkCancel,
                                      .icon = MessageIcon::Information});
  }
  if (!IsOpen()) return;
  if (answer == MessageAnswer::Ok) {
    PageSetup_Click();
  } else {
    Unload();
  }
}

void frmPrint::Turn(void (PageTurner::*way)()) {
  PageTurner turned = turner_;
  (turned.*way)();
  if (turned.Page() == turner_.Page()) return;
  Guard(platform_.messages, "Error drawing the page ",
        [&] { ShowPage(turned, platform_.printer.PagePicture()); });
}

void frmPrint::ShowPage(const PageTurner& turner, std::unique_ptr<OffscreenPicture> picture) {
  turner_ = turner;
  const bool any = turner_.Count() > 0;
  if (any) document_.DrawPage(picture->Drawing(), turner_.Page());
  picTemp = any ? std::move(picture) : nullptr;
  txtStatus.SetCaption(
      any ? PrintStatus(turner_.Page(), turner_.Count(), printer_.orientation, printer_.paperSize)
          : std::string());
  tbPreview.SetButtonEnabled(preview_keys::Back, turner_.BackEnabled());
  tbPreview.SetButtonEnabled(preview_keys::Next, turner_.NextEnabled());
  PlacePage();
}

void frmPrint::Arrange() {
  const auto buttons = static_cast<double>(tbPreview.Buttons().size());
  tbPreview.SetBounds({ToolbarMargin, ToolbarMargin, ToolbarMargin + buttons * ButtonWidth,
                       ToolbarHeight - ToolbarMargin});
  const Twips bottom = std::max(ToolbarHeight, size_.height - StatusHeight);
  txtStatus.SetBounds({StatusMargin, bottom, std::max(StatusMargin, size_.width - StatusMargin),
                       bottom + StatusHeight});
  picParent.SetBounds({0, ToolbarHeight, size_.width, bottom});
  SetScrollRanges();
  PlacePage();
}

void frmPrint::SetScrollRanges() {
  const Extent bars = m_cScroll.Thickness();
  const Rect& parent = picParent.Bounds();
  viewport_ = {std::max(0.0, parent.Width() - (zoom_ ? bars.width : 0)),
               std::max(0.0, parent.Height() - (zoom_ ? bars.height : 0))};
  const Extent range = ScrolledRange(page_);
  const auto set = [&](ScrollBarSide side, Twips all, Twips inSight) {
    m_cScroll.SetMin(side, 0);
    m_cScroll.SetMax(side, WholeTwips(all));
    m_cScroll.SetLargeChange(side, WholeTwips(inSight));
    m_cScroll.SetSmallChange(side, ScrollStep);
    m_cScroll.SetEnabled(side, all > inSight);
    m_cScroll.SetVisible(side, zoom_);
  };
  set(ScrollBarSide::Horizontal, range.width, viewport_.width);
  set(ScrollBarSide::Vertical, range.height, viewport_.height);
}

void frmPrint::PlacePage() {
  Point offset;
  Extent size = viewport_;
  if (zoom_) {
    const Extent range = ScrolledRange(page_);
    offset = {static_cast<Twips>(m_cScroll.Value(ScrollBarSide::Horizontal)),
              static_cast<Twips>(m_cScroll.Value(ScrollBarSide::Vertical))};
    size = {std::max(size.width, range.width), std::max(size.height, range.height)};
  }
  pic1.SetBounds({-offset.x, -offset.y, size.width - offset.x, size.height - offset.y});
  pic1.Refresh();
}

Rect frmPrint::PageRect() const {
  if (!zoom_) return FittedPage(page_, viewport_);
  return {PageViewMargin, PageViewMargin, PageViewMargin + page_.width,
          PageViewMargin + page_.height};
}

void frmPrint::pic1_Paint(Surface& surface, const Rect& visible) {
  surface.Fill(visible, DeskColour);
  const Rect page = PageRect();
  if (!(page.Width() > 0 && page.Height() > 0)) return;
  surface.Outline({page.left - pixel_.width, page.top - pixel_.height, page.right, page.bottom},
                  PageEdgeColour, 1);
  if (picTemp) {
    picTemp->CopyTo(surface, page);
  } else {
    surface.Fill(page, colours::White);
  }
}

bool frmPrint::pic1_KeyDown(Key key) {
  switch (key) {
    case Key::PageUp:
      Turn(&PageTurner::Back);
      return true;
    case Key::PageDown:
      Turn(&PageTurner::Next);
      return true;
    case Key::Left:
      return ScrollBy(ScrollBarSide::Horizontal, -ScrollStep);
    case Key::Right:
      return ScrollBy(ScrollBarSide::Horizontal, ScrollStep);
    case Key::Up:
      return ScrollBy(ScrollBarSide::Vertical, -ScrollStep);
    case Key::Down:
      return ScrollBy(ScrollBarSide::Vertical, ScrollStep);
    default:
      return false;
  }
}

bool frmPrint::ScrollBy(ScrollBarSide side, double way) {
  if (!zoom_) return false;
  constexpr double Far = 1e9;
  m_cScroll.SetValue(side, WholeTwips(std::clamp(m_cScroll.Value(side) + way, -Far, Far)));
  return true;
}

void frmPrint::m_cScroll_MouseWheel(ScrollBarSide side, double notches) {
  // Away from the user is back, tilted to the right is onwards.
  const double steps = side == ScrollBarSide::Horizontal ? notches : -notches;
  double& rest = wheelRest_[static_cast<std::size_t>(side)];
  rest += zoom_ ? steps * StepsPerNotch * ScrollStep : steps;
  const double whole = std::trunc(rest);
  rest -= whole;
  if (whole == 0 || ScrollBy(side, whole)) return;
  Turn(whole < 0 ? &PageTurner::Back : &PageTurner::Next);
}

}  // namespace velkor
