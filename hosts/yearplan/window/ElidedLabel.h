// hosts/yearplan/window/ElidedLabel.h: a line of text that never makes its window wider.
#pragma once

#include <QLabel>
#include <QPainter>

namespace velkor {

/// Ends in an ellipsis where the room ends.
class ElidedLabel : public QLabel {
 public:
  ElidedLabel() {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QString line = text().simplified();
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(line, Qt::ElideRight, width()));
  }
};

}  // namespace velkor
