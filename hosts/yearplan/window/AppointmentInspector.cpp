// hosts/yearplan/window/AppointmentInspector.cpp: the dialog around an appointment's form.
#include "hosts/yearplan/window/AppointmentInspector.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include "hosts/yearplan/window/AppointmentEditor.h"
#include "hosts/yearplan/window/ColourSquare.h"
#include "hosts/yearplan/window/Complaint.h"
#include "hosts/yearplan/window/QuietText.h"
#include "platform/Outlook.h"
#include "platform/desktop/QtText.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr QSize UsualSize{520, 460};

/// Calendars that refuse are listed and cannot be chosen.
class CalendarBox : public QComboBox {
 public:
  explicit CalendarBox(const CalendarChoice& choice) {
    setObjectName("calendar");
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    const auto* const model = qobject_cast<QStandardItemModel*>(this->model());
    for (const CalendarChoice::Calendar& calendar : choice.calendars) {
      addItem(ColourSquare(calendar.colour), ToQt(calendar.name), ToQt(calendar.id));
      const bool current = calendar.id == choice.current;
      if (current) setCurrentIndex(count() - 1);
      if (calendar.refusal.empty()) continue;
      model->item(count() - 1)->setEnabled(false);
      setItemData(count() - 1, ToQt(calendar.refusal), Qt::ToolTipRole);
      if (current && !choice.isNew) refusal_ = ToQt(calendar.refusal);
    }
    setEnabled(refusal_.isEmpty());
  }

  std::string Chosen() const { return currentData().toString().toStdString(); }
  /// Why the appointment can neither be changed nor go elsewhere; empty: it can.
  const QString& Refusal() const { return refusal_; }

 private:
  QString refusal_;
};

class Inspector : public QDialog {
 public:
  Inspector(QWidget* parent, OutlookItem& item, const CalendarChoice& choice)
      : QDialog(parent),
        item_(item),
        choice_(choice),
        editor_(new AppointmentEditor(item)),
        complaint_(new Complaint) {
    const std::string subject = item.Subject();
    setObjectName("AppointmentInspector");
    setWindowTitle(subject.empty() ? tr("Appointment") : tr("%1 - Appointment").arg(ToQt(subject)));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* const rows = new QVBoxLayout(this);
    if (!choice.calendars.empty()) AddCalendars(*rows, *buttons);
    rows->addWidget(editor_, 1);
    rows->addWidget(complaint_);
    rows->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { SaveAndClose(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
    resize(UsualSize);
  }

 private:
  void AddCalendars(QVBoxLayout& rows, QDialogButtonBox& buttons) {
    calendars_ = new CalendarBox(choice_);
    editor_->AddFirst(tr("Calen&dar:"), calendars_);
    if (calendars_->Refusal().isEmpty()) return;
    editor_->MakeReadOnly();
    auto* const note = MakeNote(calendars_->Refusal());
    note->setObjectName("refusal");
    rows.addWidget(note);
    buttons.setStandardButtons(QDialogButtonBox::Close);
  }

  /// Puts the appointment into another calendar when one was chosen.
  void Put() const {
    if (calendars_ && calendars_->Chosen() != choice_.current) choice_.put(calendars_->Chosen());
  }

  void SaveAndClose() {
    complaint_->Say(editor_->Objection());
    if (complaint_->isVisible()) return;
    try {
      if (choice_.isNew) Put();
      editor_->Write(item_);
      item_.Save();
    } catch (const Error& error) {
      editor_->Restore(item_);
      complaint_->Say(tr("The appointment could not be saved: %1").arg(ToQt(error.Description())));
      return;
    }
    try {
      if (!choice_.isNew) Put();
    } catch (const Error& error) {
      complaint_->Say(tr("The appointment was saved, but it could not be moved: %1")
                          .arg(ToQt(error.Description())));
      return;
    }
    accept();
  }

  OutlookItem& item_;
  const CalendarChoice& choice_;
  AppointmentEditor* editor_;
  CalendarBox* calendars_ = nullptr;
  Complaint* complaint_;
};

}  // namespace

void InspectAppointment(QWidget* parent, OutlookItem& item, const CalendarChoice& choice) {
  Inspector(parent, item, choice).exec();
}

}  // namespace velkor
