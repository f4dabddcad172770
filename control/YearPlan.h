// control/YearPlan.h: the control: a year of one calendar that starts, refreshes and draws itself.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "control/PropertyTable.h"
#include "control/YearPlanElements.h"
#include "platform/LocaleApi.h"
#include "platform/Platform.h"
#include "values/DayOff.h"
#include "values/Twips.h"
#include "view/EventColour.h"

namespace velkor {

class AccessibleTree;
class ControlHost;
class YearGrid;
enum class RenameReach;

/// One planner. Everything runs on the thread that made it. Failures are told in message boxes and
/// end the operation; nothing is thrown, but what a refresh reports as the calendar program's error
/// (see WriteComplete). Its calls and its elements' handlers may show a message, a form or the
/// inspector, or let messages be processed: it must not be destroyed before they return.
class YearPlan {
 public:
  /// `platform` refers to what outlives the control; so does the host.
  YearPlan(const Platform& platform, ControlHost& host);
  /// Lets go of the calendar and the cache utility.
  ~YearPlan();
  YearPlan(const YearPlan&) = delete;
  YearPlan& operator=(const YearPlan&) = delete;

  const PlannerProperties& Properties() const;
  /// Writes one, as in Set(&PlannerProperties::AllEvents, true), and tells the host. Throws Error
  /// for a value that the property does not take: TypeMismatch for one of another type,
  /// InvalidProcedureCall for a month that is none and a text that is too long.
  void Set(Property::Member member, const PropertyValue& value);
  /// Writes those that differ.
  void Set(const PlannerProperties& wanted);

  /// Reads the persisted properties, then lets tmrStart begin the start-up sequence. A month that
  /// is none counts as the first. Throws what the bag throws, and Error for a text that is too
  /// long; all properties stay as they are then.
  void ReadProperties(PropertyBag& bag);
  void WriteProperties(PropertyBag& bag) const;

  /// Deletes a category, or has the user pick another colour for it; of an empty name the one that
  /// is selected in the legend. Nothing happens for a name that is unknown.
  void CatDelete(std::string_view name);
  void CatColour(std::string_view name);
  /// Gives the category that is selected in the legend another name, without asking how far it
  /// reaches.
  void CatRename(std::string_view newName, RenameReach reach);
  /// Names of all categories of all titles in the calendar; a name used by several titles appears
  /// once for each.
  std::vector<std::string> GetStringList();

  /// How it looks from now on.
  void SetLook(const ControlLook& look);
  /// Writes dates and the names of months and days as this locale does; 0: as the user's.
  void SetLocale(LocaleId locale);
  /// Bands are no lower from now on than those in which `measuring`, a surface as the control is
  /// drawn on, has day numbers and subjects at their full size. Counts from the next drawing.
  void KeepBandsReadable(Surface& measuring);
  /// Lays the elements out in the control's area and draws.
  void Resize(Extent size, PixelSize pixel);
  /// Shades days off behind the bars, wherever the year is drawn or printed, and names them in the
  /// tool tip and for screen readers. They may be of any year, and replace those before.
  void ShowDaysOff(std::vector<DayOff> days);
  /// Draws bars in colours of their own; null: in those of their categories. To be called again
  /// when the function's answers change.
  void ColourBars(EventColour colour);
  /// From the next Resize on the control is laid out as a picture of itself (see DrawControl): the
  /// year above the grid and the legend, and nothing to press or to scroll with.
  void LayOutAsPicture();
  /// The least height at which the whole grid is seen without scrolling.
  Twips LeastHeight() const;

  /// Whether it has started up and found a calendar, whose year it shows.
  bool IsLive() const;
  int DisplayedYear() const;
  /// Shows the year that lies `by` years after the displayed one, 0 for the same one anew.
  void ChangeYear(int by);
  /// Has the next tick of tmrBackground refresh, as after a sleep of the machine.
  void RefreshSoon();
  /// The year in words, for a screen reader.
  std::string Description() const;
  /// The year, element by element, for a screen reader.
  AccessibleTree& Accessible();

  YearPlanElements& Elements();
  const YearGrid& Grid() const;

 private:
  class Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace velkor
