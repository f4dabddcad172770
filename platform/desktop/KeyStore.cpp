// platform/desktop/KeyStore.cpp: jobs of QtKeychain, and the time that they may take.
#include "platform/desktop/KeyStore.h"

#include <qt6keychain/keychain.h>

#include <QObject>
#include <QTimer>
#include <chrono>
#include <utility>

namespace velkor {
namespace {

QString Service() {
  return QStringLiteral("OutlookVelkor");
}

QString KeyOf(const std::string& user, const std::string& host) {
  return QString::fromStdString(user + "@" + host);
}

std::string TroubleOf(const QKeychain::Job& job) {
  switch (job.error()) {
    case QKeychain::NoError:
    case QKeychain::EntryNotFound:
      return {};
    case QKeychain::AccessDenied:
    case QKeychain::AccessDeniedByUser:
      return "The system does not open its store for passwords.";
    default:
      return "This system has no store for passwords that can be used.";
  }
}

/// Answers once: when the job has ended, or when it takes too long.
void Start(QKeychain::Job& job, QObject& receiver, KeyStore::OnAnswer onAnswer,
           const std::function<std::optional<std::string>()>& password) {
  constexpr std::chrono::minutes Patience{2};
  QObject* const once = new QObject(&receiver);
  const auto answer = [once, onAnswer = std::move(onAnswer)](const KeyStoreAnswer& told) {
    if (once->parent() == nullptr) return;
    once->setParent(nullptr);
    once->deleteLater();
    onAnswer(told);
  };
  job.setInsecureFallback(false);
  QObject::connect(&job, &QKeychain::Job::finished, once,
                   [answer, password](QKeychain::Job* ended) {
                     const std::string trouble = TroubleOf(*ended);
                     const bool found = ended->error() == QKeychain::NoError;
                     answer({found && password ? password() : std::nullopt, trouble});
                   });
  QTimer::singleShot(Patience, once, [answer] {
    answer({std::nullopt, "The system's store for passwords does not answer."});
  });
  job.start();
}

}  // namespace

KeyStore::KeyStore() : receiver_(std::make_unique<QObject>()) {}

KeyStore::~KeyStore() = default;

void KeyStore::Find(const std::string& user, const std::string& host, OnAnswer onAnswer) {
  auto* const job = new QKeychain::ReadPasswordJob(Service());
  job->setKey(KeyOf(user, host));
  Start(*job, *receiver_, std::move(onAnswer),
        [job]() -> std::optional<std::string> { return job->textData().toStdString(); });
}

void KeyStore::Keep(const std::string& user, const std::string& host, const std::string& password,
                    OnAnswer onAnswer) {
  auto* const job = new QKeychain::WritePasswordJob(Service());
  job->setKey(KeyOf(user, host));
  job->setTextData(QString::fromStdString(password));
  Start(*job, *receiver_, std::move(onAnswer), {});
}

void KeyStore::Forget(const std::string& user, const std::string& host, OnAnswer onAnswer) {
  auto* const job = new QKeychain::DeletePasswordJob(Service());
  job->setKey(KeyOf(user, host));
  Start(*job, *receiver_, std::move(onAnswer), {});
}

}  // namespace velkor
