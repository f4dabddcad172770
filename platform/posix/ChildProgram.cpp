// platform/posix/ChildProgram.cpp: the folder of the running program, and the end of a killed one.
#include "platform/posix/ChildProgram.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

namespace velkor {

QString ProgramBeside(const QString& name) {
  const QString folder =
      QCoreApplication::instance()
          ? QCoreApplication::applicationDirPath()
          : QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget().section('/', 0, -2);
  return folder + '/' + name;
}

void Abandon(std::unique_ptr<QProcess> process) {
  // Milliseconds. What is killed ends at once, unless its disk hangs; then the event loop sees to
  // its end.
  constexpr int LongestGoodbye = 100;
  if (process->state() == QProcess::NotRunning) return;
  process->kill();
  if (process->waitForFinished(LongestGoodbye) || !QCoreApplication::instance()) return;
  QProcess* const left = process.release();
  left->setParent(QCoreApplication::instance());
  QObject::connect(left, &QProcess::finished, left, &QObject::deleteLater);
}

}  // namespace velkor
