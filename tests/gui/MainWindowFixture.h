// The whole program's window off-screen, on a desktop of the test's own and the toolkit's real clipboard.
#pragma once

#include "Application.h"
#include "FakeDesktop.h"
#include "FormDriver.h"
#include "editor/MainWindow.h"
#include "platform/qt/QtClipboard.h"

#include <QDropEvent>
#include <QMimeData>
#include <QWheelEvent>

#include <memory>
#include <string>
#include <vector>

namespace calder {

struct MainWindowFixture : testing::Test, FormDriver {
  void Start(const std::vector<std::string>& files = {}) {
    Desktop services = {desktop.boxes,     desktop.dialogs,
                        desktop.settings,  desktop.clock,
                        clipboard,         desktop.windows,
                        desktop.copies,    desktop.language,
                        desktop.libraries, worker != nullptr ? *worker : desktop.worker,
                        desktop.folders,   {}};
    application = std::make_unique<Application>(services);
    ASSERT_TRUE(application->Start(files));
    window = &application->Window();
    firstSize = window->size();
    window->resize(1000, 640);
    ShowForm(window);
  }

  void Wheel(const char* picture, QPointF at, int notches, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    auto* target = Find<WaveformCanvas>(picture);
    QWheelEvent event(at, target->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, keys, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(target, &event);
  }
  // As a file manager does it: the file's name comes as text as well.
  void Drop(QWidget* target, const std::string& path) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(path))});
    data.setText(QString::fromStdString(path));
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
    QCoreApplication::processEvents(); // the file is opened after the drop
  }
  Program& State() { return application->TheEditor().program; }
  // Point i holds i modulo 30000.
  void Ramp() {
    const auto points = W_Lock(State().buffers.Current());
    for (std::size_t i = 0; i < points.size(); ++i) points[i] = static_cast<std::int16_t>(i % 30000);
    window->Show(kEverything);
  }
  std::int32_t Code(double point) { return W_GetWaveData(State().buffers.Current(), point, 524288); }

  fake::FakeDesktop desktop;
  Worker* worker = nullptr; // instead of the desktop's
  QtClipboard clipboard;
  std::unique_ptr<Application> application;
  MainWindow* window = nullptr;
  QSize firstSize; // that the window gave itself
};

} // namespace calder
