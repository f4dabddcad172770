// hosts/yearplan/window/LoginFields.h: the name and the password for a server, and whether to keep
// it.
#pragma once

#include <QString>
#include <string>

class QCheckBox;
class QFormLayout;
class QLineEdit;

namespace velkor {

struct ServerLogin {
  std::string user = {};
  std::string password = {};
  /// In the system's key store; else it is asked for at each start.
  bool remember = false;

  friend bool operator==(const ServerLogin&, const ServerLogin&) = default;
};

/// Three rows of a form.
class LoginFields {
 public:
  LoginFields();

  /// Adds the rows to a form, which owns them from then on. Called once, before all the others.
  void AddTo(QFormLayout& form);

  void Show(const ServerLogin& login);
  ServerLogin Login() const;
  void SetVisible(bool visible);
  void SetEnabled(bool enabled);
  /// The first of the two that is empty, else the password.
  void FocusEmpty();

  QLineEdit& User() { return *user_; }
  QLineEdit& Password() { return *password_; }

 private:
  QFormLayout* form_ = nullptr;
  QLineEdit* user_;
  QLineEdit* password_;
  QCheckBox* remember_;
};

}  // namespace velkor
