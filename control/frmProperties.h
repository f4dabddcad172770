// control/frmProperties.h: the control's properties as fields that people fill in.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "control/PropertyTable.h"
#include "platform/Forms.h"
#include "platform/InputElements.h"
#include "span/Locale.h"

namespace velkor {

/// A row for each property, of one planner or of several at once. It has no buttons: whoever shows
/// it takes the changes when they are due.
class frmProperties : public Form {
 public:
  explicit frmProperties(const CalendarNames& names);
  ~frmProperties() override;

  /// A value that not all of them have is left open: an empty text, no month, an unticked box.
  void Show(const std::vector<PlannerProperties>& planners);
  /// The user changed a field.
  std::function<void()> onChange;

  struct Change {
    const Property* property;
    PropertyValue value;
  };
  /// What the user has set since Show. A text that was open and left empty is not set.
  std::vector<Change> Changes() const;

 private:
  class Field;
  std::vector<std::unique_ptr<Field>> fields_;
};

}  // namespace velkor
