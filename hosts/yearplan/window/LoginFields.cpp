// hosts/yearplan/window/LoginFields.cpp: the rows of a login in a form.
#include "hosts/yearplan/window/LoginFields.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QLineEdit>

#include "platform/desktop/QtText.h"

namespace velkor {

LoginFields::LoginFields()
    : user_(new QLineEdit),
      password_(new QLineEdit),
      remember_(new QCheckBox(QObject::tr("&Remember the password"))) {
  user_->setObjectName("user");
  password_->setObjectName("password");
  password_->setEchoMode(QLineEdit::Password);
  remember_->setObjectName("remember");
  remember_->setChecked(true);
  remember_->setToolTip(
      QObject::tr("In the system's key store; else it is asked for at each start"));
}

void LoginFields::AddTo(QFormLayout& form) {
  form_ = &form;
  form.addRow(QObject::tr("&User name:"), user_);
  form.addRow(QObject::tr("&Password:"), password_);
  form.addRow(QString(), remember_);
}

void LoginFields::Show(const ServerLogin& login) {
  user_->setText(ToQt(login.user));
  password_->setText(ToQt(login.password));
  remember_->setChecked(login.remember);
}

ServerLogin LoginFields::Login() const {
  return {user_->text().trimmed().toStdString(), password_->text().toStdString(),
          remember_->isChecked()};
}

void LoginFields::SetVisible(bool visible) {
  for (QWidget* const field : {static_cast<QWidget*>(user_), static_cast<QWidget*>(password_),
                               static_cast<QWidget*>(remember_)}) {
    form_->setRowVisible(field, visible);
  }
}

void LoginFields::SetEnabled(bool enabled) {
  user_->setEnabled(enabled);
  password_->setEnabled(enabled);
  remember_->setEnabled(enabled);
}

void LoginFields::FocusEmpty() {
  (user_->text().isEmpty() ? user_ : password_)->setFocus();
}

}  // namespace velkor
