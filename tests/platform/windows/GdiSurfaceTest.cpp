// tests/platform/windows/GdiSurfaceTest.cpp: the GDI surface as a canvas, and its device context.
#include "platform/windows/drawing/GdiSurface.h"

#include <gtest/gtest.h>

#include "platform/windows/drawing/DibSection.h"
#include "platform/windows/system/Wide.h"
#include "tests/platform/Face.h"
#include "tests/platform/SurfaceScene.h"

namespace velkor {
namespace {

class GdiCanvas : public Canvas {
 public:
  GdiCanvas(int width, int height) : picture_(width, height) {}
  Surface& Drawing() override { return surface_; }
  Colour At(int x, int y) const override { return picture_.At(x, y); }

 private:
  DibSection picture_;
  GdiSurface surface_{picture_.Dc()};
};

TEST(GdiSurface, LeavesTheDeviceContextAsItWas) {
  const DibSection picture(scene::Width, scene::Height);
  const HGDIOBJ font = ::GetCurrentObject(picture.Dc(), OBJ_FONT);
  const COLORREF background = ::GetBkColor(picture.Dc());
  {
    GdiSurface surface(picture.Dc());
    scene::Draw(surface);
  }
  EXPECT_EQ(::GetCurrentObject(picture.Dc(), OBJ_FONT), font);
  EXPECT_EQ(::GetBkColor(picture.Dc()), background);
  EXPECT_EQ(::GetBkMode(picture.Dc()), OPAQUE);
}

TEST(GdiSurface, DrawsWhatDrawTextDrawsInEveryScriptAndCharacterSet) {
  constexpr int Width = 200;
  constexpr int Height = 30;
  constexpr int Russian = 204;
  constexpr TextFlags Plain = text_flags::NoPrefix;
  // The Russian code page has nothing of a text, some of it, or all. The last is underlined.
  for (const auto& [text, charset, flags] : {std::tuple("\u00DCn\u00ED", Russian, Plain),
                                             {"\u0414\u0430 \u00FC", Russian, Plain},
                                             {"\u0414\u0430", Russian, Plain},
                                             {"\u00DCn\u00ED", 0, Plain},
                                             {"\u0414\u0430", 0, Plain},
                                             {"R&D", 0, text_flags::WordEllipsis}}) {
    const DibSection picture(Width, 2 * Height);
    GdiSurface surface(picture.Dc());
    const Font font{.face = "DejaVu Sans", .size = 12, .charset = charset};
    surface.Text(scene::InPixels(0, 0, Width, Height), text, font, colours::White, flags);
    const std::wstring wide = ToWide(text);
    RECT below{0, Height, Width, 2 * Height};
    ::DrawTextW(picture.Dc(), wide.c_str(), -1, &below, flags);
    bool drawn = false;
    for (int y = 0; y < Height; ++y) {
      for (int x = 0; x < Width; ++x) {
        ASSERT_EQ(picture.At(x, y), picture.At(x, y + Height)) << text << ' ' << charset;
        drawn = drawn || picture.At(x, y) == colours::White;
      }
    }
    EXPECT_TRUE(drawn);
  }
}

}  // namespace

std::unique_ptr<Canvas> MakeCanvas(int width, int height) {
  return std::make_unique<GdiCanvas>(width, height);
}

}  // namespace velkor
