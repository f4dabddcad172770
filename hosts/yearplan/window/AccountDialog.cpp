// hosts/yearplan/window/AccountDialog.cpp: the login, the list of calendars found, and a new one.
#include "hosts/yearplan/window/AccountDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <set>
#include <utility>

#include "hosts/yearplan/window/ColourSquare.h"
#include "hosts/yearplan/window/Complaint.h"
#include "hosts/yearplan/window/ProgressLine.h"
#include "hosts/yearplan/window/QuietText.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

constexpr QSize UsualSize{520, 520};
/// Of a calendar that has none.
constexpr Colour PlainColour = Colour::FromRgb(0x80, 0x80, 0x80);

}  // namespace

AccountDialog::AccountDialog(QWidget* parent, AccountCommands commands)
    : QDialog(parent),
      commands_(std::move(commands)),
      form_(new QFormLayout),
      address_(new QLineEdit),
      find_(new QPushButton(tr("&Find Calendars"))),
      heading_(new QLabel(tr("Show these &calendars:"))),
      list_(new QListWidget),
      new_(new QPushButton(tr("&New Calendar..."))),
      progress_(new ProgressLine([this] { Stop(); })),
      complaint_(new Complaint),
      buttons_(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)) {
  setObjectName("AccountDialog");
  setWindowTitle(tr("Add server calendars"));
  address_->setObjectName("address");
  address_->setPlaceholderText(tr("calendar.example.org or anna@example.org"));
  find_->setObjectName("find");
  find_->setDefault(true);
  list_->setObjectName("calendars");
  heading_->setBuddy(list_);
  new_->setObjectName("new");
  new_->setAutoDefault(false);
  buttons_->button(QDialogButtonBox::Ok)->setText(tr("A&dd"));
  form_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  form_->addRow(tr("&Address:"), address_);
  login_.AddTo(*form_);
  form_->addRow(QString(), find_);
  auto* const below = new QHBoxLayout;
  below->addWidget(new_);
  below->addStretch();
  auto* const rows = new QVBoxLayout(this);
  rows->addWidget(
      MakeNote(tr("Calendars of an account on a server (CalDAV). What you change here is "
                  "sent there; without a network it waits.")));
  rows->addLayout(form_);
  rows->addWidget(heading_);
  rows->addWidget(list_, 1);
  rows->addLayout(below);
  rows->addWidget(progress_);
  rows->addWidget(complaint_);
  rows->addWidget(buttons_);
  connect(find_, &QPushButton::clicked, this, [this] { Find(); });
  connect(new_, &QPushButton::clicked, this, [this] { AskForNew(); });
  connect(list_, &QListWidget::itemChanged, this, [this] { MirrorChoice(); });
  connect(buttons_, &QDialogButtonBox::accepted, this, [this] { accept(); });
  connect(buttons_, &QDialogButtonBox::rejected, this, [this] { reject(); });
  for (QLineEdit* const line : {address_, &login_.User()}) {
    connect(line, &QLineEdit::textEdited, this, [this] { Forget(); });
  }
  resize(UsualSize);
  Forget();
}

void AccountDialog::SetBusy(bool busy) {
  busy_ = busy;
  address_->setEnabled(!busy);
  login_.SetEnabled(!busy);
  find_->setEnabled(!busy);
  new_->setEnabled(!busy && !found_.home.empty());
  progress_->setVisible(busy);
  complaint_->Say({});
  MirrorChoice();
}

void AccountDialog::Stop() {
  SetBusy(false);
  commands_.stop();
}

/// What was found is of another account.
void AccountDialog::Forget() {
  found_ = {};
  list_->clear();
  SetBusy(false);
}

void AccountDialog::Find() {
  const ServerAccount account = Account();
  if (account.address.empty() || account.login.user.empty()) {
    const bool server = account.address.empty();
    complaint_->Say(server ? tr("Which server? Its address or your mail address there will do.")
                           : tr("Which user? Servers know people by a name or a mail address."));
    (server ? address_ : &login_.User())->setFocus();
    return;
  }
  made_.clear();
  SetBusy(true);
  ShowProgress(tr("Asking the server...").toStdString());
  commands_.find(account);
}

void AccountDialog::AskForNew() {
  bool ok = false;
  const QString name =
      QInputDialog::getText(this, tr("New calendar"), tr("Its name:"), QLineEdit::Normal, {}, &ok)
          .trimmed();
  if (!ok || name.isEmpty()) return;
  made_ = name.toStdString();
  SetBusy(true);
  ShowProgress(tr("Making \"%1\"...").arg(name).toStdString());
  commands_.make(Account(), found_.home, made_);
}

void AccountDialog::ShowProgress(const std::string& text, int done, int of) {
  if (busy_) progress_->Show(ToQt(text), done, of);
}

void AccountDialog::ShowCalendars(const SyncCalendars& found) {
  std::set<std::string> ticked;
  for (const FoundCalendar& calendar : Chosen()) ticked.insert(calendar.url);
  const std::vector<FoundCalendar> before = std::exchange(found_, found).calendars;
  const auto isMade = [&](const FoundCalendar& calendar) {
    return calendar.name == made_ && std::ranges::find(before, calendar) == before.end();
  };
  {
    const QSignalBlocker silent(list_);
    list_->clear();
    for (const FoundCalendar& calendar : found_.calendars) {
      const QString name = ToQt(calendar.name);
      auto* const item =
          new QListWidgetItem(calendar.readOnly ? tr("%1 (read-only)").arg(name) : name, list_);
      item->setIcon(ColourSquare(ColourOfServer(calendar.colour).value_or(PlainColour)));
      item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
      const bool tick = ticked.contains(calendar.url) || isMade(calendar);
      item->setCheckState(tick ? Qt::Checked : Qt::Unchecked);
      item->setToolTip(ToQt(calendar.url));
    }
    list_->setCurrentRow(0);
  }
  heading_->setText(found_.calendars.empty()
                        ? tr("This account has no calendar yet; New Calendar makes one.")
                        : tr("Show these &calendars:"));
  SetBusy(false);
  list_->setFocus();
}

void AccountDialog::ShowFault(const std::string& why) {
  SetBusy(false);
  complaint_->Say(ToQt(why));
}

void AccountDialog::AskForLogin(const std::string& why) {
  ShowFault(why);
  login_.Password().selectAll();
  login_.FocusEmpty();
}

ServerAccount AccountDialog::Account() const {
  return {address_->text().trimmed().toStdString(), login_.Login()};
}

std::vector<FoundCalendar> AccountDialog::Chosen() const {
  std::vector<FoundCalendar> chosen;
  for (int i = 0; i < list_->count(); ++i) {
    if (list_->item(i)->checkState() != Qt::Checked) continue;
    chosen.push_back(found_.calendars.at(static_cast<std::size_t>(i)));
  }
  return chosen;
}

void AccountDialog::MirrorChoice() {
  const bool some = !Chosen().empty();
  QPushButton& add = *buttons_->button(QDialogButtonBox::Ok);
  add.setEnabled(some && !busy_);
  (some ? add : *find_).setDefault(true);
  heading_->setEnabled(!found_.home.empty() || !found_.calendars.empty());
  list_->setEnabled(!found_.calendars.empty());
}

void AccountDialog::done(int result) {
  if (busy_) Stop();
  QDialog::done(result);
}

}  // namespace velkor
