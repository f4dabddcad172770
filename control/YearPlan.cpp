// control/YearPlan.cpp: the properties and methods of the control.
#include "control/YearPlan.h"

#include <utility>

#include "control/YearPlanParts.h"

namespace velkor {

YearPlan::YearPlan(const Platform& platform, ControlHost& host)
    : parts_(std::make_unique<Parts>(platform, host)) {}

YearPlan::~YearPlan() = default;

const PlannerProperties& YearPlan::Properties() const {
  return parts_->Grid().Properties();
}

void YearPlan::Set(Property::Member member, const PropertyValue& value) {
  parts_->SetProperty(PropertyOf(member), value);
}

void YearPlan::Set(const PlannerProperties& wanted) {
  for (const Property& property : PropertyTable) {
    const PropertyValue value = property.ValueIn(wanted);
    if (value != property.ValueIn(Properties())) parts_->SetProperty(property, value);
  }
}

void YearPlan::ReadProperties(PropertyBag& bag) {
  parts_->ReadProperties(bag);
}

void YearPlan::WriteProperties(PropertyBag& bag) const {
  for (const Property& property : PropertyTable) {
    bag.WriteProperty(property.key, property.ValueIn(Properties()), property.Default());
  }
}

void YearPlan::CatDelete(std::string_view name) {
  parts_->CatDelete(name);
}

void YearPlan::CatColour(std::string_view name) {
  parts_->CatColour(name);
}

void YearPlan::CatRename(std::string_view newName, RenameReach reach) {
  parts_->CatRename(newName, reach);
}

std::vector<std::string> YearPlan::GetStringList() {
  return parts_->CategoryNames();
}

void YearPlan::SetLook(const ControlLook& look) {
  parts_->SetLook(look);
}

void YearPlan::SetLocale(LocaleId locale) {
  parts_->SetLocale(locale);
}

void YearPlan::KeepBandsReadable(Surface& measuring) {
  parts_->KeepBandsReadable(measuring);
}

void YearPlan::Resize(Extent size, PixelSize pixel) {
  parts_->Resize(size, pixel);
}

void YearPlan::ShowDaysOff(std::vector<DayOff> days) {
  parts_->ShowDaysOff(std::move(days));
}

void YearPlan::ColourBars(EventColour colour) {
  parts_->ColourBars(std::move(colour));
}

void YearPlan::LayOutAsPicture() {
  parts_->LayOutAsPicture();
}

Twips YearPlan::LeastHeight() const {
  return parts_->LeastHeight();
}

bool YearPlan::IsLive() const {
  return parts_->IsLive();
}

int YearPlan::DisplayedYear() const {
  return parts_->Grid().Span().ViewYear;
}

void YearPlan::ChangeYear(int by) {
  parts_->ChangeYear(by);
}

void YearPlan::RefreshSoon() {
  parts_->RefreshSoon();
}

std::string YearPlan::Description() const {
  return parts_->Description();
}

AccessibleTree& YearPlan::Accessible() {
  return parts_->Accessible();
}

YearPlanElements& YearPlan::Elements() {
  return parts_->elements;
}

const YearGrid& YearPlan::Grid() const {
  return parts_->Grid();
}

}  // namespace velkor
