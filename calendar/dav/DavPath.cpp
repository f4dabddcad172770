// calendar/dav/DavPath.cpp: QUrl for addresses, one spelling for their paths.
#include "calendar/dav/DavPath.h"

#include <QUrl>
#include <algorithm>
#include <vector>

#include "values/Text.h"

namespace velkor {
namespace {

QString Text(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

bool IsPlain(char c) {
  return IsLetter(c) || IsDigit(c) ||
         std::string_view("-._~/@:!$&'()*+,;=").find(c) != std::string_view::npos;
}

void AppendEncoded(std::string& path, char c) {
  constexpr std::string_view Digits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  path += '%';
  path += Digits[byte >> 4];
  path += Digits[byte & 0xF];
}

QString SchemeHostAndPort(const QUrl& url) {
  const int usual = url.scheme() == QLatin1String("https") ? 443 : 80;
  return url.scheme() + "://" + url.host() + ":" + QString::number(url.port(usual));
}

}  // namespace

std::string CanonicalPath(std::string_view path) {
  const std::string bytes(path);
  std::string canonical;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const QByteArray pair =
        QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()))
            .mid(static_cast<qsizetype>(i) + 1, 2);
    bool isHexadecimal = false;
    const auto byte = static_cast<char>(pair.toUInt(&isHexadecimal, 16));
    if (bytes[i] == '%' && pair.size() == 2 && isHexadecimal) {
      // An encoded slash parts nothing.
      if (IsPlain(byte) && byte != '/') {
        canonical += byte;
      } else {
        AppendEncoded(canonical, byte);
      }
      i += 2;
    } else if (IsPlain(bytes[i])) {
      canonical += bytes[i];
    } else {
      AppendEncoded(canonical, bytes[i]);
    }
  }
  return canonical;
}

std::optional<std::string> WholeUrl(const std::string& url, std::string_view href) {
  const QUrl whole = QUrl(Text(url)).resolved(QUrl(Text(href)));
  const bool isWeb =
      whole.scheme() == QLatin1String("http") || whole.scheme() == QLatin1String("https");
  if (!whole.isValid() || !isWeb || whole.host().isEmpty()) return std::nullopt;
  return whole.adjusted(QUrl::RemoveUserInfo | QUrl::RemoveFragment)
      .toString(QUrl::FullyEncoded)
      .toStdString();
}

std::optional<std::string> ObjectHref(const std::string& collection, std::string_view href) {
  const auto whole = WholeUrl(collection, href);
  if (!whole || !IsSameServer(*whole, collection)) return std::nullopt;
  const auto pathOf = [](const std::string& url) {
    return CanonicalPath(QUrl(Text(url)).path(QUrl::FullyEncoded).toStdString());
  };
  const std::string folder = pathOf(CollectionUrl(collection));
  std::string path = pathOf(*whole);
  const bool isInside = path.size() > folder.size() && path.starts_with(folder) &&
                        path.find('/', folder.size()) == std::string::npos;
  return isInside ? std::optional(std::move(path)) : std::nullopt;
}

std::string ObjectUrl(const std::string& collection, std::string_view href) {
  return WholeUrl(collection, href).value_or(collection);
}

std::string NewObjectHref(const std::string& collection, std::string_view name, int attempt) {
  const QUrl folder(Text(CollectionUrl(collection)));
  const std::string path = CanonicalPath(folder.path(QUrl::FullyEncoded).toStdString());
  if (attempt == 0) return path + std::string(name);
  const std::size_t dot = std::min(name.rfind('.'), name.size());
  return path + std::string(name.substr(0, dot)) + "-" + std::to_string(attempt + 1) +
         std::string(name.substr(dot));
}

std::string CollectionUrl(std::string_view url) {
  return std::string(url) + (url.ends_with('/') ? "" : "/");
}

bool IsSameServer(const std::string& one, const std::string& other) {
  return SchemeHostAndPort(QUrl(Text(one))) == SchemeHostAndPort(QUrl(Text(other)));
}

bool IsOfSameOwner(const std::string& known, const std::string& other) {
  constexpr std::size_t LongestOfRegistry = 3;
  const QUrl from(Text(known));
  const QUrl to(Text(other));
  if (from.scheme() != QLatin1String("https") || to.scheme() != from.scheme()) return false;
  const std::string host = from.host().toStdString();
  const std::vector<std::string> labels = Split(host, ".");
  if (labels.size() < 2 || to.host() == from.host()) return false;
  const bool isBelow = labels.size() > 2 && labels[1].size() > LongestOfRegistry;
  const std::string domain = isBelow ? host.substr(labels[0].size()) : "." + host;
  return to.host().toStdString().ends_with(domain);
}

}  // namespace velkor
