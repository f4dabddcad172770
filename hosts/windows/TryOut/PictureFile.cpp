// hosts/windows/TryOut/PictureFile.cpp: bitmaps from the bottom row up, as their files want them.
#include "hosts/windows/TryOut/PictureFile.h"

#include "platform/windows/system/WindowsFiles.h"

namespace velkor {
namespace {

template <typename Header>
void Append(std::string& bytes, const Header& header) {
  bytes.append(reinterpret_cast<const char*>(&header), sizeof header);
}

}  // namespace

void SaveBitmap(const DibSection& picture, SIZE size, const std::string& path) {
  constexpr std::size_t RowAlignment = 4;
  const std::size_t row =
      (static_cast<std::size_t>(size.cx) * 3 + RowAlignment - 1) / RowAlignment * RowAlignment;
  BITMAPINFOHEADER info{};
  info.biSize = sizeof info;
  info.biWidth = size.cx;
  info.biHeight = size.cy;
  info.biPlanes = 1;
  info.biBitCount = 24;
  BITMAPFILEHEADER file{};
  file.bfType = 0x4D42;
  file.bfOffBits = sizeof file + sizeof info;
  file.bfSize = static_cast<DWORD>(file.bfOffBits + row * static_cast<std::size_t>(size.cy));
  std::string bytes;
  bytes.reserve(file.bfSize);
  Append(bytes, file);
  Append(bytes, info);
  for (LONG y = size.cy - 1; y >= 0; --y) {
    const std::size_t end = bytes.size() + row;
    for (LONG x = 0; x < size.cx; ++x) {
      const Colour colour = picture.At(x, y);
      for (const auto part : {colour.Blue(), colour.Green(), colour.Red()}) {
        bytes += static_cast<char>(part);
      }
    }
    bytes.resize(end, '\0');
  }
  WindowsFiles files;
  const auto output = files.OpenForWriting(path);
  if (!output) throw Error(errors::PathNotFound, path + " cannot be written");
  output->Write(bytes);
  output->Flush();
}

}  // namespace velkor
