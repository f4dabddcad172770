// platform/desktop/QtFonts.cpp: picking faces, and the widths of Latin text without shaping it.
#include "platform/desktop/QtFonts.h"

#include <algorithm>
#include <cmath>

namespace velkor {
namespace {

constexpr char16_t Ellipsis = 0x2026;

QFont MakeFont(const Font& font, double pixelsPerPoint) {
  // After the wanted face, one with the metrics of the usual Windows face; for what that lacks,
  // the system's own fall-back knows the installed faces.
  QStringList families;
  if (!font.face.empty()) families << QString::fromStdString(font.face);
  families << QStringLiteral("Liberation Sans") << QStringLiteral("DejaVu Sans");
  QFont result(families);
  const double pixels = font.size * pixelsPerPoint;
  result.setPixelSize(pixels >= 1 ? static_cast<int>(std::fmin(std::round(pixels), 2000)) : 1);
  result.setBold(font.bold);
  result.setItalic(font.italic);
  result.setKerning(false);
  result.setHintingPreference(QFont::PreferNoHinting);
  result.setStyleHint(QFont::SansSerif, QFont::PreferAntialias);
  return result;
}

/// A line never shows more than this, however narrow its characters.
QString Bounded(const QString& text, double width) {
  return text.left(static_cast<qsizetype>(std::clamp(width * 4, 0.0, 1e6)) + 64);
}

}  // namespace

QtFont::QtFont(const Font& font, double pixelsPerPoint)
    : wanted_(font),
      font_(MakeFont(font, pixelsPerPoint)),
      metrics_(font_),
      ascent_(static_cast<int>(std::ceil(metrics_.ascent()))),
      leading_(std::max(0, ascent_ - static_cast<int>(std::ceil(metrics_.capHeight())))),
      height_(ascent_ + static_cast<int>(std::ceil(metrics_.descent()))),
      widest_(std::max(metrics_.maxWidth(), 1.5 * font_.pixelSize())),
      ellipsis_(metrics_.horizontalAdvance(QChar(Ellipsis))) {
  advances_.fill(-1);
}

double QtFont::Advance(char16_t letter) const {
  float& advance = advances_[letter];
  if (advance < 0) advance = static_cast<float>(metrics_.horizontalAdvance(QChar(letter)));
  return static_cast<double>(advance);
}

double QtFont::Width(const QString& text) const {
  double width = 0;
  for (const QChar letter : text) {
    if (letter.unicode() >= Plain) return metrics_.horizontalAdvance(text);
    width += Advance(letter.unicode());
  }
  return width;
}

bool QtFont::SurelyFits(qsizetype units, double width) const {
  return static_cast<double>(units) * widest_ <= width;
}

QString QtFont::WithEllipsis(const QString& text, double width) const {
  double sum = 0;
  qsizetype fitting = 0;
  for (qsizetype at = 0; at < text.size(); ++at) {
    const char16_t letter = text[at].unicode();
    if (letter >= Plain) return metrics_.elidedText(Bounded(text, width), Qt::ElideRight, width);
    if (sum + ellipsis_ <= width) fitting = at;
    sum += Advance(letter);
    if (sum > width) return text.left(fitting) + QChar(Ellipsis);
  }
  return text;
}

const QtFont& QtFonts::For(const Font& font) {
  if (last_ != nullptr && last_->Wanted() == font) return *last_;
  const auto found = std::find_if(fonts_.begin(), fonts_.end(),
                                  [&](const auto& each) { return each->Wanted() == font; });
  if (found == fonts_.end()) {
    fonts_.push_back(std::make_unique<QtFont>(font, pixelsPerPoint_));
    last_ = fonts_.back().get();
  } else {
    last_ = found->get();
  }
  return *last_;
}

}  // namespace velkor
