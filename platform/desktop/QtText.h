// platform/desktop/QtText.h: the product's texts as Qt's.
#pragma once

#include <QString>
#include <string_view>

namespace velkor {

/// From UTF-8; invalid bytes become U+FFFD.
inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace velkor
