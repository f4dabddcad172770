// hosts/windows/TryOut/FormObject.h: the form as scripts know it, by the name Form.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "hosts/windows/TryOut/DialogAnswers.h"
#include "hosts/windows/TryOut/TryOutForm.h"
#include "platform/windows/com/NamedMembers.h"

namespace velkor {

/// Calls a procedure of the script by its name.
using CallScript =
    std::function<void(const std::string& procedure, std::initializer_list<Variant> arguments)>;

/// What one script does with one form. The script may have procedures for events:
/// Form_StatusChange(Msg), Form_Error(Number, Description) and Form_PropertyChanged(Name).
class FormObject : public NamedObject<NamedMembers> {
 public:
  /// @param form  outlives this
  /// @param arguments  of the script
  FormObject(TryOutForm& form, std::vector<std::string> arguments, CallScript callScript);
  ~FormObject() override;

  /// Waits until every expected dialog came or was given up, and counts what went wrong.
  /// @return how many checks failed
  int Finish();

 private:
  struct Table;

  // Of the form.
  Variant YearPlan(const Call& call);
  Variant Open(const Call& call);
  Variant Close(const Call& call);
  Variant Place(const Call& call);
  Variant Save(const Call& call);
  Variant Restore(const Call& call);
  Variant Resize(const Call& call);
  Variant Width(const Call& call);
  Variant Height(const Call& call);
  Variant HasKeyboard(const Call& call);
  // What it tells.
  Variant Status(const Call& call);
  Variant Statuses(const Call& call);
  Variant Errors(const Call& call);
  Variant PropertiesChanged(const Call& call);
  Variant Dialogs(const Call& call);
  // Time.
  Variant Wait(const Call& call);
  Variant WaitFor(const Call& call);
  Variant Expect(const Call& call);
  Variant Allow(const Call& call);
  Variant WaitForDialogs(const Call& call);
  // What the user does.
  Variant Click(const Call& call);
  Variant RightClick(const Call& call);
  Variant Move(const Call& call);
  Variant Press(const Call& call);
  Variant Type(const Call& call);
  Variant Button(const Call& call);
  // What is seen.
  Variant Draw(const Call& call);
  Variant Pixel(const Call& call);
  Variant CountPixels(const Call& call);
  Variant FindColour(const Call& call);
  // The script's own.
  Variant Print(const Call& call);
  Variant Check(const Call& call);
  Variant Argument(const Call& call);
  Variant ProcessId(const Call& call);
  Variant IsLoaded(const Call& call);

  void AddDialog(const Call& call, bool required);
  void Fail(const std::string& what);
  void TakeFailures();
  const DibSection& Picture();

  TryOutForm& form_;
  std::vector<std::string> arguments_;
  CallScript callScript_;
  DialogAnswers answers_;
  std::vector<std::string> statuses_;
  std::vector<std::string> errors_;
  std::vector<std::string> changed_;
  std::unique_ptr<DibSection> picture_;
  SIZE pictureSize_{};
  int failures_ = 0;
};

}  // namespace velkor
