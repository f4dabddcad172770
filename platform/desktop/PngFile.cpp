// platform/desktop/PngFile.cpp: chunks of a PNG file, and the compressed rows in it (RFC 2083, RFC
// 1950, RFC 1951).
#include "platform/desktop/PngFile.h"

#include <QImage>
#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <vector>

namespace velkor {
namespace {

constexpr std::uint32_t BytesPerPixel = 3;

/// Bits in the order in which they are sent.
struct Code {
  std::uint32_t bits = 0;
  int count = 0;

  Code Then(std::uint32_t more, int moreCount) const {
    return {bits | more << count, count + moreCount};
  }
};

/// A Huffman code, which is sent from its highest bit on.
constexpr Code Huffman(std::uint32_t value, int count) {
  Code code{0, count};
  for (int i = 0; i < count; ++i) code.bits |= (value >> i & 1) << (count - 1 - i);
  return code;
}

/// The fixed code of a literal byte, of the end (256) or of a length's class (from 257 on).
constexpr Code FixedCode(std::uint32_t symbol) {
  if (symbol < 144) return Huffman(0x30 + symbol, 8);
  if (symbol < 256) return Huffman(0x190 + symbol - 144, 9);
  if (symbol < 280) return Huffman(symbol - 256, 7);
  return Huffman(0xC0 + symbol - 280, 8);
}

constexpr std::uint32_t EndSymbol = 256;
constexpr std::uint32_t ShortestMatch = 3;
constexpr std::uint32_t LongestMatch = 258;
constexpr std::uint32_t FarthestMatch = 32768;

Code LengthCode(std::uint32_t length) {
  if (length == LongestMatch) return FixedCode(285);
  const std::uint32_t value = length - ShortestMatch;
  if (value < 8) return FixedCode(257 + value);
  const int extra = std::bit_width(value) - 3;
  return FixedCode(257 + 4 * extra + (value >> extra)).Then(value & ((1U << extra) - 1), extra);
}

Code DistanceCode(std::uint32_t distance) {
  const std::uint32_t value = distance - 1;
  if (value < 4) return Huffman(value, 5);
  const int extra = std::bit_width(value) - 2;
  return Huffman(2 * extra + (value >> extra), 5).Then(value & ((1U << extra) - 1), extra);
}

struct Codes {
  std::array<Code, 256> literals;
  std::array<Code, LongestMatch + 1> lengths;

  Codes() {
    for (std::uint32_t i = 0; i < literals.size(); ++i) literals[i] = FixedCode(i);
    for (std::uint32_t i = ShortestMatch; i < lengths.size(); ++i) lengths[i] = LengthCode(i);
  }
};

class BitWriter {
 public:
  /// Makes room for as many more bytes.
  void Reserve(std::size_t bytes) {
    if (bytes_.size() - used_ < bytes) bytes_.resize(2 * bytes_.size() + bytes);
  }

  /// At most 32 bits; there is room for 4 more bytes.
  void Put(Code code) {
    pending_ |= static_cast<std::uint64_t>(code.bits) << count_;
    count_ += code.count;
    if (count_ < 32) return;
    for (std::size_t i = 0; i < 4; ++i) bytes_[used_ + i] = static_cast<char>(pending_ >> 8 * i);
    used_ += 4;
    pending_ >>= 32;
    count_ -= 32;
  }

  QByteArray Finish() {
    for (; count_ > 0; count_ -= 8, pending_ >>= 8) bytes_[used_++] = static_cast<char>(pending_);
    return {bytes_.data(), static_cast<qsizetype>(used_)};
  }

 private:
  std::vector<char> bytes_;
  std::size_t used_ = 0;
  std::uint64_t pending_ = 0;
  int count_ = 0;
};

/// The check sum of a stream (Adler-32), a row at a time. A row adds the sum of its bytes, and each
/// of them as often as bytes follow, with itself; both change only where a row differs from the one
/// before.
class RowSum {
 public:
  explicit RowSum(int width) : width_(width) {}

