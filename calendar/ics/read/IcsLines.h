// calendar/ics/read/IcsLines.h: the logical lines of iCalendar text, and the parts of a content
// line.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace velkor {

/// A line with the folded lines after it joined on (RFC 5545 section 3.1).
struct IcsLine {
  /// Without line ends; valid until the next line is taken. Cut at the longest length.
  std::string_view text;
  /// Of its first physical line, from 1.
  int number = 0;
  /// Byte range in the whole text, line ends included.
  std::size_t begin = 0;
  std::size_t end = 0;
  bool tooLong = false;
};

/// Walks through the lines of text[begin, end). Lines end in LF, any CR before it belongs to the
/// line end. A quoted-printable value goes on in the next line when it ends in "=".
class IcsLines {
 public:
  IcsLines(std::string_view bytes, std::size_t begin, std::size_t end, int firstLine,
           std::size_t longest)
      : bytes_(bytes.substr(0, end)), at_(begin), number_(firstLine), longest_(longest) {}

  /// @return false at the end
  bool Next(IcsLine& line);

 private:
  std::string_view TakePhysicalLine();
  bool IsBeforeEndOfComponent() const;

  std::string_view bytes_;
  std::size_t at_;
  int number_;
  std::size_t longest_;
  std::string joined_;
};

/// `name;parameters:value`, all as they stand in the line.
struct IcsProperty {
  std::string_view name;
  /// From the first semicolon to the colon before the value; empty for none.
  std::string_view parameters;
  std::string_view value;
  int line = 0;

  bool Is(std::string_view upperCaseName) const;
  /// The value of a parameter without its quotes; none when it is absent.
  std::optional<std::string_view> Parameter(std::string_view upperCaseName) const;
  /// As vCalendar 1.0 encodes texts; ENCODING= may be left out there.
  bool IsQuotedPrintable() const;
};

/// @return none for a line that is no content line
std::optional<IcsProperty> ReadProperty(const IcsLine& line);

/// Takes the part up to the next separator off the front of a value that is not empty.
std::string_view TakePart(std::string_view& rest, char separator);

}  // namespace velkor
