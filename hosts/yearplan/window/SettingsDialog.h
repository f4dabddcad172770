// hosts/yearplan/window/SettingsDialog.h: the dialog that shows and changes a planner's properties.
#pragma once

#include <optional>

#include "model/PlannerProperties.h"

class QWidget;

namespace velkor {

/// Shows the properties until the dialog is closed. Texts lose the blanks around them; an empty
/// title is refused.
/// @return what the user set; none after Cancel
std::optional<PlannerProperties> AskForSettings(QWidget* parent, const PlannerProperties& shown);

}  // namespace velkor