  /// Pixels from `begin` to `end` count instead of those of the row before; null: there is none.
  void Replace(const QRgb* row, const QRgb* before, int begin, int end) {
    for (int x = begin; x < end; ++x) {
      Count(row[x], x);
      if (before) Count(before[x], x, -1);
    }
  }
  /// Ends a row, which has a byte 0 before it.
  void EndRow() {
    constexpr std::uint64_t Modulus = 65521;
    const std::uint64_t length = std::uint64_t{BytesPerPixel} * static_cast<unsigned>(width_) + 1;
    high_ = (high_ + length * low_ + static_cast<std::uint64_t>(weighted_)) % Modulus;
    low_ = (low_ + static_cast<std::uint64_t>(sum_)) % Modulus;
  }

  std::uint32_t Value() const { return static_cast<std::uint32_t>(high_ << 16 | low_); }

 private:
  void Count(QRgb pixel, int x, int times = 1) {
    const int sum = qRed(pixel) + qGreen(pixel) + qBlue(pixel);
    const int after = static_cast<int>(BytesPerPixel) * (width_ - x - 1);
    sum_ += times * sum;
    weighted_ += times * (std::int64_t{sum} * (after + 1) + 2 * qRed(pixel) + qGreen(pixel));
  }

  int width_;
  std::int64_t sum_ = 0;
  std::int64_t weighted_ = 0;
  std::uint64_t low_ = 1;
  std::uint64_t high_ = 0;
};

/// How many pixels from the first on are alike.
int CountAlike(const QRgb* row, const QRgb* other, int most) {
  int count = 0;
  // Two at once, since most of them are.
  for (std::uint64_t two = 0, otherTwo = 0; count + 1 < most; count += 2) {
    std::memcpy(&two, row + count, sizeof two);
    std::memcpy(&otherTwo, other + count, sizeof otherTwo);
    if (two != otherTwo) break;
  }
  while (count < most && row[count] == other[count]) ++count;
  return count;
}

class RowPacker {
 public:
  explicit RowPacker(int width)
      : width_(width),
        left_(DistanceCode(BytesPerPixel)),
        aboveIsNear_(RowLength() <= FarthestMatch),
        above_(DistanceCode(aboveIsNear_ ? RowLength() : 1)),
        sum_(width) {
    constexpr std::uint32_t StreamHeader = 0x0178;
    constexpr Code LastBlockOfFixedCodes{0b011, 3};
    bits_.Reserve(8);
    bits_.Put({StreamHeader, 16});
    bits_.Put(LastBlockOfFixedCodes);
  }

  /// @param above  the row before; null for the first one
  void Pack(const QRgb* row, const QRgb* above) {
    constexpr std::size_t MostBytesOfPixel = 4;
    bits_.Reserve(MostBytesOfPixel * static_cast<std::size_t>(width_) + 8);
    bits_.Put(codes_.literals[0]);
    const QRgb* const match = aboveIsNear_ ? above : nullptr;
    for (int x = 0; x < width_;) {
      const int rest = width_ - x;
      if (const int alike = match ? CountAlike(row + x, match + x, rest) : 0) {
        PutMatch(alike, above_);
        x += alike;
        continue;
      }
      const int even = x > 0 ? CountEven(row + x, rest) : 0;
      if (even > 0) {
        PutMatch(even, left_);
      } else {
        PutPixel(row[x]);
      }
      const int end = x + std::max(even, 1);
      sum_.Replace(row, above, x, end);
      x = end;
    }
    sum_.EndRow();
  }

  QByteArray Finish();

 private:
  std::uint32_t RowLength() const { return BytesPerPixel * static_cast<std::uint32_t>(width_) + 1; }

  /// How many pixels are like the one before the first.
  static int CountEven(const QRgb* row, int most) {
    int count = 0;
    while (count < most && row[count] == row[-1]) ++count;
    return count;
  }

  void PutPixel(QRgb pixel) {
    bits_.Put(codes_.literals[static_cast<std::size_t>(qRed(pixel))]);
    bits_.Put(codes_.literals[static_cast<std::size_t>(qGreen(pixel))]);
    bits_.Put(codes_.literals[static_cast<std::size_t>(qBlue(pixel))]);
  }

  void PutMatch(int pixels, Code distance) {
    // The most that whole pixels fill.
    constexpr std::uint32_t Most = LongestMatch / BytesPerPixel * BytesPerPixel;
    for (std::uint32_t rest = BytesPerPixel * static_cast<std::uint32_t>(pixels); rest > 0;) {
      const std::uint32_t length = std::min(rest, Most);
      bits_.Put(codes_.lengths[length]);
      bits_.Put(distance);
      rest -= length;
    }
  }

