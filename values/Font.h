// values/Font.h: a font by face, size and character set.
#pragma once

#include <string>

namespace velkor {

/// Windows character set numbers (LOGFONT structure, lfCharSet).
namespace charsets {
inline constexpr int Default = 1;
}  // namespace charsets

/// `face` empty lets the platform pick one for the character set; `size` is in points.
struct Font {
  std::string face;
  double size = 8;
  int charset = charsets::Default;
  bool bold = false;
  bool italic = false;

  friend bool operator==(const Font&, const Font&) = default;
};

}  // namespace velkor
