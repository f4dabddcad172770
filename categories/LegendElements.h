// categories/LegendElements.h: the child elements that make up the legend, by name.
#pragma once

#include "platform/InputElements.h"

namespace velkor {

struct LegendElements {
  LegendElements() {
    mnuCatPop.entries = {&mnuCatNew, &mnuCatRename, &mnuCatColour, &mnuCatDelete};
    txtEdit.SetText("Category");
    txtEdit.SetToolTip("Edit the category label & then 'Esc' to cancel or 'Enter' to save");
    txtEdit.SetVisible(false);
    vScrollCat.SetVisible(false);
  }

  /// The part of the legend in sight, in the control's coordinates. It holds picCats.
  PictureBox picCatView{"picCatView"};
  /// All rows, in the coordinates of picCatView; it moves up when the legend is scrolled. It holds
  /// txtEdit.
  PictureBox picCats{"picCats"};
  /// Beside picCatView, in the control's coordinates; counts pixels.
  ScrollBar vScrollCat{"vScrollCat"};
  /// Over a row, in the coordinates of picCats.
  TextBox txtEdit{"txtEdit"};

  MenuItem mnuCatNew{"mnuCatNew", "New Category"};
  MenuItem mnuCatRename{"mnuCatRename", "Rename Category"};
  MenuItem mnuCatColour{"mnuCatColour", "Change Colour"};
  MenuItem mnuCatDelete{"mnuCatDelete", "Delete Category"};
  Menu mnuCatPop{"mnuCatPop"};
};

}  // namespace velkor
