// hosts/yearplan/window/AddressDialog.cpp: an address, its check, and what was found there.
#include "hosts/yearplan/window/AddressDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>
#include <utility>

#include "hosts/yearplan/window/Complaint.h"
#include "hosts/yearplan/window/ProgressLine.h"
#include "hosts/yearplan/window/QuietText.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

constexpr int UsualWidth = 520;

/// Why a text is no address of a calendar; empty when it may be one.
QString ObjectionTo(const QString& address) {
  const QUrl url(address, QUrl::StrictMode);
  const QString scheme = url.scheme().toLower();
  const bool known = scheme == "https" || scheme == "http" || scheme == "webcal";
  if (known && url.isValid() && !url.host().isEmpty()) return {};
  return QDialog::tr(
      "This is no address of a calendar. It begins with https://, http:// or webcal://, as in "
      "https://example.org/holidays.ics.");
}

}  // namespace

AddressDialog::AddressDialog(QWidget* parent, AddressCommands commands)
    : QDialog(parent),
      commands_(std::move(commands)),
      form_(new QFormLayout),
      address_(new QLineEdit),
      name_(new QLineEdit),
      found_(new QLabel),
      progress_(new ProgressLine([this] { Turn(State::Asking); })),
      complaint_(new Complaint),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)),
      check_(buttons_->addButton(tr("&Check"), QDialogButtonBox::ActionRole)) {
  setObjectName("AddressDialog");
  setWindowTitle(tr("Add an address"));
  address_->setObjectName("address");
  address_->setPlaceholderText("https://example.org/holidays.ics");
  name_->setObjectName("name");
  found_->setObjectName("found");
  found_->setTextFormat(Qt::PlainText);
  found_->setWordWrap(true);
  check_->setObjectName("check");
  buttons_->button(QDialogButtonBox::Ok)->setText(tr("A&dd"));
  form_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  form_->addRow(tr("&Address:"), address_);
  login_.AddTo(*form_);
  form_->addRow(tr("&Name:"), name_);
  auto* const rows = new QVBoxLayout(this);
  rows->addWidget(
      MakeNote(tr("A calendar that others publish, as holidays or a timetable. It is "
                  "read from time to time and cannot be changed here.")));
  rows->addLayout(form_);
  rows->addWidget(found_);
  rows->addWidget(progress_);
  rows->addWidget(complaint_);
  rows->addStretch();
  rows->addWidget(buttons_);
  connect(check_, &QPushButton::clicked, this, [this] { Check(); });
  connect(buttons_, &QDialogButtonBox::accepted, this, [this] { accept(); });
  connect(buttons_, &QDialogButtonBox::rejected, this, [this] { reject(); });
  for (QLineEdit* const line : {address_, &login_.User(), &login_.Password()}) {
    connect(line, &QLineEdit::textEdited, this, [this] { Turn(State::Asking); });
  }
  login_.SetVisible(false);
  setMinimumWidth(UsualWidth);
  Turn(State::Asking);
}

void AddressDialog::Turn(State state) {
  const bool stopped = std::exchange(state_, state) == State::Checking && state == State::Asking;
  const bool checking = state == State::Checking;
  for (QWidget* const field : {static_cast<QWidget*>(address_), static_cast<QWidget*>(check_)}) {
    field->setEnabled(!checking);
  }
  login_.SetEnabled(!checking);
  progress_->setVisible(checking);
  const bool found = state == State::Found;
  found_->setVisible(found);
  form_->setRowVisible(name_, found);
  complaint_->Say({});
  QPushButton& add = *buttons_->button(QDialogButtonBox::Ok);
  add.setEnabled(found);
  (found ? add : *check_).setDefault(true);
  if (stopped) commands_.stop();
}

void AddressDialog::Check() {
  const QString objection = ObjectionTo(address_->text().trimmed());
  if (!objection.isEmpty()) {
    ShowFault(objection.toStdString());
    return;
  }
  Turn(State::Checking);
  ShowProgress(tr("Asking %1...").arg(QUrl(address_->text().trimmed()).host()).toStdString());
  commands_.check(Wish());
}

void AddressDialog::ShowProgress(const std::string& text, int done, int of) {
  if (state_ == State::Checking) progress_->Show(ToQt(text), done, of);
}

void AddressDialog::ShowFound(const std::string& calendar, const std::string& what) {
  state_ = State::Found;
  Turn(State::Found);
  found_->setText(ToQt(what));
  name_->setText(ToQt(calendar));
  GrowToFit(*this);
  name_->selectAll();
  name_->setFocus();
}

void AddressDialog::ShowFault(const std::string& why) {
  // What asked is done: there is nothing to stop.
  state_ = State::Asking;
  Turn(State::Asking);
  complaint_->Say(ToQt(why));
  GrowToFit(*this);
  address_->setFocus();
}

void AddressDialog::AskForLogin(const std::string& why) {
  ShowFault(why);
  login_.SetVisible(true);
  GrowToFit(*this);
  login_.FocusEmpty();
}

AddressWish AddressDialog::Wish() const {
  return {address_->text().trimmed().toStdString(), login_.Login()};
}

std::string AddressDialog::Name() const {
  return name_->text().trimmed().toStdString();
}

void AddressDialog::done(int result) {
  if (state_ == State::Checking) Turn(State::Asking);
  QDialog::done(result);
}

}  // namespace velkor
