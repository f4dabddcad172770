// hosts/yearplan/window/ProgressLine.h: how far something is that goes on beside the user's work.
#pragma once

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <functional>

namespace velkor {

/// A bar, what goes on, and a button to stop it; hidden while nothing does.
class ProgressLine : public QWidget {
 public:
  explicit ProgressLine(std::function<void()> onCancel)
      : text_(new QLabel), bar_(new QProgressBar), cancel_(new QPushButton(tr("Cancel"))) {
    setObjectName("ProgressLine");
    text_->setTextFormat(Qt::PlainText);
    text_->setObjectName("progressText");
    constexpr int BarWidth = 120;
    bar_->setFixedWidth(BarWidth);
    bar_->setTextVisible(false);
    bar_->setFixedHeight(fontMetrics().height());
    cancel_->setObjectName("cancelProgress");
    cancel_->setAutoDefault(false);
    connect(cancel_, &QPushButton::clicked, this, std::move(onCancel));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(text_);
    row->addWidget(bar_);
    row->addWidget(cancel_);
    row->addStretch();
    hide();
  }

  /// @param of  0: nobody knows how much there is to do
  void Show(const QString& text, int done = 0, int of = 0) {
    text_->setText(text);
    bar_->setAccessibleName(text);
    bar_->setMaximum(of);
    bar_->setValue(done);
    show();
  }

 private:
  QLabel* text_;
  QProgressBar* bar_;
  QPushButton* cancel_;
};

}  // namespace velkor
