// platform/desktop/QtFonts.h: fonts with their metrics, made once each.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QString>
#include <QStringList>
#include <array>
#include <memory>
#include <vector>

#include "values/Font.h"

namespace velkor {

/// One font at a whole number of pixels. Lengths are pixels.
class QtFont {
 public:
  QtFont(const Font& font, double pixelsPerPoint);

  const velkor::Font& Wanted() const { return wanted_; }
  const QFont& Face() const { return font_; }
  int Ascent() const { return ascent_; }
  /// Room above the capital letters of a line, which only accents reach.
  int Leading() const { return leading_; }
  /// Height of a line.
  int Height() const { return height_; }
  double Width(const QString& text) const;
  /// True when no text of so many UTF-16 units is wider than `width`, letters of other faces that
  /// stand in for missing ones included (emoji take 1.3 times the size).
  bool SurelyFits(qsizetype units, double width) const;
  /// The text, or its longest start that leaves room for an ellipsis, with that ellipsis.
  QString WithEllipsis(const QString& text, double width) const;

 private:
  /// Latin letters stand one after the other, so that their widths add up. The rest is shaped.
  static constexpr int Plain = 0x250;

  double Advance(char16_t letter) const;

  velkor::Font wanted_;
  QFont font_;
  QFontMetricsF metrics_;
  int ascent_;
  int leading_;
  int height_;
  double widest_;
  double ellipsis_;
  /// Below 0 where not asked for yet.
  mutable std::array<float, Plain> advances_;
};

/// Hands out each font once made; what it returns lives as long as it does.
class QtFonts {
 public:
  explicit QtFonts(double pixelsPerPoint) : pixelsPerPoint_(pixelsPerPoint) {}
  const QtFont& For(const Font& font);

 private:
  double pixelsPerPoint_;
  std::vector<std::unique_ptr<QtFont>> fonts_;
  const QtFont* last_ = nullptr;
};

}  // namespace velkor
