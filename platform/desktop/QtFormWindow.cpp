// platform/desktop/QtFormWindow.cpp: the window of a form that places its elements itself.
#include "platform/desktop/QtFormWindow.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <map>
#include <vector>

#include "platform/desktop/QtElementWidgets.h"
#include "platform/desktop/QtText.h"
#include "values/FlagScope.h"

namespace velkor {
namespace {

constexpr QSize LeastSize{400, 300};
/// What a window manager may put around a window.
constexpr QSize FrameRoom{16, 48};

/// Takes away the pointers that an operation shows all over the program, until it goes on.
class OrdinaryPointer {
 public:
  OrdinaryPointer() {
    while (const QCursor* const shown = QGuiApplication::overrideCursor()) {
      taken_.push_back(*shown);
      QGuiApplication::restoreOverrideCursor();
    }
  }
  ~OrdinaryPointer() {
    for (auto pointer = taken_.rbegin(); pointer != taken_.rend(); ++pointer) {
      QGuiApplication::setOverrideCursor(*pointer);
    }
  }
  OrdinaryPointer(const OrdinaryPointer&) = delete;
  OrdinaryPointer& operator=(const OrdinaryPointer&) = delete;

 private:
  std::vector<QCursor> taken_;
};

}  // namespace

QtFormWindow::QtFormWindow(Form& form, QWidget* parent) : QDialog(parent), form_(form) {
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  setObjectName(ToQt(form.Name()));
  setWindowTitle(ToQt(form.Title()));
  setAccessibleName(ToQt(form.Title()));
  OpenInSize(form.OpeningSize());
  MakePeers();
}

QtFormWindow::~QtFormWindow() {
  form_.onUnload = nullptr;
}

void QtFormWindow::OpenInSize(Extent wanted) {
  const QSize most = screen()->availableGeometry().size() - FrameRoom;
  const QSize size = ToQtPixels({0, 0, wanted.width, wanted.height}).size().boundedTo(most);
  const QSize opening = size.expandedTo(LeastSize.boundedTo(most));
  setMinimumSize(LeastSize.boundedTo(opening));
  resize(opening);
}

void QtFormWindow::MakePeers() {
  std::map<const Element*, QWidget*> widgets{{nullptr, this}};
  PictureBox* keyboard = nullptr;
  for (const PlacedElement& placed : form_.Placed()) {
    const auto holder = widgets.find(placed.holder);
    if (holder == widgets.end()) {
      throw Error(errors::InvalidProcedureCall,
                  "The holder of the element " + placed.element->Name() + " is not placed",
                  "QtForms");
    }
    widgets[placed.element] = MakePeerOf<Toolbar, PictureBox, Label, ScrollBar, CommandButton>(
        *placed.element, holder->second, Placement::Bounds);
    auto* const picture = dynamic_cast<PictureBox*>(placed.element);
    if (picture && picture->onKeyDown && !keyboard) keyboard = picture;
  }
  if (keyboard) keyboard->SetFocus();
}

void QtFormWindow::ShowModal() {
  const OrdinaryPointer pointer;
  form_.onUnload = [this] { done(Rejected); };
  form_.Open();
  exec();
  if (form_.IsOpen()) form_.Unload();
}

void QtFormWindow::reject() {
  form_.Unload();
}

bool QtFormWindow::event(QEvent* event) {
  const bool done = QDialog::event(event);
  // The window came to a screen of another scale.
  if (event->type() == QEvent::ScreenChangeInternal) FitSoon();
  return done;
}

void QtFormWindow::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  FitSoon();
}

void QtFormWindow::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  FitSoon();
}

/// Once the window is on show, and once for all sizes that it took meanwhile.
void QtFormWindow::FitSoon() {
  if (due_ || !isVisible()) return;
  due_ = true;
  const auto fit = [this] {
    due_ = false;
    Fit();
  };
  QMetaObject::invokeMethod(this, fit, Qt::QueuedConnection);
}

void QtFormWindow::Fit() {
  if (fitting_) return;
  const FlagScope fitting(fitting_);
  for (Area area{size(), devicePixelRatioF()}; form_.IsOpen() && area != fitted_;
       area = {size(), devicePixelRatioF()}) {
    fitted_ = area;
    const auto pixel = static_cast<float>(TwipsPerPixel / area.ratio);
    form_.Form_Resize({area.size.width() * TwipsPerPixel, area.size.height() * TwipsPerPixel},
                      {pixel, pixel});
  }
}

}  // namespace velkor
