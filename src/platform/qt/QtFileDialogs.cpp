#include "platform/qt/QtFileDialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>

#include <algorithm>

namespace calder {
namespace {

// "text|pattern|text|pattern" as the toolkit's own filters. A text that names its pattern in brackets keeps it once.
QStringList Filters(const std::string& filter) {
  const QStringList parts = QString::fromStdString(filter).split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString pattern = parts[i + 1];
    if (pattern == QLatin1String("*.*")) pattern = QStringLiteral("*");
    QString text = parts[i];
    text.truncate(text.lastIndexOf(QLatin1Char('(')) < 0 ? text.size() : text.lastIndexOf(QLatin1Char('(')));
    // Extensions are told apart without regard to case, so both forms are listed.
    const QString upper = pattern.toUpper();
    filters << (pattern == upper ? QStringLiteral("%1 (%2)").arg(text.trimmed(), pattern)
                                 : QStringLiteral("%1 (%2 %3)").arg(text.trimmed(), pattern, upper));
  }
  return filters;
}

} // namespace

std::optional<FileDialogAnswer> QtFileDialogs::Open(const FileDialogRequest& request) {
  return Run(request, false);
}
std::optional<FileDialogAnswer> QtFileDialogs::Save(const FileDialogRequest& request) {
  return Run(request, true);
}

std::optional<FileDialogAnswer> QtFileDialogs::Run(const FileDialogRequest& request, bool save) {
  QFileDialog dialog(QApplication::activeWindow());
  dialog.setObjectName(QStringLiteral("FileDialog"));
  // One dialog on every desktop, so that the keys are the same everywhere.
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  if (!request.title.empty()) dialog.setWindowTitle(QString::fromStdString(request.title));
  const QStringList filters = Filters(request.filter);
  dialog.setNameFilters(filters);
  const qsizetype wanted =
      std::clamp<qsizetype>(request.filterIndex - 1, 0, std::max<qsizetype>(0, filters.size() - 1));
  if (!filters.isEmpty()) dialog.selectNameFilter(filters[wanted]);
  dialog.setDefaultSuffix(QString::fromStdString(request.defaultExt));
  QFileInfo initial(QString::fromStdString(request.fileName));
  if (const auto folder = settings_.Get("Files", "LastFolder");
      folder && QFileInfo::exists(QString::fromStdString(*folder)) &&
      (request.fileName.empty() || initial.fileName() == QLatin1String("Untitled"))) {
    initial.setFile(QDir(QString::fromStdString(*folder)), initial.fileName());
  }
  if (initial.dir().exists()) dialog.setDirectory(initial.dir());
  if (!initial.fileName().isEmpty()) dialog.selectFile(initial.fileName());
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  const qsizetype chosen = filters.indexOf(dialog.selectedNameFilter());
  return FileDialogAnswer{dialog.selectedFiles().constFirst().toStdString(),
                          static_cast<int>(std::max<qsizetype>(chosen, 0)) + 1};
}

} // namespace calder
