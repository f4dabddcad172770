// calendar/IcsCalendar.cpp: x.
