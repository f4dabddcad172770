// hosts/SyncProcess.cpp: the job to standard input, lines from standard output, and every end of
// it.
#include "hosts/SyncProcess.h"

#include <QObject>
#include <QPointer>
#include <QProcess>
#include <utility>

#include "platform/posix/ChildProgram.h"

namespace velkor {
namespace {

/// A list of calendars is one line.
constexpr qsizetype LongestLine = 16 << 20;

}  // namespace

SyncProcess::SyncProcess(const SyncJob& job, std::function<void(const SyncEvent&)> onEvent,
                         const std::string& program)
    : onEvent_(std::move(onEvent)),
      process_(std::make_unique<QProcess>()),
      receiver_(std::make_unique<QObject>()) {
  const auto hear = [this](auto signal, auto slot) {
    // Later, since whoever is told may destroy this, and with it the process whose signal it is.
    QObject::connect(process_.get(), signal, receiver_.get(), slot, Qt::QueuedConnection);
  };
  process_->setStandardErrorFile(QProcess::nullDevice());
  hear(&QProcess::readyReadStandardOutput, [this] { Take(); });
  hear(&QProcess::finished, [this](int code, QProcess::ExitStatus status) {
    const char* const how = status == QProcess::NormalExit ? "exit code " : "signal ";
    End("The program that talks to servers stopped with " + (how + std::to_string(code)) + ".");
  });
  hear(&QProcess::errorOccurred, [this](QProcess::ProcessError error) {
    if (error != QProcess::FailedToStart) return;
    End("The program " + process_->program().toStdString() + " could not be started.");
  });
  process_->start(
      program.empty() ? ProgramBeside(QStringLiteral("vkrSync")) : QString::fromStdString(program),
      QStringList());
  process_->write(QByteArray::fromStdString(LineOf(job)) + '\n');
  process_->closeWriteChannel();
}

SyncProcess::~SyncProcess() {
  receiver_.reset();
  Abandon(std::move(process_));
}

void SyncProcess::Take() {
  // It may be destroyed by whom it tells.
  const QObject* const receiver = receiver_.get();
  const QPointer<const QObject> alive(receiver);
  while (alive && !ended_ && process_->canReadLine()) {
    const auto event = ParseSyncEvent(process_->readLine().toStdString());
    if (event) Tell(*event);
  }
  if (alive && process_->bytesAvailable() > LongestLine) {
    process_->kill();
  }
}

void SyncProcess::Tell(const SyncEvent& event) {
  ended_ = std::holds_alternative<SyncOutcome>(event);
  // Whoever is told may destroy this, and with it what is called.
  const auto onEvent = onEvent_;
  onEvent(event);
}

void SyncProcess::End(const std::string& reason) {
  const QPointer<const QObject> alive(receiver_.get());
  Take();
  if (alive && !ended_) Tell(SyncOutcome{false, false, reason, {}, {}});
}

}  // namespace velkor
