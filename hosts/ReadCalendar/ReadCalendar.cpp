// hosts/ReadCalendar/ReadCalendar.cpp: the process that reads an iCalendar file for another
// program.
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <new>
#include <optional>
#include <string>

#include "calendar/ics/read/IcsAnswer.h"
#include "calendar/ics/read/IcsParser.h"
#include "calendar/ics/read/IcsZones.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

struct Request {
  std::string path;
  DateWindow window;
  rlim_t memory = 0;
  rlim_t seconds = 0;
};

std::optional<Request> ReadArguments(int count, char** arguments) {
  constexpr int Expected = 6;
  if (count != Expected) return std::nullopt;
  const auto from = ParseInteger(arguments[2]);
  const auto to = ParseInteger(arguments[3]);
  const auto memory = ParseInteger(arguments[4]);
  const auto seconds = ParseInteger(arguments[5]);
  if (!from || !to || !memory || !seconds || *memory <= 0 || *seconds <= 0) return std::nullopt;
  Request request;
  request.path = arguments[1];
  if (!IsInCalendar(*from) || !IsInCalendar(*to)) return std::nullopt;
  request.window = {Date::FromSeconds(*from), Date::FromSeconds(*to)};
  request.memory = static_cast<rlim_t>(*memory);
  request.seconds = static_cast<rlim_t>(*seconds);
  return request;
}

/// The process ends by itself even when nobody is left to stop it.
void Limit(const Request& request) {
  const rlimit noCore{0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  // Nobody waits for the answer of a reader whose client was killed (prctl(2), PR_SET_PDEATHSIG).
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const rlimit time{request.seconds, request.seconds + 1};
  setrlimit(RLIMIT_CPU, &time);
  // Also when it waits for a file that never comes.
  alarm(static_cast<unsigned>(std::min<rlim_t>(request.seconds + 1, 3600)));
#ifndef __SANITIZE_ADDRESS__
  // The address sanitizer reserves far more addresses than it uses.
  const rlimit memory{request.memory, request.memory};
  setrlimit(RLIMIT_AS, &memory);
#endif
}

std::string ReadWhole(const std::string& path, std::size_t longest) {
  const auto fail = [&](const std::string& why) {
    throw Error(errors::CalendarFailed, "The calendar file " + path + " " + why, "Calendar");
  };
  std::error_code code;
  const auto status = std::filesystem::status(path, code);
  if (!std::filesystem::exists(status)) fail("does not exist.");
  if (std::filesystem::is_directory(status)) fail("is a folder.");
  if (!std::filesystem::is_regular_file(status)) fail("is no ordinary file.");
  std::ifstream file(path, std::ios::binary);
  if (!file) fail("cannot be opened.");
  std::string bytes;
  std::string piece(std::size_t{1} << 20, '\0');
  while (bytes.size() <= longest && !file.eof()) {
    file.read(piece.data(), static_cast<std::streamsize>(piece.size()));
    if (file.bad()) fail("cannot be read to its end.");
    bytes.append(piece, 0, static_cast<std::size_t>(file.gcount()));
  }
  return bytes;
}

std::string AnswerTo(const Request& request) {
  try {
    const IcsLimits limits;
    const std::string bytes = ReadWhole(request.path, limits.fileSize);
    return EncodeAnswer(ParseIcs(bytes, request.path, request.window, limits));
  } catch (const Error& error) {
    return EncodeAnswer(error);
  } catch (const std::bad_alloc&) {
    return EncodeAnswer(Error(errors::CalendarFailed, "The calendar file " + request.path +
                                                          " needs more memory than is allowed."));
  }
}

}  // namespace
}  // namespace velkor

int main(int count, char** arguments) {
  const auto request = velkor::ReadArguments(count, arguments);
  if (!request) {
    std::fputs(
        "usage: yearplan-read FILE FROM TO MEMORY SECONDS\n"
        "FROM and TO are seconds since 1899-12-30 in the years 100 to 9999; MEMORY (bytes)\n"
        "and SECONDS are above 0.\n",
        stderr);
    return 2;
  }
  velkor::Limit(*request);
  const std::string answer = velkor::AnswerTo(*request);
  const bool written = std::fwrite(answer.data(), 1, answer.size(), stdout) == answer.size();
  return written && std::fflush(stdout) == 0 ? 0 : 1;
}
