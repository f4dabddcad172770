// platform/desktop/QtPages.cpp: pages of a Qt device as surfaces, and texts measured for them.
#include "platform/desktop/QtPages.h"

#include "support/values/Error.h"

namespace velkor {
namespace {

constexpr double TwipsPerInch = 1440;

[[noreturn]] void Fail(const char* reason) {
  throw Error(errors::DeviceInputOutput, reason, "Printer");
}

}  // namespace

QtPages::QtPages(QPagedPaintDevice& device, int resolution)
    : device_(device), scale_(resolution * static_cast<double>(PagePixel.width) / TwipsPerInch) {
  if (!painter_.begin(&device_)) Fail("The printer does not begin a document");
  BeginPage();
}

void QtPages::BeginPage() {
  surface_.emplace(painter_, PagePixel, scale_);
}

void QtPages::NewPage() {
  surface_.reset();
  if (!device_.newPage()) Fail("The printer does not begin a page");
  BeginPage();
}

void QtPages::End() {
  surface_.reset();
  if (!painter_.end()) Fail("The printer does not end the document");
}

}  // namespace velkor
