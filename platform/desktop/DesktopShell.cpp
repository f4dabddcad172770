// platform/desktop/DesktopShell.cpp: the event loop, the pointer and the browser by Qt.
#include "platform/desktop/DesktopShell.h"

#include <QApplication>
#include <QCursor>
#include <QDesktopServices>
#include <QEventLoop>
#include <QGuiApplication>
#include <QMessageBox>
#include <QTimer>
#include <QUrl>
#include <chrono>

#include "platform/desktop/QtMessageBoxes.h"
#include "platform/desktop/QtText.h"

namespace velkor {

void DesktopShell::ProcessMessages() {
  QEventLoop loop;
  QTimer::singleShot(std::chrono::milliseconds(2), Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

void DesktopShell::SetWaitPointer(bool wait) {
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) return;
  if (wait) {
    QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
  } else {
    QGuiApplication::restoreOverrideCursor();
  }
}

void DesktopShell::Beep() {
  QApplication::beep();
}

void DesktopShell::OpenPage(const std::string& address) {
  const QUrl page = QUrl::fromUserInput(ToQt(address));
  if (QDesktopServices::openUrl(page)) return;
  QMessageBox::information(QApplication::activeWindow(), ProgramName,
                           QStringLiteral("No program was found that shows this page:\n%1")
                               .arg(page.isLocalFile() ? page.toLocalFile() : page.toString()));
}

}  // namespace velkor
