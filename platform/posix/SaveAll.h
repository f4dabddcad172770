// platform/posix/SaveAll.h: writes bytes into a file that takes another one's place when it is
// whole.
#pragma once

#include <QByteArray>
#include <QSaveFile>

namespace velkor {

/// Without a buffer: Qt 6.4 puts a file in place even when emptying its buffer has failed.
inline bool OpenToSave(QSaveFile& file) {
  return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

/// Writes everything into a file from OpenToSave.
/// @return false where that failed; the file says why
inline bool WriteAllOf(QSaveFile& file, const QByteArray& bytes) {
  // A disk that becomes full takes a part, and says so only when it is given the rest.
  for (qint64 at = 0; at < bytes.size();) {
    const qint64 written = file.write(bytes.constData() + at, bytes.size() - at);
    if (written <= 0) return false;
    at += written;
  }
  return true;
}

/// Writes everything and puts the file in place.
/// @return false where that failed; what stood in its place still does
inline bool SaveAll(QSaveFile& file, const QByteArray& bytes) {
  return WriteAllOf(file, bytes) && file.commit();
}

}  // namespace velkor
