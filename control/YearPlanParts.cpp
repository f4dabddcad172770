// control/YearPlanParts.cpp: start-up, navigation, and what the parts of the control ask of it.
#include "control/YearPlanParts.h"

#include <algorithm>
#include <utility>

#include "categories/ColourList.h"
#include "categories/StoredFilter.h"
#include "model/Guard.h"
#include "model/Status.h"
#include "platform/Host.h"
#include "platform/LocaleApi.h"
#include "platform/Outlook.h"
#include "platform/System.h"
#include "span/Locale.h"
#include "support/RegIO.h"
#include "values/Error.h"
#include "values/FlagScope.h"
#include "view/GridPainter.h"
#include "view/YearTexts.h"

namespace velkor {
namespace {

/// Of tmrCalendar.
constexpr int TicksOfAMinute = 12;

CategoryFilter FilterOf(const Platform& platform) {
  return CategoryFilter(
      CategorySeparator(RegIO::ListSeparator(platform.registry, platform.messages)));
}

/// The year whose span contains today.
DisplaySpan SpanOfToday(const Platform& platform, int firstMonth) {
  return {DisplaySpan{0, firstMonth}.ViewYearOf(platform.clock.Now()), firstMonth};
}

}  // namespace

YearPlan::Parts::Parts(const Platform& platform, ControlHost& host)
    : platform_(platform),
      host_(host),
      grid_(SpanOfToday(platform, 1), CategoryTable(), FilterOf(platform), PlannerProperties()),
      cacheFile_(platform_.files, platform_.locale),
      view_{grid_.Events(),
            grid_.Filter(),
            [this] { return grid_.Fields(); },
            [this](const auto& alter) { ChangeEvents(alter); },
            [this] { ReloadEvents(); },
            [this] { RewriteCache(); },
            [this] { return ReloadCategories(); }},
      refresh_(
          platform_, elements.tmrBackground, [this] { return InputsOf(grid_.Span(), paths_); },
          [this](Colour colour) { ReportStatus(colour); }, [this] { TakeRefresh(); }),
      access_(view_, refresh_, platform_, elements.tmrItems, Properties().AppointmentForm),
      colours_([this] { return access_.ReopenFolder(); }, platform_.locale, platform_.messages),
      commands_(view_, refresh_, access_, platform_, Properties().AppointmentForm),
      categoryCommands_(*this, colours_, platform_),
      gridView_(elements, grid_, platform_,
                {[this](std::string_view key) { commands_.Edit(key); },
                 [this](std::string_view key) { commands_.Delete(key); },
                 [this](int by) { ChangeYear(by); },
                 [this](AccessibleChange change) { accessible_.GridChanged(change); }}),
      legend_(elements.legend, *this, categoryCommands_),
      accessible_({elements, grid_, gridView_, legend_, categoryCommands_, names_,
                   gridView_.Dates(), platform_.clock}) {
  Dress();
  SetLive(false);
  Connect();
}

YearPlan::Parts::~Parts() {
  refresh_.Release();
  access_.Release();
}

void YearPlan::Parts::Dress() {
  const LocaleId locale = locale_ != 0 ? locale_ : platform_.locale.ThreadLocale();
  font_ = {};
  Locale::ApplyCodePageFont(font_, Locale::AnsiCodePageOf(platform_.locale, locale));
  if (elements.look.font) font_.face = elements.look.font->face;
  names_ = Locale::LoadCalendarNames(platform_.locale, locale);
  gridView_.SetNames(
      names_, locale_ != 0 ? ShownDates(platform_.locale, locale_) : platform_.locale, font_);
  elements.font = font_;
  legend_.SetFont(font_);
  for (PictureBox* picture : {&elements.picHeadCol, &elements.picHeadRow, &elements.pic1}) {
    picture->Refresh();
  }
}

void YearPlan::Parts::SetLook(const ControlLook& look) {
  if (elements.look == look) return;
  elements.look = look;
  Dress();
  Redraw(false);
}

void YearPlan::Parts::SetLocale(LocaleId locale) {
  if (locale == locale_) return;
  locale_ = locale;
  Dress();
  Redraw(false);
}

void YearPlan::Parts::Connect() {
  elements.tmrStart.onTimer = [this] { tmrStart_Timer(); };
  elements.tmrBackground.onTimer = [this] { tmrBackground_Timer(); };
  elements.tmrItems.onTimer = [this] { tmrItems_Timer(); };
  elements.tmrCalendar.onTimer = [this] { tmrCalendar_Timer(); };
  elements.Command1.onClick = [this] { Command1_Click(); };
  elements.Toolbar1.onButtonClick = [this](std::string_view key) { Toolbar1_ButtonClick(key); };
  legend_.onChange = [this](AccessibleChange change) { accessible_.LegendChanged(change); };
  elements.mnuNew.onClick = [this] { mnuNew_Click(); };
  elements.mnuEdit.onClick = [this] { commands_.Edit(gridView_.SelectedKey()); };
  elements.mnuDelete.onClick = [this] { commands_.Delete(gridView_.SelectedKey()); };
  elements.mnuClear.onClick = [this] { gridView_.ClearSelection(); };
  elements.mnuHelp.onClick = [this] { platform_.shell.OpenPage("help.html"); };
  elements.mnuAbout.onClick = [this] { mnuAbout_Click(); };
  for (MenuItem* mode : elements.mnuSelectionMode.entries) {
    mode->onClick = [this, mode] { mnuSelection_Click(mode->Index()); };
  }
  mnuSelection_Click(elements.mnuSelectionAutomatic.Index());
}

void YearPlan::Parts::SetProperty(const Property& property, const PropertyValue& value) {
  property.Set(grid_.Properties(), value);
  needsLayout_ = needsLayout_ || property.need == PropertyNeed::Layout;
  host_.PropertyChanged(property.key);
}

void YearPlan::Parts::ReadProperties(PropertyBag& bag) {
  PlannerProperties read = Properties();
  for (const Property& property : PropertyTable) {
    const PropertyValue stored = bag.ReadProperty(property.key, property.Default());
    // A bag holds what other programs wrote.
    const bool isNoMonth = stored.index() == property.member.index() &&
                           std::holds_alternative<std::int16_t>(stored) &&
                           !property.Accepts(stored);
    property.Set(read, isNoMonth ? property.Default() : stored);
  }
  grid_.Properties() = read;
  needsLayout_ = true;
  elements.tmrStart.SetEnabled(true);
}

void YearPlan::Parts::SetLive(bool live) {
  live_ = live;
  elements.Command1.SetEnabled(live);
  elements.Toolbar1.SetLive(live);
  legend_.SetLive(live);
}

void YearPlan::Parts::tmrStart_Timer() {
  elements.tmrStart.SetEnabled(false);
  StartUp(true);
}

void YearPlan::Parts::tmrBackground_Timer() {
  Guard(platform_.messages, "Error refreshing the year ", [&] {
    // A new day has begun: its mark moves.
    if (live_ && platform_.clock.Now().DayNumber() != drawnDay_) Redraw(false);
    refresh_.OnTimer();
  });
}

void YearPlan::Parts::tmrItems_Timer() {
  Guard(platform_.messages, "Error taking changes of the calendar ",
        [&] { access_.Arrivals().Take(); });
}

void YearPlan::Parts::tmrCalendar_Timer() {
  if (live_) {
    access_.KeepConnected();
  } else if (ticksToStart_ && --*ticksToStart_ == 0) {
    // The button starts the calendar program where it does not run; a timer does not.
    if (platform_.outlook.IsRunning()) {
      StartUp(false);
    } else {
      ticksToStart_ = TicksOfAMinute;
    }
  }
}

void YearPlan::Parts::OfferStart(int start) {
  // Another one may have come in while this one's message was open.
  if (live_ || start != starts_) return;
  ticksToStart_ = TicksOfAMinute;
  elements.tmrCalendar.SetEnabled(true);
  elements.Command1.SetEnabled(true);
}

void YearPlan::Parts::StartUp(bool tells) {
  const int start = ++starts_;
  int step = 1;
  ticksToStart_.reset();
  SetLive(false);
  gridView_.End();
  try {
    // One of another folder, perhaps.
    refresh_.Disconnect();
    ShowSpan(SpanOfToday(platform_, Properties().FirstMonth));
    access_.Open();
    step = 2;
    if (!access_.ResolveFolder(Properties().Folder)) {
      if (tells) Tell(platform_.messages, "Unable to access specified calendar folder.");
      OfferStart(start);
      return;
    }
    step = 4;
    paths_ = CachePathsOf(grid_.Span().ViewYear);
    step = 5;
    LoadCategories();
    step = 6;
    PlaceElements();
    step = 7;
    LoadEvents();
    step = 8;
    SetLive(true);
    elements.tmrCalendar.SetEnabled(true);
    gridView_.Begin();
    Redraw(true);
    step = 9;
    platform_.shell.ProcessMessages();
    step = 10;
    refresh_.CreateCacheUtility();
    step = 11;
    refresh_.StartRefresh(false);
    step = 12;
    ApplyFilter(
        LoadFilter(platform_.settings, Properties().TitleName, grid_.Filter().FilterSeparator()));
  } catch (const Error& error) {
    if (tells || live_) {
      TellError(platform_.messages,
                "Error while initialising the background processing, the cache file will not be "
                "updated from the calender (Step:" +
                    std::to_string(step) + "). \r\rError: ",
                error);
    }
    OfferStart(start);
  }
}

void YearPlan::Parts::ChangeYear(int by) {
  // Further than all years there are, either way.
  constexpr int FarthestMove = 10'000;
  const int move = std::clamp(by, -FarthestMove, FarthestMove);
  const DisplaySpan span{grid_.Span().ViewYear + move, Properties().FirstMonth};
  if (!live_ || !IsValidSpan(span)) return;
  Guard(platform_.messages, "Error changing the year ", [&] {
    // First, since it may fail: a year and its cache file go together.
    CachePaths paths = CachePathsOf(span.ViewYear);
    const bool spanChanged = span != grid_.Span();
    ShowSpan(span);
    paths_ = std::move(paths);
    LoadEvents();
    Redraw(spanChanged);
    refresh_.StartRefresh(true);
  });
}

void YearPlan::Parts::ShowSpan(const DisplaySpan& span) {
  grid_.SetSpan(span);
  elements.lblSelectedYear.SetCaption(YearCaption(span.ViewYear));
}

CachePaths YearPlan::Parts::CachePathsOf(int viewYear) {
  const std::string name =
      CacheFileName(access_.CurrentUserName(), viewYear, access_.FolderPath(), platform_.locale);
  return MakeCachePaths(name, platform_.environment, platform_.files);
}

RefreshInputs YearPlan::Parts::InputsOf(const DisplaySpan& span, const CachePaths& paths) {
  return {span.ViewYear,  span.FirstMonth,   paths.cacheFile,
          paths.workFile, access_.EntryID(), access_.StoreID()};
}

bool YearPlan::Parts::LoadCategories() {
  // The host may set another one while the calendar is asked.
  const std::string title = Properties().TitleName;
  FetchedColours colours = colours_.Fetch(title);
  knownTitle_.reset();
  if (!colours.fault) knownTitle_ = title;
  // Without a single category no event would be seen. These are shown and not saved.
  if (colours.fault && colours.categories.empty()) colours.categories = DefaultCategories();
  if (colours.categories == grid_.Categories().All()) return false;
  categoryCommands_.Select(0);
  grid_.SetCategories(CategoryTable(std::move(colours.categories)));
  legend_.CategoriesChanged();
  return true;
}

void YearPlan::Parts::LoadEvents() {
  // Whoever hears that a load begins may ask for another year: this load is that year's.
  if (loadBegins_) return;
  {
    const FlagScope begins(loadBegins_);
    ReportLoad(status::Starting);
  }
  EventCollection events;
  cacheFile_.Load(paths_.cacheFile, grid_.Fields(), events);
  grid_.SetEvents(std::move(events));
  ReportLoad(status::Idle);
}

void YearPlan::Parts::ReloadEvents() {
  LoadEvents();
  Redraw(false);
}

/// The calendar was just read, so its program runs; whether it still is the one that was connected
/// to shows only when it is asked.
void YearPlan::Parts::TakeRefresh() {
  access_.AskSoon();
  ReloadEvents();
}

void YearPlan::Parts::ChangeEvents(const std::function<void(EventCollection&)>& alter) {
  grid_.ChangeEvents(alter);
  Redraw(false);
}

void YearPlan::Parts::RewriteCache() {
  // A refresh that is asked for meanwhile would work on the same files.
  refresh_.Together([this] {
    const bool interrupts = refresh_.Outstanding();
    if (interrupts) refresh_.CancelRefresh();
    const bool written = cacheFile_.Rewrite(paths_, grid_.Events());
    // The events may be those of before the refresh that was cancelled for this.
    if (!written || (interrupts && !refresh_.Outstanding())) refresh_.StartRefresh(!written);
  });
}

bool YearPlan::Parts::ReloadCategories() {
  if (!live_) return true;
  if (LoadCategories()) Redraw(false);
  return knownTitle_.has_value();
}

void YearPlan::Parts::Redraw(bool spanChanged) {
  if (std::exchange(needsLayout_, false)) grid_.LayOut();
  PlaceElements();
  gridView_.GridChanged(spanChanged);
  elements.pic1.SetDescription(Description());
  accessible_.GridRedrawn();
  drawnDay_ = platform_.clock.Now().DayNumber();
}

void YearPlan::Parts::KeepBandsReadable(Surface& measuring) {
  grid_.SetMinBandHeight(ReadableBandHeight(measuring, font_));
}

void YearPlan::Parts::ShowDaysOff(std::vector<DayOff> days) {
  if (days == grid_.OffDays().All()) return;
  grid_.SetDaysOff(std::move(days));
  gridView_.GridChanged(false);
  // The days have other names.
  accessible_.GridChanged(AccessibleChange::Children);
}

void YearPlan::Parts::ColourBars(EventColour colour) {
  grid_.SetColourOfEvents(std::move(colour));
  elements.pic1.Refresh();
}

Twips YearPlan::Parts::LeastHeight() const {
  return LeastControlHeight(HeightWithoutScrolling(grid_.Layout(), pixel_, grid_.MinBandHeight()),
                            strip_);
}

void YearPlan::Parts::Resize(Extent size, PixelSize pixel) {
  size_ = size;
  pixel_ = pixel;
  Redraw(false);
}

void YearPlan::Parts::PlaceElements() {
  const ControlAreas areas = DivideControl(size_, strip_);
  const bool scrolls = strip_ == StripKind::Commands;
  PlaceStrip(elements, size_, pixel_, strip_);
  grid_.Resize({areas.grid.Width(), areas.grid.Height()}, ScrollBarWidth, pixel_);
  PlaceSurfaces(elements, areas.grid, scrolls && grid_.Geometry().scroll, pixel_);
  legend_.Place(WithFrame(areas.legend, pixel_), pixel_, scrolls);
}

void YearPlan::Parts::ReportStatus(Colour colour) {
  const std::string_view message = status::MessageOf(colour);
  elements.imgLogo.SetFillColour(colour);
  elements.imgLogo.SetToolTip(message);
  host_.StatusChange(message);
}

void YearPlan::Parts::ReportLoad(Colour colour) {
  if (!refresh_.Outstanding()) ReportStatus(colour);
}

std::string YearPlan::Parts::Description() const {
  const DisplaySpan& span = grid_.Span();
  const auto shown = std::count_if(grid_.Events().begin(), grid_.Events().end(),
                                   [](const CalEvent& event) { return event.Band > 0; });
  const auto monthText = [&](int month) {
    return names_.months[static_cast<std::size_t>(month)] + " " +
           std::to_string(span.YearOfMonth(month));
  };
  const std::string why = WhyEmpty(grid_);
  return YearCaption(span.ViewYear) + ", " + monthText(span.FirstMonth) + " to " +
         monthText(span.LastMonthOfView()) + ": " +
         (!why.empty() ? why
                       : std::to_string(shown) + (shown == 1 ? " appointment" : " appointments"));
}

}  // namespace velkor
