// hosts/yearplan/GivenCalendars.cpp: words as files, sets and addresses.
#include "hosts/yearplan/GivenCalendars.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

#include "platform/desktop/DesktopSystem.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

bool HasScheme(std::string_view word, std::string_view scheme) {
  return word.size() > scheme.size() && SameName(word.substr(0, scheme.size()), scheme);
}

}  // namespace

bool IsCalendarAddress(std::string_view word) {
  constexpr std::array<std::string_view, 4> Schemes{"webcal://", "webcals://", "http://",
                                                    "https://"};
  return std::any_of(Schemes.begin(), Schemes.end(),
                     [&](std::string_view scheme) { return HasScheme(word, scheme); });
}

SetSource SourceOfWord(const std::string& word, const std::string& account) {
  SetSource source;
  if (!IsCalendarAddress(word)) {
    const QFileInfo file(QString::fromStdString(word));
    source.location = QDir::cleanPath(file.absoluteFilePath()).toStdString();
    return source;
  }
  source.location = word;
  const bool isServer = !account.empty() && HasScheme(word, "http");
  source.kind = isServer ? SourceKind::Server : SourceKind::Address;
  if (isServer) source.user = account;
  return source;
}

std::string CalendarOf(const std::vector<std::string>& words, const std::string& account) {
  if (words.size() == 1 && !IsCalendarAddress(words.front())) return words.front();
  std::vector<SetSource> sources;
  for (const std::string& word : words) {
    if (IsSetPath(word) && !IsCalendarAddress(word)) {
      const CalendarSet set = LoadSet(word);
      sources.insert(sources.end(), set.sources.begin(), set.sources.end());
    } else {
      sources.push_back(SourceOfWord(word, account));
    }
  }
  return SetOf(sources, PrivateDataFolder()).path;
}

void RefuseCalendarAsOutput(const std::string& calendar, const std::string& output) {
  std::vector<std::string> files{calendar};
  if (IsSetPath(calendar)) {
    for (const SetSource& source : LoadSet(calendar).sources) files.push_back(source.location);
  }
  for (const std::string& file : files) {
    std::error_code absent;
    if (!std::filesystem::equivalent(file, output, absent)) continue;
    throw Error(errors::BadFileName, output + " is the calendar itself; nothing was written");
  }
}

}  // namespace velkor
