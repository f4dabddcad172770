// hosts/yearplan/window/ServerQuestions.cpp: the two questions as dialogs.
#include "hosts/yearplan/window/ServerQuestions.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include "hosts/yearplan/window/QuietText.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

constexpr int UsualWidth = 520;

QLabel* MakeText(const QString& text) {
  auto* const label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  return label;
}

/// Pairs of digits in two lines, as other programs show them to compare with.
QString InPairs(const std::string& digits) {
  QString text;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    if (i > 0) text += i == digits.size() / 2 ? u'\n' : u':';
    text += ToQt(digits.substr(i, 2)).toUpper();
  }
  return text;
}

/// A day that is written as in 2026-01-31.
QString ForPeople(const std::string& day) {
  return QLocale().toString(QDate::fromString(ToQt(day), Qt::ISODate), QLocale::ShortFormat);
}

QFormLayout* FactsOf(const CertificateFault& certificate) {
  auto* const facts = new QFormLayout;
  facts->setRowWrapPolicy(QFormLayout::DontWrapRows);
  facts->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  const auto add = [&](const QString& what, const QString& text) {
    QLabel* const label = MakeText(text);
    label->setAccessibleName(what);
    facts->addRow(what, label);
    return label;
  };
  add(QDialog::tr("Server:"), ToQt(certificate.host));
  add(QDialog::tr("Made out to:"), ToQt(certificate.subject));
  add(QDialog::tr("Made out by:"), ToQt(certificate.issuer));
  add(QDialog::tr("Valid:"),
      QDialog::tr("%1 to %2").arg(ForPeople(certificate.from), ForPeople(certificate.until)));
  QLabel* const print = add(QDialog::tr("Fingerprint:"), InPairs(certificate.sha256));
  print->setObjectName("fingerprint");
  print->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  print->setWordWrap(false);
  return facts;
}

}  // namespace

bool AskToTrust(QWidget* parent, const CertificateFault& certificate) {
  QDialog dialog(parent);
  dialog.setObjectName("CertificateQuestion");
  dialog.setWindowTitle(QDialog::tr("Is this the right server?"));
  const QString host = ToQt(certificate.host);
  const QString what =
      certificate.changed
          ? QDialog::tr(
                "%1 shows another certificate than the one that you trusted. It may have "
                "been renewed, or somebody else may answer in its place.")
          : QDialog::tr("%1 shows a certificate that nobody known to this machine vouches for.");
  auto* const buttons = new QDialogButtonBox;
  auto* const trust =
      buttons->addButton(QDialog::tr("&Trust for This Server"), QDialogButtonBox::AcceptRole);
  trust->setObjectName("trust");
  trust->setAutoDefault(false);
  buttons->addButton(QDialog::tr("&Do Not Connect"), QDialogButtonBox::RejectRole)
      ->setDefault(true);
  auto* const rows = new QVBoxLayout(&dialog);
  rows->addWidget(MakeText(what.arg(host)));
  if (!certificate.reason.empty()) rows->addWidget(MakeNote(ToQt(certificate.reason)));
  rows->addLayout(FactsOf(certificate));
  rows->addWidget(
      MakeNote(QDialog::tr("Ask whoever runs the server for the fingerprint and compare "
                           "it. Your password is sent only to a server that you "
                           "trust.")));
  rows->addStretch();
  rows->addWidget(buttons);
  dialog.setMinimumWidth(UsualWidth);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  return dialog.exec() == QDialog::Accepted;
}

std::optional<ServerLogin> AskForPassword(QWidget* parent, const std::string& host,
                                          const ServerLogin& login, const std::string& why) {
  QDialog dialog(parent);
  dialog.setObjectName("PasswordQuestion");
  dialog.setWindowTitle(QDialog::tr("Password"));
  auto* const form = new QFormLayout;
  form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  LoginFields fields;
  fields.AddTo(*form);
  fields.Show(login);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  auto* const rows = new QVBoxLayout(&dialog);
  const QString usual = QDialog::tr("%1 asks for your password.").arg(ToQt(host));
  rows->addWidget(MakeText(why.empty() ? usual : ToQt(why)));
  rows->addLayout(form);
  rows->addStretch();
  rows->addWidget(buttons);
  QPushButton& ok = *buttons->button(QDialogButtonBox::Ok);
  const auto mirror = [&] {
    const ServerLogin typed = fields.Login();
    ok.setEnabled(!typed.user.empty() && !typed.password.empty());
  };
  QObject::connect(&fields.User(), &QLineEdit::textChanged, &dialog, mirror);
  QObject::connect(&fields.Password(), &QLineEdit::textChanged, &dialog, mirror);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  mirror();
  fields.FocusEmpty();
  constexpr int Width = 420;
  dialog.setMinimumWidth(Width);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return fields.Login();
}

}  // namespace velkor
