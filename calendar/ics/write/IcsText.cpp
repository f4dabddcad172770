// calendar/ics/write/IcsText.cpp: escaping, encoding and folding.
#include "calendar/ics/write/IcsText.h"

#include "calendar/ics/read/IcsValues.h"
#include "support/CodePage1252.h"
#include "values/DateDigits.h"
#include "values/Text.h"

namespace velkor {
std::string TextValue(std::string_view text) {
  std::string value;
  for (std::size_t i = 0; i < text.size(); ++i) {
    switch (text[i]) {
      case '\\':
      case ';':
      case ',':
        value += '\\';
        value += text[i];
        break;
      case '\r':
        if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
        [[fallthrough]];
      case '\n':
        value += "\\n";
        break;
      default:
        value += text[i];
    }
  }
  return value;
}

std::string TextListValue(const std::vector<std::string>& texts) {
  std::string value;
  for (const std::string& text : texts) {
    if (!value.empty()) value += ',';
    value += TextValue(text);
  }
  return value;
}

std::string DateValue(WallSeconds wall) {
  const DateFields fields = Date::FromSeconds(wall).Fields();
  return Digits(fields.year, 4) + Digits(fields.month, 2) + Digits(fields.day, 2);
}

std::string TimeValue(WallSeconds wall, bool isUtc) {
  const DateFields fields = Date::FromSeconds(wall).Fields();
  return DateValue(wall) + "T" + Digits(fields.hour, 2) + Digits(fields.minute, 2) +
         Digits(fields.second, 2) + (isUtc ? "Z" : "");
}

std::string DurationValue(std::int64_t seconds, bool wholeDays) {
  if (wholeDays) return "P" + std::to_string(seconds / SecondsPerDay) + "D";
  // Hours that pass, not days of the clock, which may have more or fewer.
  const std::int64_t hours = seconds / 3600;
  const std::int64_t minutes = seconds / 60 % 60;
  const std::int64_t rest = seconds % 60;
  std::string value = "PT";
  if (hours > 0) value += std::to_string(hours) + "H";
  if (minutes > 0 || (hours > 0 && rest > 0)) value += std::to_string(minutes) + "M";
  if (rest > 0 || seconds == 0) value += std::to_string(rest) + "S";
  return value;
}

std::string EncodeText(std::string_view text, IcsEncoding encoding) {
  if (encoding == IcsEncoding::Windows1252) {
    std::string bytes = ToCodePage1252(text);
    if (DecodeBytes(bytes) == text) return bytes;
  }
  return std::string(text);
}

std::string FoldLine(std::string_view line, std::string_view lineEnd) {
  constexpr std::size_t Longest = 75;
  std::string folded;
  std::size_t room = Longest;
  while (line.size() > room) {
    std::string_view piece = CutAtCharacter(line, room);
    if (piece.empty()) piece = line.substr(0, room);
    folded.append(piece).append(lineEnd).append(" ");
    line.remove_prefix(piece.size());
    room = Longest - 1;
  }
  return folded.append(line).append(lineEnd);
}

}  // namespace velkor
