// hosts/yearplan/window/AppointmentEditor.cpp: filling the form, its rules, and what it writes
// back.
#include "hosts/yearplan/window/AppointmentEditor.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTimeEdit>

#include "platform/Outlook.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

QDate DayOf(Date date) {
  const DateFields fields = date.Fields();
  return QDate(fields.year, fields.month, fields.day);
}

QTime TimeOf(Date date) {
  const DateFields fields = date.Fields();
  return QTime(fields.hour, fields.minute, fields.second);
}

Date Join(QDate day, QTime time) {
  return Date::FromFields(
      {day.year(), day.month(), day.day(), time.hour(), time.minute(), time.second()});
}

bool IsMidnight(QTime time) {
  return time == QTime(0, 0);
}

QDateEdit* MakeDateEdit(const char* name, const QString& title) {
  auto* const edit = new QDateEdit;
  edit->setObjectName(QString::fromLatin1(name));
  edit->setAccessibleName(title);
  edit->setCalendarPopup(true);
  QString format = QLocale().dateFormat(QLocale::ShortFormat);
  if (!format.contains(QLatin1String("yyyy"))) format.replace("yy", "yyyy");
  edit->setDisplayFormat("ddd " + format);
  constexpr int Air = 16;
  edit->setMinimumWidth(edit->sizeHint().width() + Air);
  // A day short of the last one, since the end of a whole day is the midnight after it.
  edit->setDateRange(QDate(100, 1, 1), QDate(9999, 12, 30));
  return edit;
}

QTimeEdit* MakeTimeEdit(const char* name, const QString& title) {
  auto* const edit = new QTimeEdit;
  edit->setObjectName(QString::fromLatin1(name));
  edit->setAccessibleName(title);
  edit->setDisplayFormat(QLocale().timeFormat(QLocale::ShortFormat));
  return edit;
}

QHBoxLayout* Beside(std::initializer_list<QWidget*> widgets) {
  auto* const row = new QHBoxLayout;
  for (QWidget* widget : widgets) row->addWidget(widget);
  row->addStretch();
  return row;
}

QLabel* LabelOf(const QString& text, QWidget* field) {
  auto* const label = new QLabel(text);
  label->setBuddy(field);
  return label;
}

QLineEdit* MakeLine(const char* name, const std::string& text) {
  auto* const line = new QLineEdit(ToQt(text));
  line->setObjectName(QString::fromLatin1(name));
  line->setCursorPosition(0);
  return line;
}

}  // namespace

AppointmentEditor::AppointmentEditor(OutlookItem& item, QWidget* parent)
    : QWidget(parent),
      original_{item.Subject(),
                item.Location(),
                item.Categories(),
                item.Body(),
                {item.Start(), item.End(), item.AllDayEvent()}},
      rows_(new QFormLayout(this)),
      subject_(MakeLine("subject", original_.subject)),
      location_(MakeLine("location", original_.location)),
      startDate_(MakeDateEdit("startDate", tr("First day"))),
      startTime_(MakeTimeEdit("startTime", tr("Start time"))),
      endDate_(MakeDateEdit("endDate", tr("Last day"))),
      endTime_(MakeTimeEdit("endTime", tr("End time"))),
      allDay_(new QCheckBox(tr("&All day"))),
      categories_(MakeLine("categories", original_.categories)),
      notes_(new QPlainTextEdit(ToQt(original_.notes))) {
  allDay_->setObjectName("allDay");
  notes_->setObjectName("notes");
  notes_->setTabChangesFocus(true);
  AddRows(item.IsRecurring());
  ShowTimes(original_.times);
  shownTexts_ = CurrentTexts();
  shownTimes_ = Times();

  connect(allDay_, &QCheckBox::toggled, this, [this](bool on) { ChangeAllDay(on); });
  connect(startDate_, &QDateEdit::dateChanged, this, [this] { KeepLength(); });
  connect(startTime_, &QTimeEdit::timeChanged, this, [this] { KeepLength(); });
}

void AppointmentEditor::AddRows(bool recurring) {
  rows_->setContentsMargins(0, 0, 0, 0);
  rows_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  rows_->addRow(tr("S&ubject:"), subject_);
  rows_->addRow(tr("&Location:"), location_);
  rows_->addRow(LabelOf(tr("&Start:"), startDate_), Beside({startDate_, startTime_, allDay_}));
  rows_->addRow(LabelOf(tr("&End:"), endDate_), Beside({endDate_, endTime_}));
  for (QWidget* time :
       std::initializer_list<QWidget*>{startDate_, startTime_, endDate_, endTime_, allDay_}) {
    time->setEnabled(!recurring);
  }
  auto* const recurrence =
      new QLabel(recurring ? tr("This appointment recurs. What you change here counts for all its "
                                "occurrences; their times can be changed only in the program that "
                                "made them.")
                           : tr("Does not recur."));
  recurrence->setObjectName("recurrence");
  recurrence->setWordWrap(true);
  rows_->addRow(tr("Recurrence:"), recurrence);
  rows_->addRow(tr("&Categories:"), categories_);
  rows_->addRow(tr("&Notes:"), notes_);
}

