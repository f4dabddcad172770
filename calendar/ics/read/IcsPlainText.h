// calendar/ics/read/IcsPlainText.h: files in UTF-16 or with CR alone at the ends of lines, as plain
// text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velkor {

/// What a calendar file says in UTF-8, or in bytes of a page that holds ASCII, with lines that end
/// in LF. Most files are that already.
class IcsPlainText {
 public:
  /// @param bytes  of the file; they outlive this
  /// @param name   of the file, for messages
  /// Throws Error (CalendarFailed) for UTF-32.
  IcsPlainText(std::string_view bytes, const std::string& name);
  IcsPlainText(const IcsPlainText&) = delete;
  IcsPlainText& operator=(const IcsPlainText&) = delete;

  std::string_view Text() const { return converted_ ? std::string_view(*converted_) : bytes_; }
  /// The bytes of a file in the same form that says this instead. What stays in the text stays in
  /// the bytes. Throws Error (CalendarFailed) when the file holds what its own text does not give
  /// back: broken UTF-16.
  std::string WithText(std::string text) const;

 private:
  void TakeReturns();
  std::string Restored(std::string text) const;

  enum class Units { Bytes, LittleEndian, BigEndian };

  std::string_view bytes_;
  std::string name_;
  Units units_ = Units::Bytes;
  /// CR alone ends the lines, but perhaps the last one.
  bool returns_ = false;
  /// What ends that one when it has an LF, as a program that adds a last line end writes it.
  std::string lastEnd_;
  std::optional<std::string> converted_;
};

}  // namespace velkor
