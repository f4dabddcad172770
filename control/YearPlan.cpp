// control/YearPlan.cpp: the properties and methods of the control.
#include "control/YearPlan.h"

#include <cstdint>

#include "control/YearPlanParts.h"
#include "platform/Host.h"
#include "values/Error.h"

namespace velkor {
namespace {

/// Keys of the persisted properties.
namespace property_keys {
constexpr std::string_view Folder = "Folder";
constexpr std::string_view AllEvents = "AllEvents";
constexpr std::string_view DisplaySubject = "DisplaySubject";
constexpr std::string_view TitleName = "TitleName";
constexpr std::string_view HideNonCategoryItems = "HideNonCategoryItems";
constexpr std::string_view AppointmentForm = "AppointmentForm";
constexpr std::string_view FirstMonth = "StartMonth";
}  // namespace property_keys

/// Defaults of the persisted properties that are no empty text and not False.
constexpr const char* DefaultTitleName = "Default";
constexpr const char* DefaultAppointmentForm = "IPM.Appointment";
constexpr std::int16_t DefaultFirstMonth = 1;

template <typename Value>
void Read(PropertyBag& bag, std::string_view key, Value& value, const Value& fallback) {
  value = std::get<Value>(bag.ReadProperty(key, fallback));
}

bool IsMonth(int month) {
  return month >= 1 && month <= 12;
}

void CheckMonth(int month) {
  if (IsMonth(month)) return;
  throw Error(errors::InvalidProcedureCall,
              "StartMonth is " + std::to_string(month) + "; months are 1 to 12.", "YearPlan");
}

}  // namespace

YearPlan::YearPlan(const Platform& platform, ControlHost& host)
    : parts_(std::make_unique<Parts>(platform, host)) {}

YearPlan::~YearPlan() = default;

const std::string& YearPlan::Folder() const {
  return parts_->Folder;
}

void YearPlan::SetFolder(std::string_view value) {
  parts_->Folder = value;
  parts_->Host().PropertyChanged(property_keys::Folder);
}

bool YearPlan::AllEvents() const {
  return parts_->options.AllEvents;
}

void YearPlan::SetAllEvents(bool value) {
  parts_->options.AllEvents = value;
  parts_->Host().PropertyChanged(property_keys::AllEvents);
}

bool YearPlan::HideNonCategoryItems() const {
  return parts_->options.HideNonCategoryItems;
}

void YearPlan::SetHideNonCategoryItems(bool value) {
  parts_->options.HideNonCategoryItems = value;
  parts_->Host().PropertyChanged(property_keys::HideNonCategoryItems);
}

bool YearPlan::DisplaySubject() const {
  return parts_->options.DisplaySubject;
}

void YearPlan::SetDisplaySubject(bool value) {
  parts_->options.DisplaySubject = value;
  parts_->Host().PropertyChanged(property_keys::DisplaySubject);
}

const std::string& YearPlan::TitleName() const {
  return parts_->TitleName;
}

void YearPlan::SetTitleName(std::string_view value) {
  parts_->TitleName = value;
  parts_->Host().PropertyChanged(property_keys::TitleName);
}

const std::string& YearPlan::AppointmentForm() const {
  return parts_->AppointmentForm;
}

void YearPlan::SetAppointmentForm(std::string_view value) {
  parts_->AppointmentForm = value;
  parts_->Host().PropertyChanged(property_keys::AppointmentForm);
}

int YearPlan::FirstMonth() const {
  return parts_->FirstMonth;
}

void YearPlan::SetFirstMonth(int value) {
  CheckMonth(value);
  parts_->FirstMonth = static_cast<std::int16_t>(value);
  parts_->Host().PropertyChanged(property_keys::FirstMonth);
}

void YearPlan::ReadProperties(PropertyBag& bag) {
  Parts& parts = *parts_;
  Read<std::string>(bag, property_keys::Folder, parts.Folder, {});
  Read(bag, property_keys::AllEvents, parts.options.AllEvents, false);
  Read(bag, property_keys::DisplaySubject, parts.options.DisplaySubject, false);
  Read<std::string>(bag, property_keys::TitleName, parts.TitleName, DefaultTitleName);
  Read(bag, property_keys::HideNonCategoryItems, parts.options.HideNonCategoryItems, false);
  Read<std::string>(bag, property_keys::AppointmentForm, parts.AppointmentForm,
                    DefaultAppointmentForm);
  std::int16_t month = DefaultFirstMonth;
  Read(bag, property_keys::FirstMonth, month, DefaultFirstMonth);
  // A bag holds what other programs wrote.
  parts.FirstMonth = IsMonth(month) ? month : DefaultFirstMonth;
  parts.elements.tmrStart.SetEnabled(true);
}

void YearPlan::WriteProperties(PropertyBag& bag) const {
  const Parts& parts = *parts_;
  bag.WriteProperty(property_keys::Folder, parts.Folder, std::string());
  bag.WriteProperty(property_keys::AllEvents, parts.options.AllEvents, false);
  bag.WriteProperty(property_keys::DisplaySubject, parts.options.DisplaySubject, false);
  bag.WriteProperty(property_keys::TitleName, parts.TitleName, std::string(DefaultTitleName));
  bag.WriteProperty(property_keys::HideNonCategoryItems, parts.options.HideNonCategoryItems, false);
  bag.WriteProperty(property_keys::AppointmentForm, parts.AppointmentForm,
                    std::string(DefaultAppointmentForm));
  bag.WriteProperty(property_keys::FirstMonth, parts.FirstMonth, DefaultFirstMonth);
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

void YearPlan::KeepBandsReadable(Surface& measuring) {
  parts_->KeepBandsReadable(measuring);
}

void YearPlan::Resize(Extent size, PixelSize pixel) {
  parts_->Resize(size, pixel);
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

YearPlanElements& YearPlan::Elements() {
  return parts_->elements;
}

const YearGrid& YearPlan::Grid() const {
  return parts_->Grid();
}

}  // namespace velkor
