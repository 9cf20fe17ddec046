#include "platform/qt/QtFileDialogs.h"

#include "platform/qt/DialogOwner.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>

#include <algorithm>

namespace calder {
namespace {

// "text|pattern|text|pattern" as the toolkit's own filters: the pattern stands in brackets at the text's end. Case does
// not matter to it.
QStringList Filters(const std::string& filter) {
  const QStringList parts = QString::fromStdString(filter).split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString bracket = QLatin1Char('(') + parts[i + 1] + QLatin1Char(')');
    filters << (parts[i].endsWith(bracket) ? parts[i] : parts[i] + bracket);
  }
  return filters;
}

// "CSV table (*.csv)": "csv"; empty where the pattern is no single extension.
QString SuffixOf(const QString& filter) {
  static const QRegularExpression kPattern(QStringLiteral("\\(\\*\\.(\\w+)\\)$"));
  return kPattern.match(filter).captured(1);
}

// The toolkit's dialog looks for a typed name in its list only, which leaves out what the filter leaves out: it would
// disable the Open button for an existing file of another extension, though Return opens it.
class TypedFileOpens final : public QObject {
public:
  explicit TypedFileOpens(QFileDialog& dialog)
      : QObject(&dialog), dialog_(dialog), name_(dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
    const auto* box = dialog.findChild<QDialogButtonBox*>();
    open_ = box == nullptr ? nullptr : box->button(QDialogButtonBox::Open);
    if (open_ == nullptr || name_ == nullptr) return;
    open_->installEventFilter(this);
    connect(name_, &QLineEdit::textChanged, this, &TypedFileOpens::Enable); // after the dialog's own look
  }

  bool eventFilter(QObject* /*button*/, QEvent* event) override {
    if (event->type() == QEvent::EnabledChange) Enable();
    return false;
  }

private:
  void Enable() {
    const QString name = name_->text();
    if (!open_->isEnabled() && !name.isEmpty() && QFileInfo(dialog_.directory(), name).isFile())
      open_->setEnabled(true);
  }

  QFileDialog& dialog_;
  QLineEdit* name_ = nullptr;
  QPushButton* open_ = nullptr;
};

// A saved file is new: asked as replacing one is.
bool MayCreate(const QString& path) {
  const QString question = QLocale::system().language() == QLocale::Japanese
                               ? QStringLiteral("%1 は存在しません。新しく作成しますか？")
                               : QStringLiteral("%1 does not exist. Create it?");
  return QMessageBox::question(DialogOwner(), QStringLiteral("Caution Message"),
                               question.arg(QFileInfo(path).fileName()), QMessageBox::Yes | QMessageBox::No,
                               QMessageBox::Yes) == QMessageBox::Yes;
}

} // namespace

std::optional<FileDialogAnswer> QtFileDialogs::Open(const FileDialogRequest& request) {
  return Run(request, false);
}
std::optional<FileDialogAnswer> QtFileDialogs::Save(const FileDialogRequest& request) {
  return Run(request, true);
}

std::optional<FileDialogAnswer> QtFileDialogs::Run(const FileDialogRequest& request, bool save) {
  QFileDialog dialog(DialogOwner());
  dialog.setObjectName(QStringLiteral("FileDialog"));
  // One dialog on every desktop, so that the keys are the same everywhere.
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  // It only chooses: the toolkit's dialog would erase a selected folder with all that is in it at a key.
  dialog.setOption(QFileDialog::ReadOnly);
  dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  if (!request.title.empty()) dialog.setWindowTitle(QString::fromStdString(request.title));
  const QStringList filters = Filters(request.filter);
  dialog.setNameFilters(filters);
  const qsizetype wanted =
      std::clamp<qsizetype>(request.filterIndex - 1, 0, std::max<qsizetype>(0, filters.size() - 1));
  if (!filters.isEmpty()) dialog.selectNameFilter(filters[wanted]);
  dialog.setDefaultSuffix(QString::fromStdString(request.defaultExt));
  if (request.defaultExt.empty()) { // the chosen type's own
    dialog.setDefaultSuffix(SuffixOf(dialog.selectedNameFilter()));
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                     [&dialog](const QString& filter) { dialog.setDefaultSuffix(SuffixOf(filter)); });
  }
  QFileInfo initial(QString::fromStdString(request.fileName));
  if (const auto folder = settings_.Get("Files", "LastFolder");
      folder && QFileInfo::exists(QString::fromStdString(*folder)) &&
      (request.fileName.empty() || initial.fileName() == QLatin1String("Untitled"))) {
    // Without a name the folder's own end would be taken for one.
    const QString offered = QString::fromStdString(*folder) + QLatin1Char('/') + initial.fileName();
    initial.setFile(offered);
  }
  if (initial.dir().exists()) dialog.setDirectory(initial.dir());
  if (!initial.fileName().isEmpty()) dialog.selectFile(initial.fileName());
  if (!save) new TypedFileOpens(dialog); // the dialog owns it
  QString path;
  do { // the dialog comes back on a No
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    path = dialog.selectedFiles().constFirst();
  } while (save && !QFileInfo::exists(path) && !MayCreate(path));
  const qsizetype chosen = filters.indexOf(dialog.selectedNameFilter());
  return FileDialogAnswer{path.toStdString(), static_cast<int>(std::max<qsizetype>(chosen, 0)) + 1};
}

} // namespace calder
