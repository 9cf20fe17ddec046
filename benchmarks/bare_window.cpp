// A window program that does nothing else: prints the milliseconds from its start to its first painted picture.
#include <QApplication>
#include <QMainWindow>
#include <QPainter>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

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
  window.setCentralWidget(new Bare);
  window.resize(1120, 700);
  window.show();
  return QApplication::exec();
}
