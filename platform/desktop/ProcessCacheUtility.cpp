// platform/desktop/ProcessCacheUtility.cpp: starts, hears and ends the child process.
#include "platform/desktop/ProcessCacheUtility.h"

#include <signal.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <exception>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/desktop/QtText.h"
#include "platform/desktop/RefreshProtocol.h"

namespace velkor {
namespace {

// Result codes of a refresh that its process did not report itself.
constexpr short NothingToReport = 6;
constexpr short FetchingFailed = 7;

/// Kills a process and lets the event loop see to its end.
void Abandon(std::unique_ptr<QProcess> process) {
  QProcess* const left = process.release();
  left->disconnect();
  if (left->state() == QProcess::NotRunning) {
    left->deleteLater();
    return;
  }
  QObject::connect(left, &QProcess::finished, left, &QObject::deleteLater);
  QObject::connect(left, &QProcess::errorOccurred, left, [left] {
    if (left->state() == QProcess::NotRunning) left->deleteLater();
  });
  // The application deletes it when the loop does not run any more.
  left->setParent(QCoreApplication::instance());
  // The processes that it started are of its group.
  const auto group = static_cast<pid_t>(left->processId());
  if (group > 0) ::kill(-group, SIGKILL);
  left->kill();
}

class ProcessCacheUtility : public CacheUtility {
 public:
  ProcessCacheUtility(QString program, WriteComplete writeComplete,
                      ProcessCacheUtilities::ErrorHandler onError)
      : program_(std::move(program)),
        writeComplete_(std::move(writeComplete)),
        onError_(std::move(onError)) {}
  ~ProcessCacheUtility() override {
    if (process_) Abandon(std::move(process_));
  }
  ProcessCacheUtility(const ProcessCacheUtility&) = delete;
  ProcessCacheUtility& operator=(const ProcessCacheUtility&) = delete;

  void Start(const RefreshInputs& inputs) override {
    if (running_) {
      throw Error(errors::InvalidProcedureCall, "The cache utility has not completed yet.",
                  "VelkorCacheUtility");
    }
    if (!process_ || process_->state() == QProcess::NotRunning) Spawn();
    running_ = true;
    stopping_ = false;
    Send({inputs});
  }
  void Stop() override {
    if (!running_ || stopping_) return;
    stopping_ = true;
    Send({});
  }

 private:
  void Spawn() {
    if (process_) Abandon(std::move(process_));
    input_.clear();
    process_ = std::make_unique<QProcess>();
    process_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // Queued, so that nothing is reported from within Start, and nothing once this is gone.
    const auto hear = [this](auto signal, auto slot) {
      QObject::connect(process_.get(), signal, &receiver_, slot, Qt::QueuedConnection);
    };
    const int spawned = ++spawned_;
    hear(&QProcess::readyReadStandardOutput, [=, this] { Hear(spawned); });
    hear(&QProcess::finished, [=, this] { End(spawned); });
    hear(&QProcess::errorOccurred, [=, this](QProcess::ProcessError error) {
      if (error == QProcess::FailedToStart) End(spawned);
    });
    process_->start(program_, {});
  }

  void Send(const refresh_protocol::Command& command) {
    const std::string line = refresh_protocol::Encode(command);
    process_->write(line.data(), static_cast<qint64>(line.size()));
  }

  /// Takes whole lines, each of which may end the process or this.
  /// @param spawned  the process that wrote them; one of before is not heard
  void Hear(int spawned) {
    const QPointer<QObject> alive = &receiver_;
    const auto isHeard = [&] { return alive && process_ && spawned == spawned_; };
    if (isHeard()) input_ += process_->readAllStandardOutput();
    while (isHeard()) {
      const qsizetype end = input_.indexOf('\n');
      if (end < 0) break;
      const QByteArray line = input_.left(end);
      input_.remove(0, end + 1);
      HearLine({line.constData(), static_cast<std::size_t>(line.size())});
    }
    if (isHeard() && input_.size() > static_cast<qsizetype>(refresh_protocol::LongestLine)) {
      GiveUp("The cache utility does not end what it reports.");
    }
  }
  void HearLine(std::string_view line) {
    if (!running_) return;
    const auto report = refresh_protocol::DecodeReport(line);
    if (report) {
      Complete(*report);
    } else {
      GiveUp("The cache utility reported what nobody understands.");
    }
  }

  /// The process is gone, or was never there.
  void End(int spawned) {
    const QPointer<QObject> alive = &receiver_;
    Hear(spawned);
    if (alive && process_ && spawned == spawned_) {
      GiveUp("The cache utility ended before it was done.");
    }
  }
  void GiveUp(const char* words) {
    Abandon(std::move(process_));
    if (running_) Complete({stopping_ ? NothingToReport : FetchingFailed, 0, words});
  }

  void Complete(const refresh_protocol::Report& report) {
    running_ = false;
    // Copies: the completion may destroy this.
    const WriteComplete writeComplete = writeComplete_;
    const ProcessCacheUtilities::ErrorHandler onError = onError_;
    try {
      try {
        writeComplete(report.synchResult, report.synchError);
      } catch (const Error& error) {
        if (!onError) return;
        onError(report.words.empty() ? error : Error(error.Number(), report.words, error.Source()));
      } catch (const std::exception& error) {
        if (onError) onError(Error(errors::InvalidProcedureCall, error.what()));
      }
    } catch (...) {
      // Nothing may be thrown through the event loop, and there is nobody else to tell.
    }
  }

  QString program_;
  WriteComplete writeComplete_;
  ProcessCacheUtilities::ErrorHandler onError_;
  std::unique_ptr<QProcess> process_;
  /// Number of processes so far, which tells a process from one of before.
  int spawned_ = 0;
  /// What the process has written since its last whole line.
  QByteArray input_;
  /// A refresh was started and has not completed.
  bool running_ = false;
  bool stopping_ = false;
  /// Its end drops the reports that wait.
  QObject receiver_;
};

}  // namespace

ProcessCacheUtilities::ProcessCacheUtilities(ErrorHandler onError, std::string program)
    : onError_(std::move(onError)), program_(std::move(program)) {}

std::unique_ptr<CacheUtility> ProcessCacheUtilities::Create(WriteComplete writeComplete) {
  const QString program =
      program_.empty() ? QCoreApplication::applicationDirPath() + QStringLiteral("/vkrRefresh")
                       : ToQt(program_);
  if (const QFileInfo file(program); !file.isFile() || !file.isExecutable()) {
    throw Error(errors::InvalidProcedureCall,
                "The cache utility is not there, or may not be run: " + program.toStdString(),
                "VelkorCacheUtility");
  }
  return std::make_unique<ProcessCacheUtility>(program, std::move(writeComplete), onError_);
}

}  // namespace velkor
