// hosts/yearplan/window/DialogJob.h: a job of vkrSync that a dialog waits for.
#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <string>

#include "hosts/SyncProcess.h"

class QDialog;

namespace velkor {

class Settings;

/// One job at a time. Asks itself whether a certificate is to be trusted, and does the job again.
class DialogJob {
 public:
  /// What the dialog hears.
  struct Answers {
    std::function<void(const SyncStep&)> step;
    /// What was found.
    std::function<void(const SyncEvent&)> found;
    std::function<void()> done;
    std::function<void(const std::string& why)> failed;
    std::function<void(const std::string& why)> login;
  };

  /// Both outlive this.
  DialogJob(QDialog& dialog, Settings& settings, std::string program)
      : dialog_(dialog), settings_(settings), program_(std::move(program)) {}

  void Hear(Answers answers) { answers_ = std::move(answers); }
  void Run(SyncJob job);
  void Stop() { process_.reset(); }

 private:
  void Take(const SyncEvent& event);
  void End();

  QDialog& dialog_;
  Settings& settings_;
  std::string program_;
  Answers answers_;
  SyncJob job_;
  std::unique_ptr<SyncProcess> process_;
  std::optional<CertificateFault> certificate_;
  std::optional<SyncLogin> login_;
  SyncOutcome outcome_;
  /// What is posted to it comes not at all after the end of this.
  QObject receiver_;
};

}  // namespace velkor
