// hosts/yearplan/window/PlannerWidget.h: the widget in which one control lives.
#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "platform/Elements.h"

namespace velkor {

class YearPlan;

/// Has a peer for each element of the control and tells it its size. The control outlives it. A
/// frame shows that the legend has the keyboard; a year of which nothing is seen says why, once it
/// was asked from the calendar. The grid is no focus proxy of it: Tab would go from the last
/// element to the grid, past those before it.
class PlannerWidget : public QWidget {
 public:
  explicit PlannerWidget(YearPlan& plan, QWidget* parent = nullptr);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void MakePeers();
  void Fit();

  YearPlan& plan_;
  QWidget* status_ = nullptr;
  /// The year was asked from the calendar.
  bool asked_ = false;
  QWidget* notice_ = nullptr;
  QWidget* legendView_ = nullptr;
  QWidget* legendRows_ = nullptr;
  /// Of the elements that have no widget.
  std::vector<std::unique_ptr<ElementPeer>> peers_;
};

}  // namespace velkor
