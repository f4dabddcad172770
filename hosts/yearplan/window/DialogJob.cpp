// hosts/yearplan/window/DialogJob.cpp: what vkrSync tells while a dialog waits.
#include "hosts/yearplan/window/DialogJob.h"

#include <QDialog>
#include <utility>

#include "hosts/TrustedHosts.h"
#include "hosts/yearplan/window/ServerQuestions.h"

namespace velkor {

void DialogJob::Run(SyncJob job) {
  job_ = std::move(job);
  job_.trusted = TrustedHosts(settings_);
  certificate_.reset();
  login_.reset();
  process_ = std::make_unique<SyncProcess>(
      job_, [this](const SyncEvent& event) { Take(event); }, program_);
}

void DialogJob::Take(const SyncEvent& event) {
  if (const auto* const step = std::get_if<SyncStep>(&event)) {
    answers_.step(*step);
  } else if (const auto* const certificate = std::get_if<CertificateFault>(&event)) {
    certificate_ = *certificate;
  } else if (const auto* const login = std::get_if<SyncLogin>(&event)) {
    login_ = *login;
  } else if (const auto* const outcome = std::get_if<SyncOutcome>(&event)) {
    outcome_ = *outcome;
    // A question opens a loop of its own, which the process must not be waiting for.
    QMetaObject::invokeMethod(
        &receiver_, [this] { End(); }, Qt::QueuedConnection);
  } else {
    answers_.found(event);
  }
}

void DialogJob::End() {
  // Stopped, perhaps, between the outcome and now.
  if (!process_) return;
  process_.reset();
  if (outcome_.done) return answers_.done();
  if (login_) return answers_.login(outcome_.reason);
  if (!certificate_) return answers_.failed(outcome_.reason);
  const CertificateFault certificate = *certificate_;
  if (!AskToTrust(&dialog_, certificate)) return answers_.failed(outcome_.reason);
  TrustHost(settings_, certificate.host, certificate.sha256);
  Run(job_);
}

}  // namespace velkor
