// control/frmAbout.h: the about box.
#pragma once

#include "platform/Forms.h"

namespace velkor {

class Shell;

/// Product, version, build, description and maker; logo and heading open the maker's page.
class frmAbout : public Form {
 public:
  /// The shell outlives this.
  explicit frmAbout(Shell& shell);

  Image imgLogo{"imgLogo"};
  Label lblHeading{"lblHeading"};
  Label lblVersion{"lblVersion"};
  Label lblDescription{"lblDescription"};
  Label lblMaker{"lblMaker"};
  CommandButton cmdOK{"cmdOK"};

 private:
  void OpenMakersPage();

  Shell& shell_;
};

}  // namespace velkor
