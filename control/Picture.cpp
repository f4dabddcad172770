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
  ControlPainter(Surface& surface, const YearPlanElements& elements)
      : surface_(surface), look_(elements.look), font_(elements.font) {
    if (look_.font) {
      font_.bold = look_.font->bold;
      font_.italic = look_.font->italic;
    }
  }
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
      DrawText(*label, label->style.value_or(Ordinary()), text_flags::Left);
    } else if (const auto* const button = dynamic_cast<const CommandButton*>(&element)) {
      surface_.Outline(button->Bounds(), FrameColour, 1);
      DrawText(*button, Ordinary(), text_flags::Centre);
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
    const Colour lines = button.enabled ? look_.fore : FadedLines(look_.fore, look_.back);
    const std::vector<IconPixel> pixels = DrawToolbarIcon(button.image, side, lines);
    for (int i = 0; i < side * side; ++i) {
      const IconPixel& drawn = pixels[static_cast<std::size_t>(i)];
      if (drawn.cover == 0) continue;
      const Twips x = place.left + i % side * Twips{pixel.width};
      const Twips y = place.top + i / side * Twips{pixel.height};
      surface_.Fill({x, y, x + pixel.width, y + pixel.height}, Over(look_.back, drawn));
    }
  }

  void DrawText(const CaptionedElement& element, TextStyle style, TextFlags alignment) {
    if (element.Caption().empty()) return;
    Font font = font_;
    font.size = style.points * TextSize() / TextPoints;
    font.bold = style.bold;
    surface_.Text(element.Bounds(), element.Caption(), font, look_.fore,
                  alignment | text_flags::SingleLine | text_flags::VerticalCentre |
                      text_flags::WordEllipsis | text_flags::NoPrefix);
  }

  double TextSize() const { return look_.font ? look_.font->size : TextPoints; }
  TextStyle Ordinary() const { return {TextPoints, font_.bold}; }

  Surface& surface_;
  const ControlLook& look_;
  Font font_;
  /// The pictures whose views are open, outermost first.
  std::vector<const Element*> open_;
};

}  // namespace

void DrawControl(Surface& surface, YearPlanElements& elements, Extent size) {
  surface.Fill({0, 0, size.width, size.height}, elements.look.back);
  ControlPainter painter(surface, elements);
  for (const PlacedElement& placed : elements.Placed()) painter.Draw(placed);
}

}  // namespace velkor
