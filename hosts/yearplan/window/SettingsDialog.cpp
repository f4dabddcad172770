// hosts/yearplan/window/SettingsDialog.cpp: the fields of the settings dialog.
#include "hosts/yearplan/window/SettingsDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QVBoxLayout>

#include "hosts/yearplan/window/Complaint.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

constexpr int UsualWidth = 480;

class SettingsDialog : public QDialog {
 public:
  SettingsDialog(QWidget* parent, const PlannerProperties& shown)
      : QDialog(parent),
        folder_(MakeLine("Folder", shown.Folder)),
        title_(MakeLine("TitleName", shown.TitleName)),
        firstMonth_(new QComboBox),
        allEvents_(
            MakeBox("AllEvents", tr("Show appointments &within one day, too"), shown.AllEvents)),
        subjects_(
            MakeBox("DisplaySubject", tr("Write &subjects into the bars"), shown.DisplaySubject)),
        hide_(MakeBox("HideNonCategoryItems", tr("&Hide appointments without a known category"),
                      shown.HideNonCategoryItems)),
        complaint_(new Complaint) {
    setObjectName("SettingsDialog");
    setWindowTitle(tr("Settings of this calendar"));
    firstMonth_->setObjectName("FirstMonth");
    for (int month = 1; month <= 12; ++month) {
      firstMonth_->addItem(QLocale().standaloneMonthName(month));
    }
    firstMonth_->setCurrentIndex(shown.FirstMonth - 1);
    folder_->setPlaceholderText(tr("the calendar itself"));
    AddRows();
    setMinimumWidth(UsualWidth);
  }

  PlannerProperties Properties() const {
    return {.Folder = TextOf(folder_),
            .AllEvents = allEvents_->isChecked(),
            .HideNonCategoryItems = hide_->isChecked(),
            .DisplaySubject = subjects_->isChecked(),
            .TitleName = TextOf(title_),
            .FirstMonth = firstMonth_->currentIndex() + 1};
  }

 private:
  static std::string TextOf(const QLineEdit* line) { return line->text().trimmed().toStdString(); }
  static QLineEdit* MakeLine(const char* name, const std::string& text) {
    auto* const line = new QLineEdit(ToQt(text));
    line->setObjectName(QString::fromLatin1(name));
    return line;
  }
  static QCheckBox* MakeBox(const char* name, const QString& text, bool checked) {
    auto* const box = new QCheckBox(text);
    box->setObjectName(QString::fromLatin1(name));
    box->setChecked(checked);
    return box;
  }

  /// A line below a field, in a quieter colour, that says what it is for.
  static QLabel* MakeNote(const QString& text) {
    auto* const note = new QLabel(text);
    note->setWordWrap(true);
    QPalette colours = note->palette();
    QColor quiet = colours.color(QPalette::WindowText);
    constexpr float Quietness = 0.65F;
    quiet.setAlphaF(Quietness);
    colours.setColor(QPalette::WindowText, quiet);
    note->setPalette(colours);
    return note;
  }

  void AddRows() {
    auto* const fields = new QFormLayout;
    fields->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    fields->addRow(tr("First &month:"), firstMonth_);
    fields->addRow(allEvents_);
    fields->addRow(subjects_);
    fields->addRow(hide_);
    fields->addRow(tr("&Title:"), title_);
    fields->addRow(QString(), MakeNote(tr("Planners with the same title share their colours.")));
    fields->addRow(tr("&Folder:"), folder_);
    fields->addRow(QString(),
                   MakeNote(tr("A folder of the calendar, as in Team\\Holidays; leave it empty for "
                               "the whole file.")));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* const rows = new QVBoxLayout(this);
    rows->addLayout(fields);
    rows->addWidget(complaint_);
    rows->addStretch();
    rows->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { CheckAndClose(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
  }

  void CheckAndClose() {
    const PlannerProperties properties = Properties();
    if (properties.TitleName.empty()) {
      complaint_->Say(tr("A planner needs a title; Default is the usual one."));
      title_->setFocus();
    } else {
      accept();
    }
  }

  QLineEdit* folder_;
  QLineEdit* title_;
  QComboBox* firstMonth_;
  QCheckBox* allEvents_;
  QCheckBox* subjects_;
  QCheckBox* hide_;
  Complaint* complaint_;
};

}  // namespace

std::optional<PlannerProperties> AskForSettings(QWidget* parent, const PlannerProperties& shown) {
  SettingsDialog dialog(parent, shown);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Properties();
}

}  // namespace velkor
