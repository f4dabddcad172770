// control/YearPlanParts.h: what the control is made of, and how its parts reach one another.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "categories/CategoryCommands.h"
#include "categories/ColourStore.h"
#include "categories/Legend.h"
#include "control/AccessibleYear.h"
#include "control/ControlLayout.h"
#include "control/GridView.h"
#include "control/YearPlan.h"
#include "control/YearPlanElements.h"
#include "model/AppointmentCommands.h"
#include "model/BackgroundRefresh.h"
#include "model/CacheFile.h"
#include "model/CalendarAccess.h"
#include "model/CategoryView.h"
#include "model/EventView.h"
#include "model/YearSource.h"
#include "platform/Platform.h"
#include "view/YearGrid.h"

namespace velkor {

class YearPlan::Parts : public CategoryView, public YearSource {
 public:
  Parts(const Platform& platform, ControlHost& host);
  ~Parts() override;
  Parts(const Parts&) = delete;
  Parts& operator=(const Parts&) = delete;

  YearPlanElements elements;

  void SetProperty(const Property& property, const PropertyValue& value);
  void ReadProperties(PropertyBag& bag);
  const YearGrid& Grid() const { return grid_; }

  /// Runs after the properties were read, and again while it finds no calendar.
  /// @param tells  what keeps it from a calendar
  void StartUp(bool tells);
  void ChangeYear(int by);
  void SetLook(const ControlLook& look);
  void SetLocale(LocaleId locale);
  void KeepBandsReadable(Surface& measuring);
  void Resize(Extent size, PixelSize pixel);
  void ShowDaysOff(std::vector<DayOff> days);
  void ColourBars(EventColour colour);
  void LayOutAsPicture() { strip_ = StripKind::Caption; }
  Twips LeastHeight() const;
  bool IsLive() const { return live_; }
  void RefreshSoon() { refresh_.RefreshSoon(); }
  std::vector<std::string> CategoryNames();
  void CatDelete(std::string_view name);
  void CatColour(std::string_view name);
  void CatRename(std::string_view newName, RenameReach reach);
  std::string Description() const;
  AccessibleTree& Accessible() { return accessible_; }

  // CategoryView
  const CategoryTable& Categories() const override { return grid_.Categories(); }
  const std::string& TitleOfCategories() const override { return Properties().TitleName; }
  bool HideNonCategoryItems() const override { return Properties().HideNonCategoryItems; }
  bool AreCategoriesKnown() override;
  void ChangeCategories(std::vector<Category> categories) override;
  bool IsCarried(std::string_view category) const override;
  void RenameOnShow(std::string_view from, std::string_view to) override;

  // YearSource
  int DisplayedYear() const override { return grid_.Span().ViewYear; }
  const CategoryFilter& Filter() const override { return grid_.Filter(); }
  std::optional<EventCollection> EventsOf(int viewYear,
                                          const std::function<bool()>& goesOn) override;
  std::unique_ptr<OutlookItem> ItemOf(std::string_view eventId) override {
    return access_.Item(eventId);
  }
  void BeginReadingYears() override;
  void EndReadingYears() override;

 private:
  const PlannerProperties& Properties() const { return grid_.Properties(); }
  void Connect();
  /// Fonts, names and dates by the look and the locale.
  void Dress();
  /// Whether there is a calendar to work on.
  void SetLive(bool live);
  void tmrStart_Timer();
  void tmrBackground_Timer();
  void tmrItems_Timer();
  void tmrCalendar_Timer();
  /// Has the button and tmrCalendar start up again.
  void OfferStart(int start);
  void Command1_Click();
  void Toolbar1_ButtonClick(std::string_view key);
  void Filter_Click();
  void Print_Click();
  void mnuNew_Click();
  void mnuAbout_Click();
  void mnuSelection_Click(int index);

  void ShowSpan(const DisplaySpan& span);
  CachePaths CachePathsOf(int viewYear);
  /// What a refresh of a span works on.
  RefreshInputs InputsOf(const DisplaySpan& span, const CachePaths& paths);
  /// @return whether others are on show now
  bool LoadCategories();
  /// @return false when they could not be read, which the user was told
  bool ReloadCategories();
  void LoadEvents();
  void ReloadEvents();
  /// A refresh has written the cache file.
  void TakeRefresh();
  void ChangeEvents(const std::function<void(EventCollection&)>& alter);
  /// Writes the cache file from the events; a failure starts a forced refresh.
  void RewriteCache();
  /// One of the colours of model/Status.h.
  void ReportStatus(Colour colour);
  /// The light is the refresh's for as long as one is outstanding.
  void ReportLoad(Colour colour);
  void ApplyFilter(CategoryFilter filter);
  /// Lays out by the properties as they are now, and draws.
  void Redraw(bool spanChanged);
  void PlaceElements();

  Platform platform_;
  ControlHost& host_;
  YearGrid grid_;
  CacheFile cacheFile_;
  const EventView view_;
  BackgroundRefresh refresh_;
  CalendarAccess access_;
  ColourStore colours_;
  AppointmentCommands commands_;
  CategoryCommands categoryCommands_;
  GridView gridView_;
  Legend legend_;
  /// That it is written in; 0 for the user's.
  LocaleId locale_ = 0;
  CalendarNames names_;
  AccessibleYear accessible_;
  CachePaths paths_;
  Font font_;
  Extent size_;
  PixelSize pixel_;
  StripKind strip_ = StripKind::Commands;
  bool live_ = false;
  /// Counts the start-ups, so that one whose message is open sees that it was overtaken.
  int starts_ = 0;
  /// Ticks of tmrCalendar until the next start-up; none while that is not offered.
  std::optional<int> ticksToStart_;
  /// The title whose categories are on show as the calendar has them; none when they could not be
  /// read.
  std::optional<std::string> knownTitle_;
  /// A property was written by which the year is laid out.
  bool needsLayout_ = false;
  /// A load is about to begin, which the host is told.
  bool loadBegins_ = false;
  /// The day that was marked as today.
  std::int64_t drawnDay_ = 0;
};

}  // namespace velkor
