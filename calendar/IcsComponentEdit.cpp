// calendar/IcsComponentEdit.cpp: x.
