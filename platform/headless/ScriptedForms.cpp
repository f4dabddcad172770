// platform/headless/ScriptedForms.cpp: comparing forms with the script.
#include "platform/headless/ScriptedForms.h"

#include <exception>
#include <stdexcept>

namespace velkor {

ScriptedForms::ScriptedForms(ReportFailure report)
    : report_(report ? std::move(report) : EndProgram) {}

ScriptedForms::~ScriptedForms() {
  if (std::uncaught_exceptions() > 0) return;
  for (const Expected& expected : expected_) report_("Form never shown: " + expected.name);
}

void ScriptedForms::ShowModal(Form& form) {
  if (expected_.empty() || expected_.front().name != form.Name()) {
    const std::string failure = "Unexpected form: " + form.Name();
    report_(failure);
    throw std::logic_error(failure);
  }
  const Steps steps = std::move(expected_.front().steps);
  expected_.pop_front();
  form.Open();
  if (!form.Placed().empty()) form.Form_Resize(form.OpeningSize(), {});
  if (steps) steps(form);
  form.Unload();
}

}  // namespace velkor
