// exchange/dlgSaveType.h: the form that asks what to export, and of which years.
#pragma once

#include <optional>

#include "platform/Forms.h"
#include "platform/InputElements.h"
#include "values/Date.h"

namespace velkor {

/// OK can be pressed while the dates are dates, or while only categories are asked for. A date is
/// day/month/year, the first two of one or two digits, the year 100 to 9999.
class dlgSaveType : public Form {
 public:
  dlgSaveType();

  /// The year on show in the planner, set before Load.
  int SelectedYear = 0;
  /// Suggests the whole of the year on show.
  void Load();

  // What OK sets; until then nothing was chosen.
  bool OKPressed = false;
  bool CategoriesOnly = false;
  /// None only with CategoriesOnly, where the text is no date.
  std::optional<Date> DateFrom;
  std::optional<Date> DateTo;

  Label Label1{"Label1"};
  OptionButton rbCatsOnly{"rbCatsOnly"};
  OptionButton rbCatsAndAppts{"rbCatsAndAppts"};
  Label Label2{"Label2"};
  MaskedBox tbFrom{"tbFrom", "99/99/9999"};
  Label Label3{"Label3"};
  MaskedBox tbTo{"tbTo", "99/99/9999"};
  Label Label4{"Label4"};
  CommandButton OKButton{"OKButton"};
  CommandButton CancelButton{"CancelButton"};

 private:
  void Validate();
  void OKButton_Click();
  void CancelButton_Click();
};

}  // namespace velkor
