// tests/platform/desktop/CalendarText.h: calendar files of any length, for tests.
#pragma once

#include <QByteArray>

namespace velkor {

inline QByteArray Event(const QByteArray& uid, const QByteArray& lines) {
  return "BEGIN:VEVENT\r\nUID:" + uid + "\r\n" + lines + "END:VEVENT\r\n";
}

inline QByteArray CalendarOf(const QByteArray& events) {
  return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//test//\r\n" + events + "END:VCALENDAR\r\n";
}

/// A calendar of all-day events of 2026; `properties` are added to each.
inline QByteArray Calendar(int events, const QByteArray& properties = {}) {
  QByteArray text;
  for (int i = 0; i < events; ++i) {
    const QByteArray number = QByteArray::number(i);
    const QByteArray day = QByteArray::number(20260101 + i % 12 * 100 + i % 28);
    text += Event("u" + number, "DTSTART;VALUE=DATE:" + day + "\r\nSUMMARY:Event " + number +
                                    "\r\n" + properties);
  }
  return CalendarOf(text);
}

}  // namespace velkor
