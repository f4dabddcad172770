// values/Error.h: the one exception type, and the error numbers that the product uses.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace velkor {

/// Numbers that an Error carries. File numbers are the ones that modFileIO puts into words.
namespace errors {
inline constexpr long InvalidProcedureCall = 5;
inline constexpr long Overflow = 6;
inline constexpr long SubscriptOutOfRange = 9;
inline constexpr long TypeMismatch = 13;
inline constexpr long BadFileName = 52;
inline constexpr long FileNotFound = 53;
inline constexpr long BadFileMode = 54;
inline constexpr long FileAlreadyOpen = 55;
inline constexpr long DeviceInputOutput = 57;
inline constexpr long InputPastEnd = 62;
inline constexpr long DeviceUnavailable = 68;
inline constexpr long PermissionDenied = 70;
inline constexpr long PathNotFound = 76;
inline constexpr long KeyAlreadyExists = 457;
/// A calendar program refused a call (bad filter text, unknown identifier, ...).
inline constexpr long CalendarFailed = 440;
}  // namespace errors

/// Number, description and source of a failure. `source` names the component that failed.
class Error : public std::exception {
 public:
  Error(long number, std::string description, std::string source = {})
      : number_(number), description_(std::move(description)), source_(std::move(source)) {}

  long Number() const noexcept { return number_; }
  const std::string& Description() const noexcept { return description_; }
  const std::string& Source() const noexcept { return source_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  long number_;
  std::string description_;
  std::string source_;
};

}  // namespace velkor
