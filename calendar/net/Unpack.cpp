// calendar/net/Unpack.cpp: compressed bodies by zlib.
#include "calendar/net/Unpack.h"

#include <zlib.h>

#include <utility>

namespace velkor {
namespace {

/// The largest window, and which of the two forms it is found out from the bytes (zlib.h,
/// inflateInit2).
constexpr int EitherForm = 15 + 32;

class Inflation {
 public:
  Inflation() { isReady_ = inflateInit2(&stream_, EitherForm) == Z_OK; }
  ~Inflation() { inflateEnd(&stream_); }
  Inflation(const Inflation&) = delete;
  Inflation& operator=(const Inflation&) = delete;

  UnpackEnd Run(std::string_view packed, std::size_t largest, std::string& bytes) {
    constexpr std::size_t Portion = std::size_t{1} << 16;
    // zlib does not write there.
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream_.avail_in = static_cast<uInt>(packed.size());
    int state = isReady_ ? Z_OK : Z_MEM_ERROR;
    std::string portion(Portion, '\0');
    while (state == Z_OK) {
      stream_.next_out = reinterpret_cast<Bytef*>(portion.data());
      stream_.avail_out = static_cast<uInt>(Portion);
      state = inflate(&stream_, Z_NO_FLUSH);
      bytes.append(portion, 0, Portion - stream_.avail_out);
      if (bytes.size() > largest) return UnpackEnd::TooLarge;
    }
    return state == Z_STREAM_END ? UnpackEnd::Whole : UnpackEnd::Damaged;
  }

 private:
  z_stream stream_{};
  bool isReady_ = false;
};

}  // namespace

UnpackEnd Unpack(std::string_view packed, std::size_t largest, std::string& bytes) {
  std::string unpacked;
  const UnpackEnd end = Inflation().Run(packed, largest, unpacked);
  if (end == UnpackEnd::Whole) bytes = std::move(unpacked);
  return end;
}

}  // namespace velkor
