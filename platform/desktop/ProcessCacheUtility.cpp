// platform/desktop/ProcessCacheUtility.cpp: a worker for each refresh, and what its end tells.
#include "platform/desktop/ProcessCacheUtility.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <algorithm>
#include <exception>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/desktop/QtText.h"
#include "platform/posix/WorkerProcess.h"
#include "values/Text.h"

namespace velkor {
namespace {

// Result codes of a refresh that its process did not report itself.
constexpr short NothingToReport = 6;
constexpr short FetchingFailed = 7;
/// A refresh waits half a minute for its turn at most, and for the disk.
constexpr std::chrono::seconds Patience{60};

struct Report {
  short result = 0;
  long error = 0;
  /// Why it failed; may be empty.
  std::string words;
};

/// "RESULT ERROR WORDS" and a line's end; none for a text that is no whole report.
std::optional<Report> ReadReport(std::string_view text) {
  if (!text.ends_with('\n')) return std::nullopt;
  text.remove_suffix(1);
  const auto take = [&text] {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), word.size() + 1));
    return ParseInteger(word);
  };
  const auto result = take();
  const auto error = take();
  if (!result || !error || *result != static_cast<short>(*result)) return std::nullopt;
  return Report{static_cast<short>(*result), static_cast<long>(*error), std::string(text)};
}

class ProcessCacheUtility : public CacheUtility {
 public:
  ProcessCacheUtility(std::string program, WriteComplete writeComplete,
                      ProcessCacheUtilities::ErrorHandler onError)
      : options_{.program = std::move(program)},
        writeComplete_(std::move(writeComplete)),
        onError_(std::move(onError)) {}

  void Start(const RefreshInputs& inputs) override {
    if (worker_) {
      throw Error(errors::InvalidProcedureCall, "The cache utility has not completed yet.",
                  "VelkorCacheUtility");
    }
    stopped_ = false;
    calendar_ = inputs.storeId;
    const std::vector<std::string> job{"year",
                                       std::to_string(inputs.viewYear),
                                       std::to_string(inputs.firstMonth),
                                       inputs.cacheFile,
                                       inputs.workFile,
                                       inputs.folderId,
                                       inputs.storeId};
    worker_ = std::make_unique<WorkerProcess>(job, options_, Patience);
    worker_->WhenEnded([this] { Complete(); });
  }
  void Stop() override {
    if (!worker_) return;
    stopped_ = true;
    worker_->Kill();
  }

 private:
  Report TakeReport() {
    const auto worker = std::move(worker_);
    auto report = ReadReport(worker->Answer());
    if (report) return *std::move(report);
    if (stopped_) return {NothingToReport, 0, {}};
    const std::string why = worker->Fault().empty() ? "the reader gave no answer" : worker->Fault();
    return {FetchingFailed, errors::CalendarFailed,
            "The calendar file " + calendar_ + " could not be read: " + why + "."};
  }

  void Complete() {
    const Report report = TakeReport();
    // Copies: the completion may destroy this.
    const WriteComplete writeComplete = writeComplete_;
    const ProcessCacheUtilities::ErrorHandler onError = onError_;
    try {
      try {
        writeComplete(report.result, report.error);
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

  WorkerOptions options_;
  WriteComplete writeComplete_;
  ProcessCacheUtilities::ErrorHandler onError_;
  /// The file that is read.
  std::string calendar_;
  /// While a refresh runs.
  std::unique_ptr<WorkerProcess> worker_;
  bool stopped_ = false;
};

}  // namespace

ProcessCacheUtilities::ProcessCacheUtilities(ErrorHandler onError, std::string program)
    : onError_(std::move(onError)), program_(std::move(program)) {}

std::unique_ptr<CacheUtility> ProcessCacheUtilities::Create(WriteComplete writeComplete) {
  const std::string program =
      program_.empty() ? QCoreApplication::applicationDirPath().toStdString() + "/vkrRefresh"
                       : program_;
  if (const QFileInfo file(ToQt(program)); !file.isFile() || !file.isExecutable()) {
    throw Error(errors::InvalidProcedureCall,
                "The cache utility is not there, or may not be run: " + program,
                "VelkorCacheUtility");
  }
  return std::make_unique<ProcessCacheUtility>(program, std::move(writeComplete), onError_);
}

}  // namespace velkor
