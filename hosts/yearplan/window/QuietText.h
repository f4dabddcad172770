// hosts/yearplan/window/QuietText.h: words that explain, in a quieter colour than those they
// explain.
#pragma once

#include <QLabel>
#include <QPalette>

namespace velkor {

inline QColor QuietColour(const QPalette& palette) {
  constexpr float Quietness = 0.65F;
  QColor quiet = palette.color(QPalette::WindowText);
  quiet.setAlphaF(Quietness);
  return quiet;
}

/// A line that says what a field is for.
inline QLabel* MakeNote(const QString& text) {
  auto* const note = new QLabel(text);
  note->setTextFormat(Qt::PlainText);
  note->setWordWrap(true);
  QPalette colours = note->palette();
  colours.setColor(QPalette::WindowText, QuietColour(colours));
  note->setPalette(colours);
  return note;
}

}  // namespace velkor
