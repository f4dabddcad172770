// model/CachePaths.cpp: where the cache file of a user, year and folder lies.
#include "model/CachePaths.h"

#include <numeric>

#include "platform/LocaleApi.h"
#include "platform/System.h"
#include "support/modFileIO.h"
#include "values/Text.h"

namespace velkor {
namespace {

std::string TempDirectory(Environment& environment, Files& files) {
  std::string directory = environment.Variable("TMP");
  if (!directory.empty()) return directory;
  return files.DirectoryExists("c:\\temp") ? "temp" : "c:";
}

}  // namespace

long FolderChecksum(std::string_view folder, LocaleApi& locale) {
  // A code page may take several bytes for the last character, so it goes before the conversion.
  std::size_t lastCharacter = 0;
  for (std::string_view rest = folder; !rest.empty();) {
    lastCharacter = folder.size() - rest.size();
    TakeCharacter(rest);
  }
  const std::string bytes =
      locale.ToCodePage(folder.substr(0, lastCharacter), locale.AnsiCodePage());
  return std::accumulate(bytes.begin(), bytes.end(), 0L,
                         [](long sum, char c) { return sum + static_cast<unsigned char>(c); });
}

std::string CacheFileName(std::string_view user, int year, std::string_view folder,
                          LocaleApi& locale) {
  // Without a backslash rfind gives npos, and npos + 1 is 0: the whole text.
  const std::string_view lastComponent = folder.substr(folder.rfind('\\') + 1);
  const std::string name = std::string(user) + std::to_string(year) + std::string(lastComponent) +
                           std::to_string(FolderChecksum(folder, locale));
  return modFileIO::MakeFileNameSafe(name) + ".tmp";
}

CachePaths MakeCachePaths(const std::string& fileName, Environment& environment, Files& files) {
  const std::string directory = TempDirectory(environment, files) + environment.PathSeparator();
  return {directory + fileName, directory + "~" + fileName};
}

}  // namespace velkor
