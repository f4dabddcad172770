// exchange/dlgSaveType.cpp: the form that asks what to export, and of which years.
#include "exchange/dlgSaveType.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "values/DateDigits.h"
#include "values/Text.h"

namespace velkor {
namespace {

std::optional<Date> DateOf(std::string_view text) {
  const std::vector<std::string> parts = Split(Trim(text), "/");
  if (parts.size() != 3) return std::nullopt;
  const auto day = DigitsOf(parts[0]);
  const auto month = DigitsOf(parts[1]);
  const auto year = DigitsOf(parts[2]);
  const std::size_t digits = parts[2].size();
  if (parts[0].size() > 2 || parts[1].size() > 2 || digits < 3 || digits > 4) return std::nullopt;
  if (!day || !month || !year) return std::nullopt;
  return ExistingDate({*year, *month, *day});
}

}  // namespace

dlgSaveType::dlgSaveType() : Form("dlgSaveType", "Export") {
  Label1.SetCaption("What to export:");
  rbCatsOnly.SetCaption("Categories only");
  rbCatsAndAppts.SetCaption("Categories and appointments");
  Label2.SetCaption("From:");
  Label3.SetCaption("To:");
  Label4.SetCaption(
      "Dates are day/month/year. Every year between them is exported as it was last refreshed; one "
      "that never was is refreshed first.");
  OKButton.SetCaption("OK");
  CancelButton.SetCaption("Cancel");

  rbCatsOnly.group = rbCatsAndAppts.group = {&rbCatsOnly, &rbCatsAndAppts};
  rbCatsAndAppts.SetChosen();
  for (OptionButton* option : {&rbCatsOnly, &rbCatsAndAppts}) {
    option->onClick = [this] { Validate(); };
  }
  for (MaskedBox* box : {&tbFrom, &tbTo}) box->onChange = [this] { Validate(); };
  OKButton.onClick = [this] { OKButton_Click(); };
  CancelButton.onClick = [this] { CancelButton_Click(); };
  Validate();

  AddRow({{{&Label1, 1}}});
  AddRow({{{&rbCatsOnly, 1}}});
  AddRow({{{&rbCatsAndAppts, 1}}});
  AddRow({{{&Label2, 0}, {&tbFrom, 0}}});
  AddRow({{{&Label3, 0}, {&tbTo, 0}}});
  AddRow({{{&Label4, 1}}});
  AddRow({{{&OKButton, 1}, {&CancelButton, 1}}, FormRowKind::Buttons});
}

void dlgSaveType::Load() {
  const std::string year = std::to_string(SelectedYear);
  tbFrom.SetText("1/1/" + year);
  tbTo.SetText("31/12/" + year);
}

void dlgSaveType::Validate() {
  OKButton.SetEnabled(rbCatsOnly.Chosen() || (DateOf(tbFrom.Text()) && DateOf(tbTo.Text())));
}

void dlgSaveType::OKButton_Click() {
  DateFrom = DateOf(tbFrom.Text());
  DateTo = DateOf(tbTo.Text());
  CategoriesOnly = rbCatsOnly.Chosen();
  OKPressed = true;
  Unload();
}

void dlgSaveType::CancelButton_Click() {
  OKPressed = false;
  Unload();
}

}  // namespace velkor
