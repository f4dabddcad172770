// tests/platform/desktop/CalendarText.h: calendar files of any length, for tests.
#pragma once

#include <QByteArray>

namespace velkor {

/// A calendar of all-day events of 2026; `properties` are added to each.
inline QByteArray Calendar(int events, const QByteArray& properties = {}) {
  QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//test//\r\n";
  for (int i = 0; i < events; ++i) {
    const QByteArray day = QByteArray::number(20260101 + i % 12 * 100 + i % 28);
    text += "BEGIN:VEVENT\r\nUID:u" + QByteArray::number(i) + "\r\nDTSTART;VALUE=DATE:" + day +
            "\r\nSUMMARY:Event " + QByteArray::number(i) + "\r\n" + properties + "END:VEVENT\r\n";
  }
  return text + "END:VCALENDAR\r\n";
}

}  // namespace velkor
