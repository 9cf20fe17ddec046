// The least that a window program does: a menu, a label and a black picture; ends when it has shown them.
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QPainter>
#include <QTimer>
#include <QVBoxLayout>

namespace {

class Bare final : public QWidget {
protected:
  void paintEvent(QPaintEvent*) override {
    QPainter(this).fillRect(rect(), Qt::black);
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
  }
};

} // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow window;
  window.menuBar()->addMenu(QStringLiteral("&File"))->addAction(QStringLiteral("&Exit"));
  auto* panel = new QWidget;
  auto* layout = new QVBoxLayout(panel);
  layout->addWidget(new Bare, 1);
  layout->addWidget(new QLabel(QStringLiteral("A bare window")));
  window.setCentralWidget(panel);
  window.resize(1120, 700);
  window.show();
  return QApplication::exec();
}
