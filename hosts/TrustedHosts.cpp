// hosts/TrustedHosts.cpp: the trusted certificates as one value of the settings, in JSON.
#include "hosts/TrustedHosts.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace velkor {
namespace {

constexpr std::string_view Application = "yearplan";
constexpr std::string_view Section = "Servers";
constexpr std::string_view Key = "Trusted certificates";

}  // namespace

std::map<std::string, std::string> TrustedHosts(Settings& settings) {
  const std::string text = settings.Get(Application, Section, Key, "");
  const QJsonObject all = QJsonDocument::fromJson(QByteArray::fromStdString(text)).object();
  std::map<std::string, std::string> trusted;
  for (auto each = all.begin(); each != all.end(); ++each) {
    if (each->isString()) trusted[each.key().toStdString()] = each->toString().toStdString();
  }
  return trusted;
}

void TrustHost(Settings& settings, const std::string& host, const std::string& sha256) {
  QJsonObject all;
  for (const auto& [name, print] : TrustedHosts(settings)) {
    all[QString::fromStdString(name)] = QString::fromStdString(print);
  }
  all[QString::fromStdString(host)] = QString::fromStdString(sha256);
  settings.Save(Application, Section, Key,
                QJsonDocument(all).toJson(QJsonDocument::Compact).toStdString());
}

}  // namespace velkor
