// tests/calendar/IcsCalendarTest.cpp: x.