void AppointmentEditor::AddFirst(const QString& caption, QWidget* field) {
  rows_->insertRow(0, caption, field);
  setTabOrder(field, subject_);
  subject_->setFocus();
}

void AppointmentEditor::MakeReadOnly() {
  for (QLineEdit* const line : {subject_, location_, categories_}) line->setReadOnly(true);
  for (QAbstractSpinBox* const time :
       {static_cast<QAbstractSpinBox*>(startDate_), static_cast<QAbstractSpinBox*>(startTime_),
        static_cast<QAbstractSpinBox*>(endDate_), static_cast<QAbstractSpinBox*>(endTime_)}) {
    time->setReadOnly(true);
  }
  allDay_->setEnabled(false);
  notes_->setReadOnly(true);
}

void AppointmentEditor::ShowTimes(const AppointmentTimes& times) {
  const QSignalBlocker silent(allDay_);
  allDay_->setChecked(times.allDay);
  startTime_->setVisible(!times.allDay);
  endTime_->setVisible(!times.allDay);
  startDate_->setDate(DayOf(times.start));
  startTime_->setTime(TimeOf(times.start));
  const bool inclusive = times.allDay && times.end > times.start;
  endDate_->setDate(DayOf(inclusive ? Date::FromSeconds(times.end.Seconds() - 1) : times.end));
  endTime_->setTime(TimeOf(times.end));
  lastStart_ = Join(startDate_->date(), startTime_->time()).Seconds();
}

/// Days that end at midnight belong to the appointment as a whole, with the box or without it.
void AppointmentEditor::ChangeAllDay(bool allDay) {
  startTime_->setVisible(!allDay);
  endTime_->setVisible(!allDay);
  if (!IsMidnight(endTime_->time())) return;
  const bool spansDays = endDate_->date() > startDate_->date();
  if (!allDay) {
    endDate_->setDate(endDate_->date().addDays(1));
  } else if (spansDays) {
    endDate_->setDate(endDate_->date().addDays(-1));
  }
}

/// An end moves along with its start.
void AppointmentEditor::KeepLength() {
  const std::int64_t start = Join(startDate_->date(), startTime_->time()).Seconds();
  const std::int64_t end = Join(endDate_->date(), endTime_->time()).Seconds();
  const Date moved = Date::FromSeconds(end + start - lastStart_);
  lastStart_ = start;
  endDate_->setDate(DayOf(moved));
  endTime_->setTime(TimeOf(moved));
}

AppointmentTimes AppointmentEditor::Times() const {
  if (!allDay_->isChecked()) {
    return {Join(startDate_->date(), startTime_->time()), Join(endDate_->date(), endTime_->time()),
            false};
  }
  const QTime midnight(0, 0);
  return {Join(startDate_->date(), midnight), Join(endDate_->date().addDays(1), midnight), true};
}

AppointmentEditor::Texts AppointmentEditor::CurrentTexts() const {
  return {subject_->text(), location_->text(), categories_->text(), notes_->toPlainText()};
}

QString AppointmentEditor::Objection() const {
  const AppointmentTimes times = Times();
  if (times == shownTimes_) return {};
  if (times.allDay && times.end <= times.start) {
    return tr("The last day lies before the first day.");
  }
  if (times.end < times.start) return tr("The end lies before the start.");
  return {};
}

void AppointmentEditor::Write(OutlookItem& item) const {
  const Texts texts = CurrentTexts();
  if (texts.subject != shownTexts_.subject) item.SetSubject(texts.subject.toStdString());
  if (texts.location != shownTexts_.location) item.SetLocation(texts.location.toStdString());
  if (texts.categories != shownTexts_.categories) {
    item.SetCategories(texts.categories.toStdString());
  }
  if (texts.notes != shownTexts_.notes) item.SetBody(texts.notes.toStdString());
  const AppointmentTimes times = Times();
  if (times == shownTimes_) return;
  item.SetAllDayEvent(times.allDay);
  item.SetStart(times.start);
  item.SetEnd(times.end);
}

void AppointmentEditor::Restore(OutlookItem& item) const {
  if (item.Subject() != original_.subject) item.SetSubject(original_.subject);
  if (item.Location() != original_.location) item.SetLocation(original_.location);
  if (item.Categories() != original_.categories) item.SetCategories(original_.categories);
  if (item.Body() != original_.notes) item.SetBody(original_.notes);
  const AppointmentTimes times{item.Start(), item.End(), item.AllDayEvent()};
  if (times == original_.times) return;
  item.SetAllDayEvent(original_.times.allDay);
  item.SetStart(original_.times.start);
  item.SetEnd(original_.times.end);
}

}  // namespace velkor
