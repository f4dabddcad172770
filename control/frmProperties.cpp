// control/frmProperties.cpp: a field by the type of its property.
#include "control/frmProperties.h"

#include <algorithm>
#include <optional>
#include <string>

namespace velkor {
namespace {

/// Labels and boxes of a form have no keys of their own.
std::string WithoutKey(std::string caption) {
  std::erase(caption, '&');
  return caption;
}

std::string NameOf(const char* prefix, const Property& property) {
  return prefix + std::string(property.key);
}

}  // namespace

/// The elements of one property: those that its type does not need are not placed.
class frmProperties::Field {
 public:
  Field(const Property& property, const CalendarNames& names, const std::function<void()>& changed)
      : property_(property),
        label_(NameOf("lbl", property)),
        text_(NameOf("txt", property)),
        box_(NameOf("chk", property)),
        months_(NameOf("cbo", property)) {
    const std::string caption = WithoutKey(property.caption);
    label_.SetCaption(caption);
    box_.SetCaption(caption);
    months_.SetItems({names.months.begin() + 1, names.months.end()});
    text_.onChange = [this, changed] { Touch(changed); };
    box_.onClick = text_.onChange;
    months_.onClick = text_.onChange;
  }

  FormRow Row() {
    if (IsTruth()) return {{{&box_, 1}}};
    return {{{&label_, 0}, {IsText() ? static_cast<Element*>(&text_) : &months_, 1}}};
  }

  /// @param value  none: it is open
  void Show(const std::optional<PropertyValue>& value) {
    shows_ = true;
    if (IsTruth()) {
      box_.SetChecked(value && std::get<bool>(*value));
    } else if (IsText()) {
      text_.SetText(value ? std::get<std::string>(*value) : std::string());
    } else {
      months_.SetIndex(value ? std::get<std::int16_t>(*value) - 1 : ComboBox::None);
    }
    shows_ = false;
    shown_ = value;
    touched_ = false;
  }

  std::optional<Change> Changed() const {
    if (!touched_) return std::nullopt;
    PropertyValue value;
    if (IsTruth()) {
      value = box_.Checked();
    } else if (IsText()) {
      value = text_.Text();
      if (!shown_ && text_.Text().empty()) return std::nullopt;
    } else {
      if (months_.Index() == ComboBox::None) return std::nullopt;
      value = static_cast<std::int16_t>(months_.Index() + 1);
    }
    if (shown_ == value) return std::nullopt;
    return Change{&property_, std::move(value)};
  }

  const Property& Shown() const { return property_; }

 private:
  bool IsText() const { return std::holds_alternative<std::string>(property_.Default()); }
  bool IsTruth() const { return std::holds_alternative<bool>(property_.Default()); }
  void Touch(const std::function<void()>& changed) {
    if (shows_) return;
    touched_ = true;
    changed();
  }

  const Property& property_;
  Label label_;
  TextBox text_;
  CheckBox box_;
  ComboBox months_;
  std::optional<PropertyValue> shown_;
  bool shows_ = false;
  bool touched_ = false;
};

frmProperties::frmProperties(const CalendarNames& names) : Form("frmProperties", "Year planner") {
  for (const Property& property : PropertyTable) {
    fields_.push_back(std::make_unique<Field>(property, names, [this] {
      if (onChange) onChange();
    }));
    AddRow(fields_.back()->Row());
  }
}

frmProperties::~frmProperties() = default;

void frmProperties::Show(const std::vector<PlannerProperties>& planners) {
  for (const auto& field : fields_) {
    std::optional<PropertyValue> value;
    if (!planners.empty()) value = field->Shown().ValueIn(planners.front());
    const bool same = std::all_of(
        planners.begin(), planners.end(),
        [&](const PlannerProperties& each) { return field->Shown().ValueIn(each) == value; });
    field->Show(same ? value : std::nullopt);
  }
}

std::vector<frmProperties::Change> frmProperties::Changes() const {
  std::vector<Change> changes;
  for (const auto& field : fields_) {
    if (auto change = field->Changed()) changes.push_back(std::move(*change));
  }
  return changes;
}

}  // namespace velkor
