// calendar/net/HttpDate.cpp: dates of HTTP headers by Qt.
#include "calendar/net/HttpDate.h"

#include <QDateTime>

namespace velkor {

std::int64_t SecondsNow() {
  return QDateTime::currentSecsSinceEpoch();
}

std::optional<std::int64_t> SecondsOfHttpDate(std::string_view text) {
  QString date = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).trimmed();
  // All these dates are of Greenwich, which mail, whose dates Qt reads, tells as an offset.
  if (date.endsWith(QStringLiteral("GMT"))) date = date.chopped(3) + QStringLiteral("+0000");
  const QDateTime time = QDateTime::fromString(date, Qt::RFC2822Date);
  if (!time.isValid()) return std::nullopt;
  return time.toSecsSinceEpoch();
}

}  // namespace velkor
