// calendar/ics/file/ShortHash.cpp: SHA-256 by Qt.
#include "calendar/ics/file/ShortHash.h"

#include <QCryptographicHash>

namespace velkor {

std::string ShortHash(std::string_view bytes) {
  constexpr int HashBytes = 16;
  const QByteArray view =
      QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
  return QCryptographicHash::hash(view, QCryptographicHash::Sha256)
      .left(HashBytes)
      .toHex()
      .toStdString();
}

}  // namespace velkor
