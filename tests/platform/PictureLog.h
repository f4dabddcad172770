// tests/platform/PictureLog.h: what a picture hears, as texts, on whichever face it is.
#pragma once

#include <string>
#include <vector>

#include "platform/Elements.h"

namespace velkor {

inline std::string Named(Key key) {
  return "key " + std::to_string(static_cast<int>(key));
}

/// Hears all of a picture that it outlives; it has no use for the space bar.
class PictureLog {
 public:
  explicit PictureLog(PictureBox& picture) {
    picture.onMouseMove = [this](Point p) { Note("move", p); };
    picture.onMouseDown = [this](MouseButton button, Point p) {
      Note(button == MouseButton::Left ? "left" : "right", p);
    };
    picture.onMouseUp = [this](MouseButton, Point p) { Note("up", p); };
    picture.onMouseLeave = [this] { heard.emplace_back("leave"); };
    picture.onMouseWheel = [this](double notches) {
      heard.push_back(std::to_string(static_cast<int>(notches * 10)) + " tenths");
    };
    picture.onKeyDown = [this](Key key) {
      heard.push_back(Named(key));
      return key != Key::Space;
    };
  }
  PictureLog(const PictureLog&) = delete;
  PictureLog& operator=(const PictureLog&) = delete;

  std::vector<std::string> heard;

 private:
  void Note(const std::string& what, Point p) {
    heard.push_back(what + " " + std::to_string(static_cast<int>(p.x)) + "," +
                    std::to_string(static_cast<int>(p.y)));
  }
};

}  // namespace velkor
