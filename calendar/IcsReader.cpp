// calendar/IcsReader.cpp: starts, limits and stops the reading process.
#include "calendar/IcsReader.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>

#include "calendar/IcsAnswer.h"
#include "calendar/ShortHash.h"
#include "support/values/Error.h"

namespace velkor {
namespace {

constexpr std::size_t LargestAnswer = std::size_t{1} << 30;

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

/// A running reader; it does not outlive this object.
class ReadingProcess {
 public:
  ReadingProcess(const QString& program, const QStringList& arguments) {
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.setStandardErrorFile(QProcess::nullDevice());
    process_.start(program, arguments, QIODevice::ReadOnly);
  }
  ~ReadingProcess() {
    if (process_.state() == QProcess::NotRunning) return;
    process_.kill();
    process_.waitForFinished(-1);
  }
  ReadingProcess(const ReadingProcess&) = delete;
  ReadingProcess& operator=(const ReadingProcess&) = delete;

  /// All that it writes until it ends by itself.
  std::string Answer(const std::string& path, std::chrono::milliseconds timeLimit) {
    const QDeadlineTimer deadline(timeLimit);
    std::string answer;
    if (!process_.waitForStarted(-1)) {
      Fail(path, "the reader " + process_.program().toStdString() + " could not be started");
    }
    while (process_.state() != QProcess::NotRunning) {
      const bool more = process_.waitForReadyRead(static_cast<int>(deadline.remainingTime()));
      Take(path, answer);
      if (more) continue;
      if (!process_.waitForFinished(static_cast<int>(deadline.remainingTime())) &&
          process_.state() != QProcess::NotRunning) {
        Fail(path, "it took longer than " + std::to_string(timeLimit.count()) + " ms");
      }
    }
    Take(path, answer);
    if (process_.exitStatus() == QProcess::CrashExit) {
      Fail(path, "the reader stopped with signal " + std::to_string(process_.exitCode()));
    }
    if (process_.exitCode() != 0) {
      Fail(path, "the reader stopped with exit code " + std::to_string(process_.exitCode()));
    }
    return answer;
  }

 private:
  void Take(const std::string& path, std::string& answer) {
    const QByteArray bytes = process_.readAllStandardOutput();
    if (answer.size() + static_cast<std::size_t>(bytes.size()) > LargestAnswer) {
      Fail(path, "the reader's answer is too large");
    }
    answer.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  }

  QProcess process_;
};

std::string FolderIdOf(const std::string& path) {
  return ShortHash(QFileInfo(QString::fromStdString(path)).absoluteFilePath().toStdString());
}

}  // namespace

ParsedCalendar ReadIcsFile(const std::string& path, const DateWindow& window,
                           const IcsReaderOptions& options) {
  const auto number = [](auto value) { return QString::number(value); };
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(options.timeLimit).count();
  const QStringList arguments{QString::fromStdString(path), number(window.from.Seconds()),
                              number(window.to.Seconds()), number(options.memoryLimit),
                              number(seconds)};
  ReadingProcess process(ProgramOf(options), arguments);
  const std::string answer = process.Answer(path, options.timeLimit);
  try {
    return DecodeAnswer(answer);
  } catch (const Error& error) {
    if (error.Source() == "Answer") Fail(path, error.Description());
    throw;
  }
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
