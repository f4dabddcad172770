// platform/desktop/QtDialogs.cpp: the toolkit's dialogs, asked in the seams' terms.
#include "platform/desktop/QtDialogs.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QProgressDialog>

#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

QWidget* Over(QWidget* parent) {
  QWidget* const dialog = QApplication::activeModalWidget();
  return dialog ? dialog : parent;
}

/// "Data(*.xml)|*.xml|All|*" in the toolkit's form: the pattern in parentheses after the name.
QStringList NameFilters(const std::string& filter) {
  const QStringList parts = ToQt(filter).split(u'|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString pattern =
        parts[i + 1] == QLatin1String("*.*") ? QStringLiteral("*") : parts[i + 1];
    const QString name = parts[i].section(u'(', 0, 0);
    filters << name + QLatin1String(" (") + QString(pattern).replace(u';', u' ') + u')';
  }
  return filters;
}

std::string Show(const FileDialog& dialog, QWidget* parent, QFileDialog::AcceptMode mode) {
  QFileDialog window(parent, ToQt(dialog.title));
  window.setOption(QFileDialog::DontUseNativeDialog);
  window.setOption(QFileDialog::DontConfirmOverwrite,
                   (dialog.flags & file_dialog_flags::OverwritePrompt) == 0);
  window.setAcceptMode(mode);
  const bool opens = mode == QFileDialog::AcceptOpen;
  window.setFileMode(opens ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  window.setNameFilters(NameFilters(dialog.filter));
  window.setDefaultSuffix(ToQt(dialog.defaultExtension));
  if (window.exec() != QDialog::Accepted) return {};
  return window.selectedFiles().value(0).toStdString();
}

class Report : public ProgressReport {
 public:
  Report(QWidget* parent, std::string_view title) : window_(parent) {
    window_.setWindowTitle(ToQt(title));
    window_.setWindowModality(Qt::ApplicationModal);
    window_.setAutoClose(false);
    window_.setAutoReset(false);
  }

  bool Step(int done, int total, std::string_view text) override {
    window_.setMaximum(total);
    window_.setLabelText(ToQt(text));
    window_.setValue(done);
    return !window_.wasCanceled();
  }

 private:
  QProgressDialog window_;
};

}  // namespace

std::string QtCommonDialogs::ShowOpen(const FileDialog& dialog) {
  return Show(dialog, Over(parent_), QFileDialog::AcceptOpen);
}

std::string QtCommonDialogs::ShowSave(const FileDialog& dialog) {
  return Show(dialog, Over(parent_), QFileDialog::AcceptSave);
}

std::optional<Colour> QtCommonDialogs::ShowColour(Colour current) {
  const QColor chosen =
      QColorDialog::getColor(QColor(current.Red(), current.Green(), current.Blue()), Over(parent_),
                             {}, QColorDialog::DontUseNativeDialog);
  if (!chosen.isValid()) return std::nullopt;
  return Colour::FromRgb(chosen.red(), chosen.green(), chosen.blue());
}

std::string QtInputBoxes::Ask(const std::string& prompt, const std::string& title) {
  return QInputDialog::getText(Over(parent_), ToQt(title), ToQt(prompt)).toStdString();
}

std::unique_ptr<ProgressReport> QtProgress::Begin(std::string_view title) {
  return std::make_unique<Report>(Over(parent_), title);
}

}  // namespace velkor
