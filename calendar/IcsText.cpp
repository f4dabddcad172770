// calendar/IcsText.cpp: x.
