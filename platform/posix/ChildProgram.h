// platform/posix/ChildProgram.h: finds the programs that stand beside the running one, and ends
// them.
#pragma once

#include <QString>
#include <memory>

class QProcess;

namespace velkor {

/// The path of a program in the folder of the running one.
QString ProgramBeside(const QString& name);

/// Kills a program and lets go of it without waiting for its end for long.
void Abandon(std::unique_ptr<QProcess> process);

}  // namespace velkor
