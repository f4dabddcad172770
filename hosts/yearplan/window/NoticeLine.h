// hosts/yearplan/window/NoticeLine.h: a line over the year that tells or asks something, in no
// hurry.
#pragma once

#include <QFrame>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace velkor {

/// One thing to tell, with what the user may answer.
struct Notice {
  /// Unlike that of every other notice.
  std::string id = {};
  std::string text = {};
  std::vector<std::string> answers = {};

  friend bool operator==(const Notice&, const Notice&) = default;
};

/// Shows one notice after the other and says how many wait; hidden while there is none.
class NoticeLine : public QFrame {
 public:
  /// @param answer  counted from 0; the notice leaves with the next Show
  using OnAnswer = std::function<void(const std::string& id, std::size_t answer)>;

  explicit NoticeLine(OnAnswer onAnswer);

  /// Replaces all notices; the one on show stays there while it is among them.
  void Show(std::vector<Notice> notices);

 private:
  void Turn(std::size_t to);
  void MakeButtons(const Notice& notice);

  OnAnswer onAnswer_;
  std::vector<Notice> notices_;
  std::size_t current_ = 0;
  QLabel* text_;
  QHBoxLayout* buttons_;
  QPushButton* next_;
};

}  // namespace velkor
