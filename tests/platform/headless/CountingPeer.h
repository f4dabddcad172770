// tests/platform/headless/CountingPeer.h: an element's peer that keeps what it is asked to do.
#pragma once

#include <vector>

#include "platform/Elements.h"

namespace velkor {

class CountingPeer : public ElementPeer {
 public:
  std::vector<Rect> parts;
  std::vector<Point> popUps;

  void Changed() override {}
  void Invalidate(const Rect& part) override { parts.push_back(part); }
  void PopUp(Point position) override { popUps.push_back(position); }
};

}  // namespace velkor
