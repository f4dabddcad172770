// hosts/yearplan/window/AppointmentEditor.h: shows the fields of an appointment and writes what the
// user changed.
#pragma once

#include <QString>
#include <QWidget>
#include <optional>
#include <string>

#include "values/Date.h"

class QCheckBox;
class QDateEdit;
class QFormLayout;
class QLineEdit;
class QPlainTextEdit;
class QTimeEdit;

namespace velkor {

class OutlookItem;

/// When an appointment takes place; `end` is exclusive, and midnights bound an all-day one.
struct AppointmentTimes {
  Date start;
  Date end;
  bool allDay = false;

  friend bool operator==(const AppointmentTimes&, const AppointmentTimes&) = default;
};

/// Shows what an item holds, and writes into it what the user changed. To people the last day of
/// an all-day appointment is its end.
class AppointmentEditor : public QWidget {
 public:
  explicit AppointmentEditor(OutlookItem& item, QWidget* parent = nullptr);

  /// Puts a field in front of all others.
  void AddFirst(const QString& caption, QWidget* field);
  /// From now on everything can be read and nothing changed.
  void MakeReadOnly();

  /// Why the fields cannot be saved as they are; empty when they can.
  QString Objection() const;
  /// Sets on the item each field that differs from what was shown at first.
  void Write(OutlookItem& item) const;
  /// Sets on the item what it held when it was shown first.
  void Restore(OutlookItem& item) const;

 private:
  struct Texts {
    QString subject;
    QString location;
    QString categories;
    QString notes;
  };
  struct Original {
    std::string subject;
    std::string location;
    std::string categories;
    std::string notes;
    AppointmentTimes times;
  };

  void AddRows(bool recurring);
  void ShowTimes(const AppointmentTimes& times);
  void ChangeAllDay(bool allDay);
  void KeepLength();
  AppointmentTimes Times() const;
  Texts CurrentTexts() const;

  const Original original_;
  QFormLayout* rows_;
  QLineEdit* subject_;
  QLineEdit* location_;
  QDateEdit* startDate_;
  QTimeEdit* startTime_;
  QDateEdit* endDate_;
  QTimeEdit* endTime_;
  QCheckBox* allDay_;
  QLineEdit* categories_;
  QPlainTextEdit* notes_;
  Texts shownTexts_;
  AppointmentTimes shownTimes_;
  /// Where the start was before it was changed last, in seconds.
  std::int64_t lastStart_ = 0;
};

}  // namespace velkor
