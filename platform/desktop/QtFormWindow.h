// platform/desktop/QtFormWindow.h: the window of a form that places its elements itself.
#pragma once

#include <QDialog>
#include <QSize>

#include "platform/Forms.h"

namespace velkor {

/// A modal window that the user may enlarge. It opens as large as the form wants, yet no larger
/// than the screen. The first picture that hears keys has the keyboard; Escape unloads the form,
/// Enter does nothing. The form outlives it.
class QtFormWindow : public QDialog {
 public:
  /// Makes the elements' widgets. Throws Error for an element that no widget mirrors, and for one
  /// whose holder was not placed before it.
  QtFormWindow(Form& form, QWidget* parent);
  ~QtFormWindow() override;

  /// Shows the form until it is unloaded.
  void ShowModal();
  /// Unloads the form.
  void reject() override;

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  /// What the form is told of the window.
  struct Area {
    QSize size;
    double ratio = 0;

    friend bool operator==(const Area&, const Area&) = default;
  };

  void MakePeers();
  void OpenInSize(Extent wanted);
  void FitSoon();
  void Fit();

  Form& form_;
  /// As the form arranged itself last.
  Area fitted_;
  bool fitting_ = false;
  bool due_ = false;
};

}  // namespace velkor
