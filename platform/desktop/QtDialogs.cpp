// platform/desktop/QtDialogs.cpp: the toolkit's dialogs, asked in the seams' terms.
#include "platform/desktop/QtDialogs.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QProgressDialog>
#include <QStandardPaths>
#include <limits>

#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

QWidget* Over(QWidget* parent) {
  QWidget* const dialog = QApplication::activeModalWidget();
  return dialog ? dialog : parent;
}

struct NameFilter {
  /// In the toolkit's form: the patterns in parentheses after the name.
  QString text;
  /// Of the files that it lets through; empty for any.
  QString suffix;
};

/// "Data(*.xml)|*.xml|All|*.*" taken apart.
QList<NameFilter> NameFilters(const std::string& filter) {
  const QStringList parts = ToQt(filter).split(u'|');
  QList<NameFilter> filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString pattern = parts[i + 1] == QLatin1String("*.*") ? QStringLiteral("*") : parts[i + 1];
    const QString first = pattern.section(u';', 0, 0);
    const QString suffix = first.startsWith(QLatin1String("*.")) ? first.mid(2) : QString();
    const QString name = parts[i].section(u'(', 0, 0).trimmed();
    filters.push_back({name + QLatin1String(" (") + pattern.replace(u';', u' ') + u')',
                       suffix.contains(u'*') ? QString() : suffix});
  }
  return filters;
}

QString DocumentsFolder() {
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

/// Empty when the user cancels.
QString Show(const FileDialog& dialog, const QString& folder, QWidget* parent,
             QFileDialog::AcceptMode mode, const std::string& proposed = {}) {
  QFileDialog window(parent, ToQt(dialog.title), folder);
  window.setOption(QFileDialog::DontUseNativeDialog);
  window.setOption(QFileDialog::DontConfirmOverwrite,
                   (dialog.flags & file_dialog_flags::OverwritePrompt) == 0);
  window.setAcceptMode(mode);
  const bool opens = mode == QFileDialog::AcceptOpen;
  window.setFileMode(opens ? QFileDialog::ExistingFile : QFileDialog::AnyFile);

  const QList<NameFilter> filters = NameFilters(dialog.filter);
  QStringList texts;
  for (const NameFilter& filter : filters) texts << filter.text;
  window.setNameFilters(texts);
  window.setDefaultSuffix(ToQt(dialog.defaultExtension));
  if (!proposed.empty()) window.selectFile(ToQt(proposed));
  QObject::connect(&window, &QFileDialog::filterSelected, &window, [&](const QString& text) {
    QString suffix = ToQt(dialog.defaultExtension);
    for (const NameFilter& filter : filters) {
      if (filter.text == text && !filter.suffix.isEmpty()) suffix = filter.suffix;
    }
    window.setDefaultSuffix(suffix);
  });

  if (window.exec() != QDialog::Accepted) return {};
  return window.selectedFiles().value(0);
}

class Report : public ProgressReport {
 public:
  /// Counts itself in `open`.
  Report(QWidget* parent, std::string_view title, int& open) : window_(parent), open_(open) {
    ++open_;
    window_.setObjectName("progress");
    window_.setWindowTitle(ToQt(title));
    window_.setAccessibleName(ToQt(title));
    window_.setWindowModality(Qt::ApplicationModal);
    window_.setAutoClose(false);
    window_.setAutoReset(false);
    // Step alone shows it.
    window_.setMinimumDuration(std::numeric_limits<int>::max());
    auto* const text = new QLabel;
    text->setTextFormat(Qt::PlainText);
    window_.setLabel(text);
    window_.setMinimumWidth(Width);
    QObject::connect(&window_, &QProgressDialog::canceled, [this] { cancelled_ = true; });
    QObject::connect(&window_, &QDialog::rejected, [this] { cancelled_ = true; });
    sinceBegin_.start();
    sinceUpdate_.start();
  }

  ~Report() override { --open_; }
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;

  bool Step(int done, int total, std::string_view text) override {
    if (cancelled_ || processing_) return !cancelled_;
    if (sinceUpdate_.elapsed() < UpdateInterval) return true;
    Update(done, total, text);
    sinceUpdate_.start();
    return !cancelled_;
  }

 private:
  static constexpr int Width = 420;
  /// In milliseconds, as the next.
  static constexpr int UpdateInterval = 40;
  static constexpr int Moment = 500;

  void Update(int done, int total, std::string_view text) {
    processing_ = true;
    if (sinceBegin_.elapsed() < Moment) {
      // Nothing keeps the user from the other windows yet.
      QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    } else {
      constexpr int Air = 32;
      window_.setMaximum(total);
      window_.setLabelText(
          window_.fontMetrics().elidedText(ToQt(text).simplified(), Qt::ElideMiddle, Width - Air));
      window_.setValue(done);
      if (!window_.isVisible()) window_.show();
      QCoreApplication::processEvents();
    }
    processing_ = false;
  }

  QProgressDialog window_;
  int& open_;
  QElapsedTimer sinceBegin_;
  QElapsedTimer sinceUpdate_;
  bool cancelled_ = false;
  bool processing_ = false;
};

}  // namespace

