// hosts/yearplan/window/DroppedCalendars.cpp: files by their endings, addresses by their schemes.
#include "hosts/yearplan/window/DroppedCalendars.h"

#include <QMimeData>
#include <QUrl>

namespace velkor {
namespace {

/// Browsers drag every link as https: only those to a calendar file count.
bool IsCalendarAddress(const QUrl& url) {
  const QString scheme = url.scheme();
  if (scheme == "webcal") return true;
  const bool web = scheme == "https" || scheme == "http";
  return web && url.path().endsWith(QLatin1String(".ics"), Qt::CaseInsensitive);
}

}  // namespace

DroppedCalendars DroppedCalendarsOf(const QMimeData& data) {
  DroppedCalendars dropped;
  for (const QUrl& url : data.urls()) {
    const QString path = url.isLocalFile() ? url.toLocalFile() : QString();
    if (IsSetPath(path.toStdString())) {
      if (dropped.set.empty()) dropped.set = path.toStdString();
    } else if (path.endsWith(QLatin1String(".ics"), Qt::CaseInsensitive)) {
      dropped.sources.push_back({.kind = SourceKind::File, .location = path.toStdString()});
    } else if (IsCalendarAddress(url)) {
      dropped.sources.push_back(
          {.kind = SourceKind::Address, .location = url.toString().toStdString()});
    }
  }
  return dropped;
}

}  // namespace velkor
