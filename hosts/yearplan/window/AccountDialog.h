// hosts/yearplan/window/AccountDialog.h: asks for an account on a calendar server and which of its
// calendars to show.
#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <vector>

#include "hosts/SyncMessages.h"
#include "hosts/yearplan/window/LoginFields.h"

class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace velkor {

class Complaint;
class ProgressLine;

struct ServerAccount {
  /// Of the server, or a mail address or domain.
  std::string address = {};
  ServerLogin login = {};

  friend bool operator==(const ServerAccount&, const ServerAccount&) = default;
};

/// What the dialog has done outside; each answer comes by a Show function of the dialog.
struct AccountCommands {
  std::function<void(const ServerAccount&)> find;
  /// Makes a calendar and finds all of them again.
  std::function<void(const ServerAccount&, const std::string& home, const std::string& name)> make;
  std::function<void()> stop;
};

/// Finds the calendars of an account; those that are ticked are added by OK.
class AccountDialog : public QDialog {
 public:
  AccountDialog(QWidget* parent, AccountCommands commands);

  void ShowProgress(const std::string& text, int done = 0, int of = 0);
  /// What was ticked before stays so, what has just been made is ticked.
  void ShowCalendars(const SyncCalendars& found);
  void ShowFault(const std::string& why);
  /// The server does not take the name or the password.
  void AskForLogin(const std::string& why);

  ServerAccount Account() const;
  /// Those that are ticked.
  std::vector<FoundCalendar> Chosen() const;

 protected:
  void done(int result) override;

 private:
  void SetBusy(bool busy);
  void Stop();
  void Forget();
  void Find();
  void AskForNew();
  void MirrorChoice();

  AccountCommands commands_;
  QFormLayout* form_;
  QLineEdit* address_;
  LoginFields login_;
  QPushButton* find_;
  QLabel* heading_;
  QListWidget* list_;
  QPushButton* new_;
  ProgressLine* progress_;
  Complaint* complaint_;
  QDialogButtonBox* buttons_;
  SyncCalendars found_;
  /// The name of the calendar that is being made.
  std::string made_;
  bool busy_ = false;
};

}  // namespace velkor
