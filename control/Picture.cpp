// control/Picture.cpp: draws each element by its kind, holders below what they hold.
#include "control/Picture.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "control/YearPlanElements.h"
#include "platform/Surface.h"
#include "support/ToolbarIcons.h"
#include "view/Frame.h"

namespace velkor {
namespace {

constexpr double TextPoints = 9;

class ControlPainter {
 public:
  ControlPainter(Surface& surface, const Font& font) : surface_(surface), font_(font) {}
  ~ControlPainter() { GoInto(nullptr); }
  ControlPainter(const ControlPainter&) = delete;
  ControlPainter& operator=(const ControlPainter&) = delete;

  void Draw(const PlacedElement& placed) {
    GoInto(placed.holder);
    if (const auto* const picture = dynamic_cast<const PictureBox*>(placed.element)) {
      DrawPicture(*picture);
    } else if (placed.element->Visible()) {
      DrawVisible(*placed.element);
    }
  }

 private:
  /// Leaves the pictures that do not hold what comes next.
  void GoInto(const Element* holder) {
    while (!open_.empty() && open_.back() != holder) {
      surface_.LeaveView();
      open_.pop_back();
    }
  }

  /// Its view stays open for what it holds; nothing is seen in one that is not visible.
  void DrawPicture(const PictureBox& picture) {
    const Rect bounds = picture.Visible() ? picture.Bounds() : Rect();
    surface_.EnterView(bounds, {bounds.left, bounds.top});
    open_.push_back(&picture);
    if (picture.onPaint && bounds.Width() > 0 && bounds.Height() > 0) {
      picture.onPaint(surface_, {0, 0, bounds.Width(), bounds.Height()});
    }
  }

  void DrawVisible(const Element& element) {
    if (const auto* const label = dynamic_cast<const Label*>(&element)) {
      DrawText(*label, label->style.value_or(TextStyle{TextPoints}), text_flags::Left);
    } else if (const auto* const button = dynamic_cast<const CommandButton*>(&element)) {
      surface_.Outline(button->Bounds(), FrameColour, 1);
      DrawText(*button, {TextPoints}, text_flags::Centre);
    } else if (const auto* const toolbar = dynamic_cast<const Toolbar*>(&element)) {
      DrawToolbar(*toolbar);
    } else if (const auto* const image = dynamic_cast<const Image*>(&element)) {
      surface_.Fill(image->Bounds(), image->FillColour());
      surface_.Outline(image->Bounds(), FrameColour, 1);
    }
  }

  void DrawToolbar(const Toolbar& toolbar) {
    const Rect& bounds = toolbar.Bounds();
    const Twips side = std::min(ToolbarButtonSide, bounds.Height());
    Twips left = bounds.left;
    const Twips top = bounds.top + (bounds.Height() - side) / 2;
    for (const ToolbarButton& button : toolbar.Buttons()) {
      DrawIcon(button, {left + ToolbarImageMargin, top + ToolbarImageMargin,
                        left + side - ToolbarImageMargin, top + side - ToolbarImageMargin});
      left += side;
    }
  }

  void DrawIcon(const ToolbarButton& button, const Rect& place) {
    const PixelSize pixel = surface_.Pixel();
    const int side = ToPixel(place.Width(), pixel.width);
    if (side <= 0) return;
    const Colour lines = button.enabled ? colours::Black : FadedLines(colours::Black, ControlBack);
    const std::vector<IconPixel> pixels = DrawToolbarIcon(button.image, side, lines);
    for (int i = 0; i < side * side; ++i) {
      const IconPixel& drawn = pixels[static_cast<std::size_t>(i)];
      if (drawn.cover == 0) continue;
      const Twips x = place.left + i % side * Twips{pixel.width};
      const Twips y = place.top + i / side * Twips{pixel.height};
      surface_.Fill({x, y, x + pixel.width, y + pixel.height}, Over(ControlBack, drawn));
    }
  }

  void DrawText(const CaptionedElement& element, TextStyle style, TextFlags alignment) {
    if (element.Caption().empty()) return;
    Font font = font_;
    font.size = style.points;
    font.bold = style.bold;
    surface_.Text(element.Bounds(), element.Caption(), font, colours::Black,
                  alignment | text_flags::SingleLine | text_flags::VerticalCentre |
                      text_flags::WordEllipsis | text_flags::NoPrefix);
  }

  Surface& surface_;
  const Font& font_;
  /// The pictures whose views are open, outermost first.
  std::vector<const Element*> open_;
};

}  // namespace

void DrawControl(Surface& surface, YearPlanElements& elements, Extent size) {
  surface.Fill({0, 0, size.width, size.height}, ControlBack);
  ControlPainter painter(surface, elements.font);
  for (const PlacedElement& placed : elements.Placed()) painter.Draw(placed);
}

}  // namespace velkor
