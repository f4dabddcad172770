// hosts/yearplan/PlannerWidget.h: the widget in which one control lives.
#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "platform/Elements.h"

namespace velkor {

class YearPlan;

/// Has a peer for each element of the control and tells it its size. The control outlives it. The
/// grid gets the keyboard when this does.
class PlannerWidget : public QWidget {
 public:
  explicit PlannerWidget(YearPlan& plan, QWidget* parent = nullptr);

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void MakePeers();
  void Fit();

  YearPlan& plan_;
  /// Of the elements that have no widget.
  std::vector<std::unique_ptr<ElementPeer>> peers_;
};

}  // namespace velkor
