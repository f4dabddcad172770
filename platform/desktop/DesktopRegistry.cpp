// platform/desktop/DesktopRegistry.cpp: looking up a key and a value in the JSON file.
#include "platform/desktop/DesktopRegistry.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "platform/desktop/DesktopSystem.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

QString NameOf(RootKey root) {
  const auto* const found =
      std::ranges::find(RootKeyNames, root, [](const auto& each) { return each.second; });
  return found == RootKeyNames.end() ? QString() : ToQt(found->first);
}

/// The value of a name in any case, as the registry compares names.
QJsonValue Find(const QJsonObject& object, const QString& name) {
  for (auto at = object.begin(); at != object.end(); ++at) {
    if (at.key().compare(name, Qt::CaseInsensitive) == 0) return at.value();
  }
  return QJsonValue(QJsonValue::Undefined);
}

/// UTF-16 with the low byte first.
std::string Utf16BytesOf(const QString& text) {
  std::string bytes;
  for (const QChar unit : text) {
    bytes.push_back(static_cast<char>(unit.cell()));
    bytes.push_back(static_cast<char>(unit.row()));
  }
  return bytes;
}

}  // namespace

DesktopRegistry::DesktopRegistry(std::string path)
    : path_(path.empty() ? ConfigurationFile("registry.json") : std::move(path)) {}

RegistryAnswer DesktopRegistry::QueryValue(RootKey root, std::string_view subKey,
                                           std::string_view name) {
  QFile file(QString::fromStdString(path_));
  if (!file.exists()) return {registry_codes::FileNotFound, {}};
  if (!file.open(QIODevice::ReadOnly)) return {registry_codes::AccessDenied, {}};
  const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
  if (!document.isObject()) return {registry_codes::CantRead, {}};
  const QJsonValue key = Find(document.object(), NameOf(root) + u'\\' + ToQt(subKey));
  const QJsonValue value = Find(key.toObject(), ToQt(name));
  if (value.isUndefined()) return {registry_codes::FileNotFound, {}};
  const QJsonValue utf16 = value.toObject().value(u"utf16");
  if (utf16.isString()) return {registry_codes::Success, Utf16BytesOf(utf16.toString())};
  if (!value.isString()) return {registry_codes::CantRead, {}};
  return {registry_codes::Success, value.toString().toStdString()};
}

}  // namespace velkor
