#include "tools/import/ImportWindows.h"

#include "app/Messages.h"
#include "platform/qt/DialogOwner.h"
#include "platform/qt/Text.h"
#include "tools/import/ImportCaptions.h"
#include "tools/import/ImportDialog.h"
#include "tools/import/ImportProgress.h"
#include "ui_ImportReport.h"

#include <QApplication>
#include <QEvent>

namespace calder {
namespace {

constexpr int kPatience = 300; // milliseconds before the progress comes up
constexpr int kLook = 50;      // milliseconds between two looks at it
constexpr int kFrame = 15;     // milliseconds that the window may be without its events

class ImportReport final : public ToolForm {
public:
  ImportReport(clsRegistry& registry, const ErrMsg& messages, const std::string& report, QWidget* parent)
      : ToolForm(registry, "ImportReport", parent), ui_(std::make_unique<Ui::ImportReport>()) {
    ui_->setupUi(this);
    SetImportReportCaptions(*this, messages);
    ui_->Text_Report->setPlainText(Text(report));
    connect(ui_->Btn_OK, &QPushButton::clicked, this, [this] { done(Accepted); });
    Place({420, 300});
  }
  ~ImportReport() override { DisconnectControls(); }

private:
  std::unique_ptr<Ui::ImportReport> ui_;
};

bool IsInput(QEvent::Type type) {
  switch (type) {
  case QEvent::KeyPress:
  case QEvent::KeyRelease:
  case QEvent::Shortcut:
  case QEvent::ShortcutOverride:
  case QEvent::MouseButtonPress:
  case QEvent::MouseButtonRelease:
  case QEvent::MouseButtonDblClick:
  case QEvent::Wheel:
  case QEvent::ContextMenu:
  case QEvent::DragEnter:
  case QEvent::Drop:
  case QEvent::Close: return true;
  default: return false;
  }
}

} // namespace

ImportWindows::ImportWindows(clsRegistry& registry, const ErrMsg& messages) : registry_(registry), messages_(messages) {
  looks_.setInterval(kLook);
  connect(&looks_, &QTimer::timeout, this, &ImportWindows::Look);
}

ImportWindows::~ImportWindows() {
  delete progress_;
}

void ImportWindows::Begin(Running running) {
  running_ = std::move(running);
  since_.start();
  alive_.start();
  looks_.start();
  qApp->installEventFilter(this);
}

void ImportWindows::KeepAlive() {
  if (alive_.elapsed() < kFrame) return;
  QCoreApplication::processEvents();
  alive_.start();
}

void ImportWindows::Finished() {
  looks_.stop();
  qApp->removeEventFilter(this);
  delete progress_;
}

void ImportWindows::Look() {
  if (progress_ == nullptr) {
    if (since_.elapsed() < kPatience) return;
    progress_ = new ImportProgress(messages_, running_.cancel, DialogOwner()); // NOLINT: Finished deletes it
    progress_->show();
  }
  progress_->ShowFraction(running_.progress());
}

bool ImportWindows::eventFilter(QObject* watched, QEvent* event) {
  if (!IsInput(event->type())) return false;
  if (event->type() == QEvent::Shortcut) return true; // goes to the entry itself, past the widgets
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr) return false; // a window of the system: its widgets get the event next
  if (progress_ != nullptr && widget->window() == progress_) return false;
  event->ignore();
  return true;
}

bool ImportWindows::AskOptions(const std::string& name, PluginForm& form, const PluginSp::ChangeOption& change,
                               const std::function<void()>& stop) {
  ImportDialog dialog(registry_, messages_, name, form, change, stop, DialogOwner());
  return dialog.exec() == QDialog::Accepted;
}

void ImportWindows::ShowReport(const std::string& report) {
  auto* shown = new ImportReport(registry_, messages_, report, DialogOwner()); // NOLINT: it goes when it is closed
  shown->setAttribute(Qt::WA_DeleteOnClose);
  shown->show();
}

} // namespace calder
