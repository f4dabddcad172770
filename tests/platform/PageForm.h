// tests/platform/PageForm.h: forms that place their elements, for every face that shows forms.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "platform/Forms.h"
#include "platform/InputElements.h"

namespace velkor {

/// A button over a view that clips a page.
struct PageForm : Form {
  explicit PageForm(Extent opening = {9000, 7500}) : Form("frmPage", "A page") {
    pic1.onKeyDown = [this](Key key) {
      keys.push_back(key);
      return true;
    };
    cmdPress.onClick = [this] { ++presses; };
    Place({{&cmdPress}, {&picParent}, {&pic1, &picParent}}, opening);
  }
  void Form_Resize(Extent size, PixelSize pixel) override {
    EXPECT_EQ(pixel.width, 15);
    widths.push_back(static_cast<int>(size.width));
    picParent.SetBounds({0, 600, size.width, size.height});
    pic1.SetBounds({300, 300, 9999999, 9999999});
    if (onResize) onResize();
  }
  CommandButton cmdPress{"cmdPress"};
  PictureBox picParent{"picParent"};
  PictureBox pic1{"pic1"};
  std::function<void()> onResize;
  std::vector<int> widths;
  std::vector<Key> keys;
  int presses = 0;
};

/// Of a kind that cannot be placed, or held by what is not placed.
struct UnplaceableForm : Form {
  explicit UnplaceableForm(bool held) : Form("frmBox", "Box") {
    Place({{held ? static_cast<Element*>(&lblText) : &tbText, held ? &picHolder : nullptr}}, {});
  }
  TextBox tbText{"tbText"};
  Label lblText{"lblText"};
  PictureBox picHolder{"picHolder"};
};

}  // namespace velkor
