// hosts/yearplan/window/PlannerApplication.cpp: the event loop, which no failure leaves.
#include "hosts/yearplan/window/PlannerApplication.h"

#include <QMessageBox>
#include <exception>

#include "platform/desktop/QtMessageBoxes.h"

namespace velkor {

bool PlannerApplication::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& error) {
    Tell(error.what());
  }
  return true;
}

void PlannerApplication::Tell(const char* what) {
  // One that comes while the last is told, as from painting behind the box, would never end.
  if (telling_) return;
  telling_ = true;
  try {
    QMessageBox box(QMessageBox::Critical, QString::fromLatin1(ProgramName),
                    QStringLiteral("Something went wrong; what was being done is not complete."),
                    QMessageBox::Ok, activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(QString::fromUtf8(what));
    box.exec();
  } catch (const std::exception&) {
    // Not even the box could be made.
  }
  telling_ = false;
}

}  // namespace velkor