QtCommonDialogs::QtCommonDialogs(QWidget* parent, const std::string& fileInUse)
    : parent_(parent), fileInUse_(ToQt(fileInUse)) {
  const QString folder = QFileInfo(fileInUse_).absolutePath();
  folder_ = fileInUse.empty() || !QFileInfo(folder).isDir() ? DocumentsFolder() : folder;
}

std::string QtCommonDialogs::ShowOpen(const FileDialog& dialog) {
  const QString chosen = Show(dialog, folder_, Over(parent_), QFileDialog::AcceptOpen);
  if (!chosen.isEmpty()) folder_ = QFileInfo(chosen).absolutePath();
  return chosen.toStdString();
}

std::string QtCommonDialogs::ShowSave(const FileDialog& dialog) {
  return ShowSave(dialog, {});
}

std::string QtCommonDialogs::ShowSave(const FileDialog& dialog, const std::string& proposed) {
  while (true) {
    const QString chosen = Show(dialog, folder_, Over(parent_), QFileDialog::AcceptSave, proposed);
    if (chosen.isEmpty()) return {};
    folder_ = QFileInfo(chosen).absolutePath();
    const QString existing = QFileInfo(chosen).canonicalFilePath();
    if (existing.isEmpty() || existing != QFileInfo(fileInUse_).canonicalFilePath()) {
      return chosen.toStdString();
    }
    QMessageBox::warning(Over(parent_), ToQt(dialog.title),
                         QFileInfo(chosen).fileName() +
                             QLatin1String(" is the calendar itself. Please choose another name."));
  }
}

std::optional<Colour> QtCommonDialogs::ShowColour(Colour current) {
  const QColor chosen =
      QColorDialog::getColor(QColor(current.Red(), current.Green(), current.Blue()), Over(parent_),
                             QStringLiteral("Colour"), QColorDialog::DontUseNativeDialog);
  if (!chosen.isValid()) return std::nullopt;
  return Colour::FromRgb(chosen.red(), chosen.green(), chosen.blue());
}

std::string QtInputBoxes::Ask(const std::string& prompt, const std::string& title) {
  QInputDialog window(Over(parent_));
  window.setWindowTitle(ToQt(title));
  window.setAccessibleName(ToQt(title));
  window.setInputMode(QInputDialog::TextInput);
  // The label is the line's buddy, where a single & would mark a key.
  window.setLabelText(ToQt(prompt).replace(u'&', QLatin1String("&&")));
  if (auto* const label = window.findChild<QLabel*>()) {
    constexpr int Width = 360;
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(Width);
  }
  return window.exec() == QDialog::Accepted ? window.textValue().toStdString() : std::string();
}

std::unique_ptr<ProgressReport> QtProgress::Begin(std::string_view title) {
  return std::make_unique<Report>(Over(parent_), title, open_);
}

}  // namespace velkor
