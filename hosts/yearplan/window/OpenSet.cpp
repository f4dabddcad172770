// hosts/yearplan/window/OpenSet.cpp: sets with a file of the user's, sets without, single
// calendars.
#include "hosts/yearplan/window/OpenSet.h"

#include <QFileInfo>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "categories/FirstPalette.h"
#include "platform/desktop/DesktopSystem.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

bool SamePlaces(const CalendarSet& a, const CalendarSet& b) {
  return std::ranges::equal(a.sources, b.sources, {}, &SetSource::id, &SetSource::id);
}

std::string StemOf(const std::string& path) {
  return QFileInfo(ToQt(path)).completeBaseName().toStdString();
}

}  // namespace

OpenSet::OpenSet(const std::string& calendar) : calendar_(calendar) {
  Reload();
}

void OpenSet::Reload() {
  if (IsSetPath(calendar_)) {
    set_ = LoadSet(calendar_);
  } else {
    set_.sources = {{.kind = SourceKind::File, .location = calendar_}};
  }
}

bool OpenSet::IsUnsaved() const {
  return !IsSingle() && IsUnsavedSet(calendar_, PrivateDataFolder());
}

std::string OpenSet::Name() const {
  if (IsSingle()) return StemOf(calendar_);
  if (!IsUnsaved()) return StemOf(set_.path);
  if (set_.sources.empty()) return "New set";
  const std::string first = NameOf(set_.sources.front());
  const std::size_t others = set_.sources.size() - 1;
  return others == 0 ? first : first + " and " + std::to_string(others) + " more";
}

std::string OpenSet::Change(const std::function<void(CalendarSet&)>& edit) {
  if (!IsSingle() && !IsUnsaved()) {
    set_ = UpdateSet(set_.path, edit);
    return calendar_;
  }
  CalendarSet changed = set_;
  GiveMissingIds(changed);
  edit(changed);
  // Whoever opens the same calendars again finds them as they were left.
  const std::string path =
      SamePlaces(changed, set_) ? set_.path : SetOf(changed.sources, PrivateDataFolder()).path;
  const auto copy = [&](CalendarSet& set) {
    set.sources = changed.sources;
    set.defaultSource = changed.defaultSource;
    set.barColours = changed.barColours;
  };
  UpdateSet(path, IsSingle() ? edit : copy);
  return path;
}

void OpenSet::SaveAs(const std::string& path) const {
  CalendarSet copy = set_;
  GiveMissingIds(copy);
  copy.path = path;
  SaveSet(copy);
}

Colour ColourOf(const CalendarSet& set, const SetSource& source) {
  if (source.colour) return *source.colour;
  const auto place = std::ranges::find(set.sources, source.id, &SetSource::id);
  return FirstPalette.at(static_cast<std::size_t>(place - set.sources.begin()) %
                         FirstPalette.size());
}

std::string NameOf(const SetSource& source, const std::string& ownName) {
  if (!source.name.empty()) return source.name;
  if (!ownName.empty()) return ownName;
  if (source.kind == SourceKind::File) return StemOf(source.location);
  const QUrl url(ToQt(source.location));
  const QString last = url.path().section(u'/', -1, -1, QString::SectionSkipEmpty);
  const QString name = last.isEmpty() ? url.host() : QFileInfo(last).completeBaseName();
  return name.toStdString();
}

}  // namespace velkor
