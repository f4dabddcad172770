// hosts/yearplan/window/NoticeLine.cpp: a sentence and its buttons.
#include "hosts/yearplan/window/NoticeLine.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "platform/desktop/QtText.h"

namespace velkor {

NoticeLine::NoticeLine(OnAnswer onAnswer)
    : onAnswer_(std::move(onAnswer)),
      text_(new QLabel),
      buttons_(new QHBoxLayout),
      next_(new QPushButton) {
  setObjectName("NoticeLine");
  setStyleSheet(
      "#NoticeLine { background:#fff6d8; border-bottom:1px solid #d9b84a; }"
      "#noticeText { color:#4a3a00; }");
  text_->setObjectName("noticeText");
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  next_->setObjectName("nextNotice");
  connect(next_, &QPushButton::clicked, this, [this] { Turn((current_ + 1) % notices_.size()); });
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 8, 4);
  row->addWidget(text_, 1);
  row->addLayout(buttons_);
  row->addWidget(next_);
  hide();
}

void NoticeLine::Show(std::vector<Notice> notices) {
  if (notices == notices_) return;
  const std::string shown = notices_.empty() ? std::string() : notices_[current_].id;
  notices_ = std::move(notices);
  setHidden(notices_.empty());
  if (notices_.empty()) return;
  const auto same = std::ranges::find(notices_, shown, &Notice::id);
  Turn(same == notices_.end() ? 0 : static_cast<std::size_t>(same - notices_.begin()));
}

void NoticeLine::Turn(std::size_t to) {
  current_ = to;
  const Notice& notice = notices_[current_];
  text_->setText(ToQt(notice.text));
  MakeButtons(notice);
  next_->setVisible(notices_.size() > 1);
  next_->setText(tr("Next (%1 of %2)").arg(current_ + 1).arg(notices_.size()));
  QAccessibleEvent alert(text_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void NoticeLine::MakeButtons(const Notice& notice) {
  while (QLayoutItem* const old = buttons_->takeAt(0)) {
    // One of them may have been clicked just now.
    old->widget()->hide();
    old->widget()->deleteLater();
    delete old;
  }
  for (std::size_t i = 0; i < notice.answers.size(); ++i) {
    auto* const button = new QPushButton(ToQt(notice.answers[i]));
    button->setObjectName("answer" + QString::number(i));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, id = notice.id, i] { onAnswer_(id, i); });
    buttons_->addWidget(button);
  }
}

}  // namespace velkor
