// control/frmAbout.cpp: the about box.
#include "control/frmAbout.h"

#include <string>

#include "Version.h"
#include "platform/System.h"

namespace velkor {
namespace {

constexpr const char* Product = "OutlookVelkor YearPlan";
constexpr const char* Maker = "Velkor";
constexpr const char* MakersPage = "https://velkor.example/";
constexpr Colour LogoColour = Colour::FromRgb(32, 96, 160);

}  // namespace

frmAbout::frmAbout(Shell& shell)
    : Form("frmAbout", std::string("About ") + Product), shell_(shell) {
  imgLogo.SetFillColour(LogoColour);
  imgLogo.SetToolTip(MakersPage);
  imgLogo.onClick = [this] { OpenMakersPage(); };
  lblHeading.SetCaption(Product);
  lblHeading.SetToolTip(MakersPage);
  lblHeading.onClick = [this] { OpenMakersPage(); };
  lblVersion.SetCaption(std::string("Version ") + Version + ", build " + Build);
  lblDescription.SetCaption("A year planner: the appointments of one calendar for a whole year.");
  lblMaker.SetCaption(std::string("Made by ") + Maker);
  cmdOK.SetCaption("OK");
  cmdOK.onClick = [this] { Unload(); };
  AddRow({{{&imgLogo, 1}, {&lblHeading, 5}}, FormRowKind::Heading});
  AddRow({{{&lblVersion, 1}}});
  AddRow({{{&lblDescription, 1}}});
  AddRow({{{&lblMaker, 1}}});
  AddRow({{{&cmdOK, 1}}, FormRowKind::Buttons});
}

void frmAbout::OpenMakersPage() {
  shell_.OpenPage(MakersPage);
}

}  // namespace velkor
