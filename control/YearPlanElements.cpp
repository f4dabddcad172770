// control/YearPlanElements.cpp: the toolbar's buttons and the order of the menu.
#include "control/YearPlanElements.h"

#include <string>

namespace velkor {
namespace {

ToolbarButton ButtonOf(std::string_view key, int image, std::string_view toolTip) {
  return {std::string(key), std::string(toolTip), false, false, image};
}

}  // namespace

YearPlanElements::YearPlanElements()
    : Toolbar1("Toolbar1",
               {ButtonOf(toolbar_keys::Back, toolbar_images::Back, "Previous year"),
                ButtonOf(toolbar_keys::Next, toolbar_images::Next, "Next year"),
                ButtonOf(toolbar_keys::Filter, toolbar_images::Filter, "Click to define a filter"),
                ButtonOf(toolbar_keys::Print, toolbar_images::Print, "Print preview"),
                ButtonOf(toolbar_keys::Open, toolbar_images::Open, "Import categories"),
                ButtonOf(toolbar_keys::Save, toolbar_images::Save, "Export to XML")}) {
  Command1.SetCaption("Force refresh of current year");
  mnuSelectionMode.entries = {&mnuSelectionAutomatic, &mnuSelectionAlways, &mnuSelectionNever};
  mnuPop.entries = {&mnuNew,           &mnuEdit,       &mnuDelete, &mnuSeparator1, &mnuClear,
                    &mnuSelectionMode, &mnuSeparator2, &mnuHelp,   &mnuAbout};
}

}  // namespace velkor
