// hosts/yearplan/window/PlannerApplication.h: the event loop, which no failure leaves.
#pragma once

#include <QApplication>

namespace velkor {

/// What a handler throws is told in a message box, and the program goes on: exceptions may not pass
/// through the toolkit (Qt documentation, "Exception Safety").
class PlannerApplication : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override;

 private:
  void Tell(const char* what);

  bool telling_ = false;
};

}  // namespace velkor
