// control/YearPlan.cpp: the properties and methods of the control.
#include "control/YearPlan.h"

#include <cstdint>

#include "control/Frame.h"
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
    : frame_(std::make_unique<Frame>(platform, host)) {}

YearPlan::~YearPlan() = default;

const std::string& YearPlan::Folder() const {
  return frame_->Folder;
}

void YearPlan::SetFolder(std::string_view value) {
  frame_->Folder = value;
  frame_->Host().PropertyChanged(property_keys::Folder);
}

bool YearPlan::AllEvents() const {
  return frame_->options.AllEvents;
}

void YearPlan::SetAllEvents(bool value) {
  frame_->options.AllEvents = value;
  frame_->Host().PropertyChanged(property_keys::AllEvents);
}

bool YearPlan::HideNonCategoryItems() const {
  return frame_->options.HideNonCategoryItems;
}

void YearPlan::SetHideNonCategoryItems(bool value) {
  frame_->options.HideNonCategoryItems = value;
  frame_->Host().PropertyChanged(property_keys::HideNonCategoryItems);
}

bool YearPlan::DisplaySubject() const {
  return frame_->options.DisplaySubject;
}

void YearPlan::SetDisplaySubject(bool value) {
  frame_->options.DisplaySubject = value;
  frame_->Host().PropertyChanged(property_keys::DisplaySubject);
}

const std::string& YearPlan::TitleName() const {
  return frame_->TitleName;
}

void YearPlan::SetTitleName(std::string_view value) {
  frame_->TitleName = value;
  frame_->Host().PropertyChanged(property_keys::TitleName);
}

const std::string& YearPlan::AppointmentForm() const {
  return frame_->AppointmentForm;
}

void YearPlan::SetAppointmentForm(std::string_view value) {
  frame_->AppointmentForm = value;
  frame_->Host().PropertyChanged(property_keys::AppointmentForm);
}

int YearPlan::FirstMonth() const {
  return frame_->FirstMonth;
}

void YearPlan::SetFirstMonth(int value) {
  CheckMonth(value);
  frame_->FirstMonth = static_cast<std::int16_t>(value);
  frame_->Host().PropertyChanged(property_keys::FirstMonth);
}

void YearPlan::ReadProperties(PropertyBag& bag) {
  Frame& frame = *frame_;
  Read<std::string>(bag, property_keys::Folder, frame.Folder, {});
  Read(bag, property_keys::AllEvents, frame.options.AllEvents, false);
  Read(bag, property_keys::DisplaySubject, frame.options.DisplaySubject, false);
  Read<std::string>(bag, property_keys::TitleName, frame.TitleName, DefaultTitleName);
  Read(bag, property_keys::HideNonCategoryItems, frame.options.HideNonCategoryItems, false);
  Read<std::string>(bag, property_keys::AppointmentForm, frame.AppointmentForm,
                    DefaultAppointmentForm);
  std::int16_t month = DefaultFirstMonth;
  Read(bag, property_keys::FirstMonth, month, DefaultFirstMonth);
  // A bag holds what other programs wrote.
  frame.FirstMonth = IsMonth(month) ? month : DefaultFirstMonth;
  frame.elements.tmrStart.SetEnabled(true);
}

void YearPlan::WriteProperties(PropertyBag& bag) const {
  const Frame& frame = *frame_;
  bag.WriteProperty(property_keys::Folder, frame.Folder, std::string());
  bag.WriteProperty(property_keys::AllEvents, frame.options.AllEvents, false);
  bag.WriteProperty(property_keys::DisplaySubject, frame.options.DisplaySubject, false);
  bag.WriteProperty(property_keys::TitleName, frame.TitleName, std::string(DefaultTitleName));
  bag.WriteProperty(property_keys::HideNonCategoryItems, frame.options.HideNonCategoryItems, false);
  bag.WriteProperty(property_keys::AppointmentForm, frame.AppointmentForm,
                    std::string(DefaultAppointmentForm));
  bag.WriteProperty(property_keys::FirstMonth, frame.FirstMonth, DefaultFirstMonth);
}

void YearPlan::CatDelete(std::string_view name) {
  frame_->CatDelete(name);
}

void YearPlan::CatColour(std::string_view name) {
  frame_->CatColour(name);
}

std::vector<std::string> YearPlan::GetStringList() {
  return frame_->CategoryNames();
}

void YearPlan::KeepBandsReadable(Surface& measuring) {
  frame_->KeepBandsReadable(measuring);
}

void YearPlan::Resize(Extent size, PixelSize pixel) {
  frame_->Resize(size, pixel);
}

int YearPlan::DisplayedYear() const {
  return frame_->Grid().Span().ViewYear;
}

void YearPlan::ChangeYear(int by) {
  frame_->ChangeYear(by);
}

void YearPlan::RefreshSoon() {
  frame_->RefreshSoon();
}

std::string YearPlan::Description() const {
  return frame_->Description();
}

YearPlanElements& YearPlan::Elements() {
  return frame_->elements;
}

const YearGrid& YearPlan::Grid() const {
  return frame_->Grid();
}

}  // namespace velkor