  int width_;
  Code left_;
  bool aboveIsNear_;
  Code above_;
  Codes codes_;
  RowSum sum_;
  BitWriter bits_;
};

void AppendNumber(QByteArray& bytes, std::uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(number >> shift);
}

QByteArray RowPacker::Finish() {
  bits_.Reserve(8);
  bits_.Put(FixedCode(EndSymbol));
  QByteArray stream = bits_.Finish();
  AppendNumber(stream, sum_.Value());
  return stream;
}

/// CRC-32, four bytes at a time.
class ChunkSum {
 public:
  ChunkSum() {
    constexpr std::uint32_t Polynomial = 0xEDB88320;
    for (std::uint32_t i = 0; i < 256; ++i) {
      std::uint32_t rest = i;
      for (int bit = 0; bit < 8; ++bit) rest = rest >> 1 ^ (rest & 1 ? Polynomial : 0);
      tables_[0][i] = rest;
    }
    for (std::size_t step = 1; step < tables_.size(); ++step) {
      for (std::size_t i = 0; i < 256; ++i) {
        const std::uint32_t before = tables_[step - 1][i];
        tables_[step][i] = tables_[0][before & 0xFF] ^ before >> 8;
      }
    }
  }

  std::uint32_t Of(const QByteArray& bytes) const {
    std::uint32_t sum = 0xFFFFFFFF;
    const auto at = [&](qsizetype i) { return static_cast<std::uint8_t>(bytes[i]); };
    qsizetype i = 0;
    for (; i + 4 <= bytes.size(); i += 4) {
      sum ^= at(i) | at(i + 1) << 8 | at(i + 2) << 16 | static_cast<std::uint32_t>(at(i + 3)) << 24;
      sum = tables_[3][sum & 0xFF] ^ tables_[2][sum >> 8 & 0xFF] ^ tables_[1][sum >> 16 & 0xFF] ^
            tables_[0][sum >> 24];
    }
    for (; i < bytes.size(); ++i) sum = tables_[0][(sum ^ at(i)) & 0xFF] ^ sum >> 8;
    return ~sum;
  }

 private:
  std::array<std::array<std::uint32_t, 256>, 4> tables_{};
};

void AppendChunk(QByteArray& file, const ChunkSum& sum, const char* kind, const QByteArray& data) {
  const QByteArray summed = kind + data;
  AppendNumber(file, static_cast<std::uint32_t>(data.size()));
  file += summed;
  AppendNumber(file, sum.Of(summed));
}

QByteArray Header(const QImage& image) {
  constexpr std::array<char, 5> EightBitsOfRedGreenBlue{8, 2, 0, 0, 0};
  QByteArray header;
  AppendNumber(header, static_cast<std::uint32_t>(image.width()));
  AppendNumber(header, static_cast<std::uint32_t>(image.height()));
  return header.append(EightBitsOfRedGreenBlue.data(), EightBitsOfRedGreenBlue.size());
}

QByteArray Resolution(const QImage& image) {
  constexpr char PerMetre = 1;
  QByteArray resolution;
  AppendNumber(resolution, static_cast<std::uint32_t>(image.dotsPerMeterX()));
  AppendNumber(resolution, static_cast<std::uint32_t>(image.dotsPerMeterY()));
  return resolution + PerMetre;
}

QByteArray Rows(const QImage& image) {
  RowPacker packer(image.width());
  const QRgb* above = nullptr;
  for (int y = 0; y < image.height(); ++y) {
    const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    packer.Pack(row, above);
    above = row;
  }
  return packer.Finish();
}

}  // namespace

QByteArray EncodePng(const QImage& image) {
  const ChunkSum sum;
  QByteArray file("\x89PNG\r\n\x1A\n");
  AppendChunk(file, sum, "IHDR", Header(image));
  AppendChunk(file, sum, "pHYs", Resolution(image));
  AppendChunk(file, sum, "IDAT", Rows(image));
  AppendChunk(file, sum, "IEND", {});
  return file;
}

}  // namespace velkor
