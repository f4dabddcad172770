// hosts/yearplan/window/AppointmentInspector.cpp: the dialog around an appointment's form.
#include "hosts/yearplan/window/AppointmentInspector.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QVBoxLayout>

#include "hosts/yearplan/window/AppointmentEditor.h"
#include "hosts/yearplan/window/Complaint.h"
#include "platform/Outlook.h"
#include "platform/desktop/QtText.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr QSize UsualSize{520, 460};

class Inspector : public QDialog {
 public:
  Inspector(QWidget* parent, OutlookItem& item)
      : QDialog(parent),
        item_(item),
        editor_(new AppointmentEditor(item)),
        complaint_(new Complaint) {
    const std::string subject = item.Subject();
    setObjectName("AppointmentInspector");
    setWindowTitle(subject.empty() ? tr("Appointment") : tr("%1 - Appointment").arg(ToQt(subject)));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* const rows = new QVBoxLayout(this);
    rows->addWidget(editor_, 1);
    rows->addWidget(complaint_);
    rows->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { SaveAndClose(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
    resize(UsualSize);
  }

 private:
  void SaveAndClose() {
    complaint_->Say(editor_->Objection());
    if (complaint_->isVisible()) return;
    try {
      editor_->Write(item_);
      item_.Save();
    } catch (const Error& error) {
      editor_->Restore(item_);
      complaint_->Say(tr("The appointment could not be saved: %1").arg(ToQt(error.Description())));
      return;
    }
    accept();
  }

  OutlookItem& item_;
  AppointmentEditor* editor_;
  Complaint* complaint_;
};

}  // namespace

void InspectAppointment(QWidget* parent, OutlookItem& item) {
  Inspector(parent, item).exec();
}

}  // namespace velkor
