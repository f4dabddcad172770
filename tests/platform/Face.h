// tests/platform/Face.h: what the cases need of a face that all faces have in common.
#pragma once

#include <memory>

#include "platform/Surface.h"
#include "platform/System.h"

namespace velkor {

/// A picture in memory that a face draws on.
class Canvas {
 public:
  Canvas() = default;
  virtual ~Canvas() = default;
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  virtual Surface& Drawing() = 0;
  virtual Colour At(int x, int y) const = 0;
};

// Of the face that the test program has.
/// @param width, height  in pixels
std::unique_ptr<Canvas> MakeCanvas(int width, int height);
std::unique_ptr<Files> MakeFiles();

}  // namespace velkor
