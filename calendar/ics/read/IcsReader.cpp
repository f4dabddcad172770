// calendar/ics/read/IcsReader.cpp: starts, limits and stops the reading process.
#include "calendar/ics/read/IcsReader.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QObject>
#include <QProcess>
#include <QTimer>
#include <utility>

#include "calendar/ics/file/CalendarFile.h"
#include "calendar/ics/file/ShortHash.h"
#include "calendar/ics/read/IcsAnswer.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr std::size_t LargestAnswer = std::size_t{1} << 30;
/// Milliseconds that the end of a killed reader is waited for.
constexpr int LongestGoodbye = 100;

[[noreturn]] void Fail(const std::string& path, const std::string& why) {
  throw Error(errors::CalendarFailed,
              "The calendar file " + path + " could not be read: " + why + ".", "Calendar");
}

QString ProgramOf(const IcsReaderOptions& options) {
  if (!options.program.empty()) return QString::fromStdString(options.program);
  const QString folder =
      QCoreApplication::instance()
          ? QCoreApplication::applicationDirPath()
          : QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget().section('/', 0, -2);
  return folder + QStringLiteral("/yearplan-read");
}

/// Kills a reader. What is killed ends at once, unless its disk hangs; then the event loop sees to
/// its end.
void Abandon(std::unique_ptr<QProcess> process) {
  if (process->state() == QProcess::NotRunning) return;
  process->kill();
  if (process->waitForFinished(LongestGoodbye) || !QCoreApplication::instance()) return;
  QProcess* const left = process.release();
  left->setParent(QCoreApplication::instance());
  QObject::connect(left, &QProcess::finished, left, &QObject::deleteLater);
}

/// What a stopped save left is no reason not to read; the next save tells when it stays.
void FinishStoppedSave(const std::string& path) {
  try {
    CalendarFile(path).FinishStoppedSave();
  } catch (const Error&) {
    // The file may be gone, or for reading only.
  }
}

std::string FolderIdOf(const std::string& path) {
  return ShortHash(QFileInfo(QString::fromStdString(path)).absoluteFilePath().toStdString());
}

}  // namespace

IcsReading::IcsReading(std::string path, const DateWindow& window, const IcsReaderOptions& options)
    : path_(std::move(path)),
      timeLimit_(options.timeLimit),
      process_(std::make_unique<QProcess>()),
      receiver_(std::make_unique<QObject>()) {
  FinishStoppedSave(path_);
  process_->setStandardInputFile(QProcess::nullDevice());
  process_->setStandardErrorFile(QProcess::nullDevice());
  const auto hear = [this](auto signal, auto slot) {
    QObject::connect(process_.get(), signal, receiver_.get(), slot);
  };
  hear(&QProcess::readyReadStandardOutput, [this] { Take(); });
  hear(&QProcess::finished, [this](int code, QProcess::ExitStatus status) {
    Take();
    const std::string number = std::to_string(code);
    if (status == QProcess::CrashExit) {
      End("the reader stopped with signal " + number);
    } else {
      End(code == 0 ? std::string() : "the reader stopped with exit code " + number);
    }
  });
  hear(&QProcess::errorOccurred, [this](QProcess::ProcessError error) {
    if (error != QProcess::FailedToStart) return;
    End("the reader " + process_->program().toStdString() + " could not be started");
  });
  const auto number = [](auto value) { return QString::number(value); };
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(timeLimit_).count();
  process_->start(ProgramOf(options),
                  {QString::fromStdString(path_), number(window.from.Seconds()),
                   number(window.to.Seconds()), number(options.memoryLimit), number(seconds)},
                  QIODevice::ReadOnly);
}

IcsReading::~IcsReading() {
  receiver_.reset();
  Abandon(std::move(process_));
}

void IcsReading::Take() {
  const QByteArray bytes = process_->readAllStandardOutput();
  if (answer_.size() + static_cast<std::size_t>(bytes.size()) > LargestAnswer) {
    End("the reader's answer is too large");
  }
  if (!ended_) answer_.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void IcsReading::End(std::string fault) {
  if (ended_) return;
  ended_ = true;
  fault_ = std::move(fault);
  if (process_->state() != QProcess::NotRunning) process_->kill();
  if (onEnd_) PostEnd();
}

void IcsReading::EndTooLate() {
  End("it took longer than " + std::to_string(timeLimit_.count()) + " ms");
}

/// Later, since whoever is told may destroy this, and with it the process whose signal this is in.
void IcsReading::PostEnd() {
  QMetaObject::invokeMethod(receiver_.get(), std::move(onEnd_), Qt::QueuedConnection);
}

void IcsReading::WhenEnded(std::function<void()> onEnd) {
  onEnd_ = std::move(onEnd);
  if (ended_) {
    PostEnd();
  } else {
    QTimer::singleShot(timeLimit_, receiver_.get(), [this] { EndTooLate(); });
  }
}

void IcsReading::Wait() {
  process_->waitForFinished(static_cast<int>(timeLimit_.count()));
  EndTooLate();
}

ParsedCalendar IcsReading::Result() const {
  if (!fault_.empty()) Fail(path_, fault_);
  try {
    return DecodeAnswer(answer_);
  } catch (const Error& error) {
    if (error.Source() == "Answer") Fail(path_, error.Description());
    throw;
  }
}

ParsedCalendar ReadIcsFile(const std::string& path, const DateWindow& window,
                           const IcsReaderOptions& options) {
  IcsReading reading(path, window, options);
  reading.Wait();
  return reading.Result();
}

std::vector<Diagnostic> OpenIcsCalendar(CalendarStore& store, const std::string& path,
                                        const DateWindow& window, const IcsReaderOptions& options) {
  ParsedCalendar calendar = ReadIcsFile(path, window, options);
  CalendarFolder& folder =
      store.AddFolder(std::move(calendar.name), FolderIdOf(path), outlook::ItemTypeAppointment);
  folder.Replace(std::move(calendar.items), window);
  folder.SetLoader(
      [path, options](const DateWindow& wider) { return ReadIcsFile(path, wider, options).items; });
  store.SetDefaultCalendar(&folder);
  return std::move(calendar.diagnostics);
}

}  // namespace velkor
