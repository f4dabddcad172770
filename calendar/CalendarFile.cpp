// calendar/CalendarFile.cpp: x.
