// platform/desktop/QtDialogs.h: file, colour and input dialogs, and progress, as windows.
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include "platform/CommonDialogs.h"
#include "platform/MessageBoxes.h"
#include "platform/Progress.h"

namespace velkor {

/// Each opens over the dialog that is open, else over `parent`. The toolkit's own dialogs, which
/// look alike on every desktop. File dialogs start in the folder of the file that was chosen last,
/// at first in that of the file in use, else in the user's documents; a name without an extension
/// gets that of the filter that is selected, else the dialog's own.
class QtCommonDialogs : public CommonDialogs {
 public:
  /// @param fileInUse  UTF-8; nothing is ever saved over it. Empty for none.
  explicit QtCommonDialogs(QWidget* parent = nullptr, const std::string& fileInUse = {});

  std::string ShowOpen(const FileDialog& dialog) override;
  std::string ShowSave(const FileDialog& dialog) override;
  /// Begins with a file name, UTF-8, without a folder; empty for none.
  std::string ShowSave(const FileDialog& dialog, const std::string& proposed);
  std::optional<Colour> ShowColour(Colour current) override;

 private:
  QPointer<QWidget> parent_;
  QString fileInUse_;
  QString folder_;
};

/// Hands on the line as it was typed.
class QtInputBoxes : public InputBoxes {
 public:
  explicit QtInputBoxes(QWidget* parent = nullptr) : parent_(parent) {}

  std::string Ask(const std::string& prompt, const std::string& title) override;

 private:
  QPointer<QWidget> parent_;
};

/// A window with a bar and a button to cancel, closing it or Escape cancels too; it opens when the
/// operation takes longer than a moment. Events are processed at most 25 times a second.
class QtProgress : public ProgressReports {
 public:
  explicit QtProgress(QWidget* parent = nullptr) : parent_(parent) {}

  std::unique_ptr<ProgressReport> Begin(std::string_view title) override;
  /// Whether an operation runs whose progress is reported.
  bool IsOpen() const { return open_ > 0; }

 private:
  QPointer<QWidget> parent_;
  int open_ = 0;
};

}  // namespace velkor
