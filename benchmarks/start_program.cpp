// The program as main() starts it, ending when the window has shown the opened waveform. Usage: bench_start FILE
#include "Application.h"
#include "editor/MainWindow.h"
#include "instrument/Initialise.h"
#include "platform/posix/BigPages.h"
#include "platform/posix/ReadFolders.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/WaveformCanvas.h"

#include <QApplication>
#include <QTimer>

namespace {

// Sees the picture painted after the file's name is in the title.
class FirstPicture final : public QObject {
public:
  explicit FirstPicture(QWidget& window) : window_(window) {}

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint && !window_.windowTitle().contains(QStringLiteral("<Untitled>"))) {
      QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
    }
    return false;
  }

private:
  QWidget& window_;
};

} // namespace

int main(int argc, char** argv) {
  calder::UseBigPagesForHeap();
  calder::ModelDatabase models; // read while the toolkit starts
  models.Prefetch(calder::FindProgramFile(calder::ReadFolders(), calder::kModelFolder));
  QApplication qtApplication(argc, argv);
  calder::QtDesktop desktop;
  calder::Application application(desktop.Services(), std::move(models));
  if (!application.Start(std::vector<std::string>(argv + 1, argv + argc))) return 1;
  FirstPicture first(application.Window());
  application.Window().findChild<calder::WaveformCanvas*>(QStringLiteral("Pict_Wave"))->installEventFilter(&first);
  return QApplication::exec();
}
