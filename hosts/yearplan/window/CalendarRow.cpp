// hosts/yearplan/window/CalendarRow.cpp: a calendar's state in words.
#include "hosts/yearplan/window/CalendarRow.h"

#include <QObject>
#include <QStringList>

#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

QString Counted(std::size_t count, const QString& one, const QString& many) {
  return count == 1 ? one : many.arg(count);
}

/// Empty when all is as it should be.
QString ReachOf(const CalendarRow& row) {
  if (row.busy) return QObject::tr("Being refreshed");
  if (row.IsFailing()) return QObject::tr("Failing: %1").arg(ToQt(row.trouble).simplified());
  if (row.offline && row.since.empty()) return QObject::tr("Offline, never read yet");
  if (row.offline) return QObject::tr("Offline since %1").arg(ToQt(row.since));
  if (row.remote && row.since.empty()) return QObject::tr("Not read yet");
  return {};
}

}  // namespace

QString StateOf(const CalendarRow& row) {
  QStringList parts;
  if (const QString reach = ReachOf(row); !reach.isEmpty()) parts << reach;
  if (row.daysOff) parts << QObject::tr("days off");
  if (row.readOnly) parts << QObject::tr("read-only");
  if (row.waiting > 0) {
    parts << Counted(row.waiting, QObject::tr("1 edit waiting"), QObject::tr("%1 edits waiting"));
  }
  if (row.refused > 0) {
    parts << Counted(row.refused, QObject::tr("1 edit refused"), QObject::tr("%1 edits refused"));
  }
  if (parts.isEmpty()) return QObject::tr("Up to date");
  // What has to be known first must not be cut off by a long reason.
  if (row.IsFailing() && parts.size() > 1) parts << parts.takeFirst();
  parts.front().replace(0, 1, parts.front().at(0).toUpper());
  return parts.join(QStringLiteral(", "));
}

}  // namespace velkor
