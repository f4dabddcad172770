// hosts/yearplan/window/SettingsDialog.cpp: the fields of the settings dialog.
#include "hosts/yearplan/window/SettingsDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QLocale>
#include <QVBoxLayout>

#include "hosts/yearplan/PropertyTexts.h"
#include "hosts/yearplan/window/Complaint.h"
#include "hosts/yearplan/window/QuietText.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

constexpr int UsualWidth = 480;

/// A field by the property's type: a line, a box, a list of months.
QWidget* MakeField(const std::string& text, const PropertyTexts& /*texts*/) {
  return new QLineEdit(ToQt(text));
}
QWidget* MakeField(bool truth, const PropertyTexts& texts) {
  auto* const box = new QCheckBox(QDialog::tr(PropertyOf(texts.member).caption));
  box->setChecked(truth);
  return box;
}
QWidget* MakeField(std::int16_t month, const PropertyTexts& /*texts*/) {
  auto* const months = new QComboBox;
  for (int each = 1; each <= 12; ++each) months->addItem(QLocale().standaloneMonthName(each));
  months->setCurrentIndex(month - 1);
  return months;
}

PropertyValue ValueOf(const QWidget& field) {
  if (const auto* line = qobject_cast<const QLineEdit*>(&field)) {
    return line->text().trimmed().toStdString();
  }
  if (const auto* box = qobject_cast<const QCheckBox*>(&field)) return box->isChecked();
  const auto& months = dynamic_cast<const QComboBox&>(field);
  return static_cast<std::int16_t>(months.currentIndex() + 1);
}

class SettingsDialog : public QDialog {
 public:
  SettingsDialog(QWidget* parent, const PlannerProperties& shown)
      : QDialog(parent), shown_(shown), complaint_(new Complaint) {
    setObjectName("SettingsDialog");
    setWindowTitle(tr("Settings of this calendar"));
    AddRows();
    Field<QLineEdit>(&PlannerProperties::Folder)->setPlaceholderText(tr("the calendar itself"));
    setMinimumWidth(UsualWidth);
  }

  PlannerProperties Properties() const {
    PlannerProperties properties = shown_;
    for (const PropertyTexts& texts : PropertyTextTable) {
      PropertyOf(texts.member).Set(properties, ValueOf(*Field<QWidget>(texts.member)));
    }
    return properties;
  }

 private:
  static QString NameOf(Property::Member member) { return ToQt(PropertyOf(member).key); }
  template <typename Widget>
  Widget* Field(Property::Member member) const {
    return findChild<Widget*>(NameOf(member));
  }

  void AddRows() {
    auto* const fields = new QFormLayout;
    fields->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const PropertyTexts& texts : PropertyTextTable) AddRow(*fields, texts);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* const rows = new QVBoxLayout(this);
    rows->addLayout(fields);
    rows->addWidget(complaint_);
    rows->addStretch();
    rows->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { CheckAndClose(); });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
  }

  void AddRow(QFormLayout& fields, const PropertyTexts& texts) {
    QWidget* const field =
        std::visit([&](auto member) { return MakeField(shown_.*member, texts); }, texts.member);
    field->setObjectName(NameOf(texts.member));
    if (auto* const line = qobject_cast<QLineEdit*>(field)) {
      line->setMaxLength(static_cast<int>(PropertyOf(texts.member).longest));
    }
    if (qobject_cast<QCheckBox*>(field) != nullptr) {
      fields.addRow(field);
    } else {
      fields.addRow(tr(PropertyOf(texts.member).caption), field);
    }
    if (texts.note != nullptr) fields.addRow(QString(), MakeNote(tr(texts.note)));
  }

  void CheckAndClose() {
    if (!Properties().TitleName.empty()) {
      accept();
      return;
    }
    complaint_->Say(tr("A planner needs a title; Default is the usual one."));
    Field<QWidget>(&PlannerProperties::TitleName)->setFocus();
  }

  const PlannerProperties shown_;
  Complaint* complaint_;
};

}  // namespace

std::optional<PlannerProperties> AskForSettings(QWidget* parent, const PlannerProperties& shown) {
  SettingsDialog dialog(parent, shown);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Properties();
}

}  // namespace velkor
