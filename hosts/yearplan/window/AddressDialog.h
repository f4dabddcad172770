// hosts/yearplan/window/AddressDialog.h: asks for the address of a calendar that others publish.
#pragma once

#include <QDialog>
#include <functional>
#include <string>

#include "hosts/yearplan/window/LoginFields.h"

class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace velkor {

class Complaint;
class ProgressLine;

struct AddressWish {
  std::string address = {};
  /// Empty where the address wants none.
  ServerLogin login = {};

  friend bool operator==(const AddressWish&, const AddressWish&) = default;
};

/// What the dialog has done outside; each answer comes by a Show function of the dialog.
struct AddressCommands {
  /// Looks what lies at the address, without making the user wait.
  std::function<void(const AddressWish&)> check;
  std::function<void()> stop;
};

/// Adds nothing that was not found: OK comes with the answer to a check.
class AddressDialog : public QDialog {
 public:
  AddressDialog(QWidget* parent, AddressCommands commands);

  void ShowProgress(const std::string& text, int done = 0, int of = 0);
  /// @param calendar  its own name; empty when it has none
  /// @param what      a sentence on what it holds
  void ShowFound(const std::string& calendar, const std::string& what);
  void ShowFault(const std::string& why);
  /// Shows the fields for a name and a password, which the address wants.
  void AskForLogin(const std::string& why);

  AddressWish Wish() const;
  /// How the user wants to call it; empty: by its own name.
  std::string Name() const;

 protected:
  void done(int result) override;

 private:
  enum class State { Asking, Checking, Found };

  void Turn(State state);
  void Check();

  AddressCommands commands_;
  QFormLayout* form_;
  QLineEdit* address_;
  LoginFields login_;
  QLineEdit* name_;
  QLabel* found_;
  ProgressLine* progress_;
  Complaint* complaint_;
  QDialogButtonBox* buttons_;
  QPushButton* check_;
  State state_ = State::Asking;
};

}  // namespace velkor
