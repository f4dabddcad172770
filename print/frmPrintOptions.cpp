// print/frmPrintOptions.cpp: the dialog in which the user changes the print options.
#include "print/frmPrintOptions.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "model/Guard.h"
#include "platform/MessageBoxes.h"
#include "platform/System.h"
#include "print/NumberText.h"
#include "print/PrintOptions.h"

namespace velkor {
namespace {

constexpr std::string_view SavingFailed = "Error saving the print options ";

std::vector<std::string> MonthNames() {
  return {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
}

struct LengthBox {
  TextBox frmPrintOptions::*box;
  PrintLength length;
  /// As the message about a text that is no number names it.
  std::string_view what;
};

/// Their order is that of OK, which comes to the number of bands before the last of them.
constexpr std::array<LengthBox, 6> LengthBoxes{{
    {&frmPrintOptions::txtMLeft, PrintLength::LeftMargin, "left margin"},
    {&frmPrintOptions::txtMRight, PrintLength::RightMargin, "right margin"},
    {&frmPrintOptions::txtMTop, PrintLength::TopMargin, "top margin"},
    {&frmPrintOptions::txtMBottom, PrintLength::BottomMargin, "bottom margin"},
    {&frmPrintOptions::txtCatW, PrintLength::LegendWidth, "category legend width"},
    {&frmPrintOptions::txtMinBandW, PrintLength::BandHeight, "minimum band height"},
}};

}  // namespace

frmPrintOptions::frmPrintOptions(PrintOptions& options, MessageBoxes& messages, Shell& shell)
    : Form("frmPrintOptions", "Print Options"),
      options_(options),
      messages_(messages),
      shell_(shell) {
  SetCaptions();
  AddRows();
  Connect();
}

void frmPrintOptions::SetCaptions() {
  lblMLeft.SetCaption("Left");
  lblMTop.SetCaption("Top");
  lblMRight.SetCaption("Right");
  lblMBottom.SetCaption("Bottom");
  lblCatW.SetCaption("Width");
  chkReprint.SetCaption("Reprint on every page");
  lblMinBandNo.SetCaption("Min. No. per Month");
  lblMinBandW.SetCaption("Min. Height");
  lblHeader.SetCaption("Title");
  lblStart.SetCaption("From");
  lblEnd.SetCaption("to end of");
  chkVisibleText.SetCaption("Visible");
  radFormatMulti.SetCaption("Multiline and Crop");
  radFormatSingle.SetCaption("Single Line with Ellipsis");
  optInch.SetCaption("Inches");
  optMM.SetCaption("mm");
  cmdOK.SetCaption("OK");
  cmdCancel.SetCaption("Cancel");
  cmbStart.SetItems(MonthNames());
  cmbEnd.SetItems(MonthNames());
  radFormatMulti.group = radFormatSingle.group = {&radFormatMulti, &radFormatSingle};
  optInch.group = optMM.group = {&optInch, &optMM};
}

void frmPrintOptions::AddRows() {
  const auto add = [this](std::string group, std::vector<FormCell> cells) {
    AddRow({std::move(cells), FormRowKind::Plain, std::move(group)});
  };
  add("Margins", {{&lblMLeft, 0}, {&txtMLeft, 1}, {&lblMRight, 0}, {&txtMRight, 1}});
  add("Margins", {{&lblMTop, 0}, {&txtMTop, 1}, {&lblMBottom, 0}, {&txtMBottom, 1}});
  add("Category Legend", {{&lblCatW, 0}, {&txtCatW, 1}, {&chkReprint, 1}});
  add("Band", {{&lblMinBandNo, 0}, {&txtMinBandNo, 1}, {&lblMinBandW, 0}, {&txtMinBandW, 1}});
  add({}, {{&lblHeader, 0}, {&txtHeader, 1}});
  add("Filter Months", {{&lblStart, 0}, {&cmbStart, 1}, {&lblEnd, 0}, {&cmbEnd, 1}});
  add("Subject Text", {{&chkVisibleText, 1}});
  add("Subject Text", {{&radFormatMulti, 1}, {&radFormatSingle, 1}});
  add("Units", {{&optInch, 1}, {&optMM, 1}});
  AddRow({{{&cmdOK, 1}, {&cmdCancel, 1}}, FormRowKind::Buttons});
}

void frmPrintOptions::Connect() {
  for (const LengthBox& field : LengthBoxes) {
    (this->*field.box).onKeyPress = [this](int code) { return Number_KeyPress(code, false); };
  }
  txtMinBandNo.onKeyPress = [this](int code) { return Number_KeyPress(code, true); };
  chkReprint.onClick = [this] { chkReprint_Click(); };
  optInch.onClick = [this] { Units_Click(print_units::Inch); };
  optMM.onClick = [this] { Units_Click(print_units::Millimetre); };
  cmdOK.onClick = [this] { cmdOK_Click(); };
  cmdCancel.onClick = [this] { Unload(); };
}

void frmPrintOptions::Load() {
  for (const LengthBox& field : LengthBoxes) {
    (this->*field.box).SetText(OneDecimal(options_.Length(field.length)));
  }
  txtMinBandNo.SetText(std::to_string(options_.MinBandNo()));
  chkReprint.SetChecked(options_.ReprintLegend());
  txtHeader.SetText(options_.Header());
  cmbStart.SetIndex(options_.FilterStartMonth() - 1);
  cmbEnd.SetIndex(options_.FilterEndMonth() - 1);
  chkVisibleText.SetChecked(options_.VisibleText());
  const bool multiline = options_.PrintFormat() == print_formats::Multiline;
  (multiline ? radFormatMulti : radFormatSingle).SetChosen();
  (options_.Units() == print_units::Inch ? optInch : optMM).SetChosen();
}

bool frmPrintOptions::Number_KeyPress(int code, bool wholeNumber) {
  // Keys that work on the text stand below the characters. What else passes here and is no number
  // is told by OK.
  const bool taken = code <= '9' && !(wholeNumber && code == '.');
  if (!taken) shell_.Beep();
  return taken;
}

void frmPrintOptions::chkReprint_Click() {
  Guard(messages_, SavingFailed, [this] { options_.SetReprintLegend(chkReprint.Checked()); });
}

void frmPrintOptions::Units_Click(std::string_view units) {
  Guard(messages_, SavingFailed, [&] { options_.SetUnits(units); });
  Load();
}

void frmPrintOptions::cmdOK_Click() {
  const auto failure = Guard(messages_, SavingFailed, [this] {
    StoreNumbers();
    options_.SetHeader(txtHeader.Text());
    options_.SetFilterMonths(cmbStart.Index() + 1, cmbEnd.Index() + 1);
    options_.SetVisibleText(chkVisibleText.Checked());
    options_.SetPrintFormat(radFormatMulti.Chosen() ? print_formats::Multiline
                                                    : print_formats::SingleLine);
  });
  if (failure) return;
  OKPressed = true;
  if (onOptionsChanged) onOptionsChanged();
  Unload();
}

void frmPrintOptions::StoreNumbers() {
  for (const LengthBox& field : LengthBoxes) {
    if (field.length == PrintLength::BandHeight) {
      StoreNumber(txtMinBandNo, "minimum number of bands", [this](double bands) {
        options_.SetMinBandNo(ToWhole<std::int16_t>(bands, lblMinBandNo.Caption()));
      });
    }
    StoreNumber(this->*field.box, field.what, [&](double value) {
      options_.SetLength(field.length, ToSingle(value, field.what));
    });
  }
}

void frmPrintOptions::StoreNumber(TextBox& box, std::string_view what,
                                  const std::function<void(double)>& store) {
  if (const auto number = options_.NumberOf(box.Text())) return store(*number);
  box.SetText("0");
  messages_.Show({.text = "Please enter a numeric value for the " + std::string(what),
                  .title = {},
                  .icon = MessageIcon::Information});
}

}  // namespace velkor
