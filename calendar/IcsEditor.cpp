// calendar/IcsEditor.cpp: x.
