// tools/OptionsAnswer.cpp: what the print options are after loading, and after each use of their
// form.
#include "tools/OptionsAnswer.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/headless/MemorySettings.h"
#include "platform/headless/ScriptedShell.h"
#include "print/PrintOptions.h"
#include "print/frmPrintOptions.h"
#include "tools/ColourCalendar.h"
#include "tools/ProbeCase.h"

namespace velkor {
namespace {

using Json = nlohmann::ordered_json;

/// The boxes by the names that their values have in the store.
constexpr std::array<std::pair<std::string_view, TextBox frmPrintOptions::*>, 7> Boxes{{
    {"Left Margin", &frmPrintOptions::txtMLeft},
    {"Top Margin", &frmPrintOptions::txtMTop},
    {"Right Margin", &frmPrintOptions::txtMRight},
    {"Bottom Margin", &frmPrintOptions::txtMBottom},
    {"Legend Width", &frmPrintOptions::txtCatW},
    {"Band Height", &frmPrintOptions::txtMinBandW},
    {"Bands", &frmPrintOptions::txtMinBandNo},
}};

TextBox& BoxOf(frmPrintOptions& form, const std::string& name) {
  for (const auto& [key, box] : Boxes) {
    if (key == name) return form.*box;
  }
  throw BadCase("unknown box \"" + name + "\"");
}

/// Characters that the box refuses are left out.
void Type(TextBox& box, const std::string& text) {
  for (const char c : text) {
    const int code = static_cast<unsigned char>(c);
    if (!box.onKeyPress || box.onKeyPress(code)) box.SetText(box.Text() + c);
  }
}

void Enter(frmPrintOptions& form, const Json& action) {
  if (action.contains("boxes")) {
    for (const auto& [name, text] : ObjectOf(action.at("boxes")).items()) {
      BoxOf(form, name).SetText(text.get<std::string>());
    }
  }
  if (action.contains("header")) form.txtHeader.SetText(action.at("header").get<std::string>());
  for (const auto& [name, combo] : {std::pair{"start", &form.cmbStart}, {"end", &form.cmbEnd}}) {
    if (action.contains(name)) combo->SetIndex(WholeNumber(action.at(name), 1, MonthRows) - 1);
  }
  if (action.contains("visible")) form.chkVisibleText.SetChecked(action.at("visible").get<bool>());
  if (action.contains("format")) {
    const bool multiline = WholeNumber(action.at("format")) == print_formats::Multiline;
    (multiline ? form.radFormatMulti : form.radFormatSingle).SetChosen();
  }
}

void Run(frmPrintOptions& form, const Json& action) {
  const std::string kind = action.at("do").get<std::string>();
  if (kind == "units") {
    const std::string units = action.at("units").get<std::string>();
    (units == print_units::Inch ? form.optInch : form.optMM).Choose();
  } else if (kind == "reprint") {
    form.chkReprint.SetChecked(!action.at("on").get<bool>());
    form.chkReprint.Toggle();
  } else if (kind == "key") {
    Type(BoxOf(form, action.at("box").get<std::string>()), action.at("text").get<std::string>());
  } else if (kind == "ok") {
    Enter(form, action);
    form.cmdOK.Click();
  } else if (kind == "cancel") {
    form.cmdCancel.Click();
  } else {
    throw BadCase("unknown action \"" + kind + "\"");
  }
}

Json StateOf(const frmPrintOptions& form, const PrintOptions& options,
             const MemorySettings& settings) {
  Json shown;
  for (const auto& [key, box] : Boxes) shown[std::string(key)] = (form.*box).Text();
  Json store = Json::object();
  for (const auto& [key, value] : settings.Values()) store[std::get<2>(key)] = value;
  return {{"shown", shown},
          {"start", options.FilterStartMonth()},
          {"end", options.FilterEndMonth()},
          {"store", store}};
}

}  // namespace

Json AnswerOptions(const Json& json) {
  MemorySettings settings = PrintSettingsOf(json.at("store"));
  UnseenMessages messages;
  ScriptedShell shell;
  PrintOptions options(settings, {.titleName = json.at("title").get<std::string>(),
                                  .firstMonth = WholeNumber(json.at("firstMonth"), 1, MonthRows),
                                  .displaySubject = json.at("displaySubject").get<bool>()});
  if (const auto failure = options.Load(messages)) throw *failure;

  frmPrintOptions form(options, messages, shell);
  form.Load();
  Json answer = Json::array({StateOf(form, options, settings)});
  for (const Json& action : ListOf(json.at("actions"))) {
    messages.told.clear();
    if (!form.IsOpen()) {
      form.Load();
      form.Open();
    }
    Run(form, action);
    Json state = StateOf(form, options, settings);
    state["told"] = messages.told;
    answer.push_back(std::move(state));
  }
  return answer;
}

}  // namespace velkor
