// print/frmPrintOptions.h: the dialog in which the user changes the print options.
#pragma once

#include <functional>

#include "platform/Forms.h"
#include "platform/InputElements.h"

namespace velkor {

class MessageBoxes;
class PrintOptions;
class Shell;

/// Reprinting and units are stored as they are clicked, everything else by OK. A text that is no
/// number is told and costs no more than its own field. An option that cannot be stored is told and
/// leaves the dialog open.
class frmPrintOptions : public Form {
 public:
  /// All of them outlive this.
  frmPrintOptions(PrintOptions& options, MessageBoxes& messages, Shell& shell);

  /// Shows the options as they are; before the form is shown.
  void Load();

  /// Whether the options were accepted, so that the pages must be laid out again.
  bool OKPressed = false;
  /// Lays the pages out again from the options; called by OK.
  std::function<void()> onOptionsChanged;

  Label lblMLeft{"lblMLeft"};
  TextBox txtMLeft{"txtMLeft"};
  Label lblMTop{"lblMTop"};
  TextBox txtMTop{"txtMTop"};
  Label lblMRight{"lblMRight"};
  TextBox txtMRight{"txtMRight"};
  Label lblMBottom{"lblMBottom"};
  TextBox txtMBottom{"txtMBottom"};
  Label lblCatW{"lblCatW"};
  TextBox txtCatW{"txtCatW"};
  CheckBox chkReprint{"chkReprint"};
  Label lblMinBandNo{"lblMinBandNo"};
  TextBox txtMinBandNo{"txtMinBandNo"};
  Label lblMinBandW{"lblMinBandW"};
  TextBox txtMinBandW{"txtMinBandW"};
  Label lblHeader{"lblHeader"};
  TextBox txtHeader{"txtHeader"};
  Label lblStart{"lblStart"};
  ComboBox cmbStart{"cmbStart"};
  Label lblEnd{"lblEnd"};
  ComboBox cmbEnd{"cmbEnd"};
  CheckBox chkVisibleText{"chkVisibleText"};
  OptionButton radFormatMulti{"radFormatMulti"};
  OptionButton radFormatSingle{"radFormatSingle"};
  OptionButton optInch{"optInch"};
  OptionButton optMM{"optMM"};
  CommandButton cmdOK{"cmdOK"};
  CommandButton cmdCancel{"cmdCancel"};

 private:
  void SetCaptions();
  void AddRows();
  void Connect();
  /// Whether a box for numbers takes a key; one that it refuses is heard.
  bool Number_KeyPress(int code, bool wholeNumber);
  void chkReprint_Click();
  void Units_Click(std::string_view units);
  void cmdOK_Click();
  void StoreNumbers();
  /// Hands the number in a box on, or tells that there is none.
  void StoreNumber(TextBox& box, std::string_view what, const std::function<void(double)>& store);

  PrintOptions& options_;
  MessageBoxes& messages_;
  Shell& shell_;
};

}  // namespace velkor
