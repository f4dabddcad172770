// platform/posix/WorkerProcess.cpp: starts, hears, limits and kills the worker.
#include "platform/posix/WorkerProcess.h"

#include <QObject>
#include <QProcess>
#include <QTimer>
#include <csignal>
#include <utility>

#include "platform/posix/ChildProgram.h"

namespace velkor {
namespace {

constexpr std::size_t LargestAnswer = std::size_t{1} << 30;

QString ProgramOf(const WorkerOptions& options) {
  return options.program.empty() ? ProgramBeside(QStringLiteral("vkrRefresh"))
                                 : QString::fromStdString(options.program);
}

}  // namespace

WorkerProcess::WorkerProcess(const std::vector<std::string>& job, const WorkerOptions& options,
                             std::chrono::milliseconds patience)
    : timeLimit_(options.timeLimit),
      patience_(patience),
      process_(std::make_unique<QProcess>()),
      receiver_(std::make_unique<QObject>()) {
  process_->setStandardInputFile(QProcess::nullDevice());
  process_->setStandardErrorFile(QProcess::nullDevice());
  const auto hear = [this](auto signal, auto slot) {
    QObject::connect(process_.get(), signal, receiver_.get(), slot);
  };
  hear(&QProcess::readyReadStandardOutput, [this] { Take(); });
  hear(&QProcess::finished, [this](int code, QProcess::ExitStatus status) {
    Take();
    const std::string number = std::to_string(code);
    if (status == QProcess::NormalExit) {
      End(code == 0 ? std::string() : "the reader stopped with exit code " + number);
    } else if (code == SIGALRM || code == SIGXCPU) {
      EndTooLate();
    } else {
      End("the reader stopped with signal " + number);
    }
  });
  hear(&QProcess::errorOccurred, [this](QProcess::ProcessError error) {
    if (error != QProcess::FailedToStart) return;
    End("the reader " + process_->program().toStdString() + " could not be started");
  });
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(timeLimit_).count();
  QStringList arguments{QString::number(options.memoryLimit), QString::number(seconds)};
  for (const std::string& argument : job) arguments += QString::fromStdString(argument);
  process_->start(ProgramOf(options), arguments, QIODevice::ReadOnly);
}

WorkerProcess::~WorkerProcess() {
  receiver_.reset();
  Abandon(std::move(process_));
}

void WorkerProcess::Take() {
  const QByteArray bytes = process_->readAllStandardOutput();
  if (answer_.size() + static_cast<std::size_t>(bytes.size()) > LargestAnswer) {
    End("the reader's answer is too large");
  }
  if (!ended_) answer_.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void WorkerProcess::End(std::string fault) {
  if (ended_) return;
  ended_ = true;
  fault_ = std::move(fault);
  Kill();
  if (onEnd_) PostEnd();
}

void WorkerProcess::EndTooLate() {
  End("it took longer than " + std::to_string(timeLimit_.count()) + " ms");
}

/// Later, since whoever is told may destroy this, and with it the process whose signal this is in.
void WorkerProcess::PostEnd() {
  QMetaObject::invokeMethod(receiver_.get(), std::move(onEnd_), Qt::QueuedConnection);
}

void WorkerProcess::WhenEnded(std::function<void()> onEnd) {
  onEnd_ = std::move(onEnd);
  if (ended_) {
    PostEnd();
  } else {
    QTimer::singleShot(timeLimit_ + patience_, receiver_.get(), [this] { EndTooLate(); });
  }
}

void WorkerProcess::Wait() {
  process_->waitForFinished(static_cast<int>((timeLimit_ + patience_).count()));
  EndTooLate();
}

void WorkerProcess::Kill() {
  if (process_->state() != QProcess::NotRunning) process_->kill();
}

}  // namespace velkor
