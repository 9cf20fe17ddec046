// The main window with a modal tool open on it.
#pragma once

#include "MainWindowFixture.h"
#include "tools/frame/ToolForm.h"

#include <QMouseEvent>

namespace calder {

struct ToolFixture : MainWindowFixture {
  // Chooses the entry; `act` runs once the tool is shown, with `driven` at it. Without one no tool is to open.
  void OpenTool(const char* entry, const std::function<void()>& act) {
    if (act) Within(act);
    Find<QAction>(entry)->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    driven = window;
  }
  // The same for what the next gesture opens on top of the present form.
  void Within(const std::function<void()>& act) {
    QTimer::singleShot(0, window, [this, act] {
      QWidget* const below = driven;
      QWidget* const modal = QApplication::activeModalWidget();
      const QPointer<QWidget> form = modal != nullptr ? modal : window->findChild<ToolForm*>();
      ASSERT_TRUE(form != nullptr && form != below);
      ShowForm(form);
      act();
      if (form != nullptr) form->close();
      driven = below;
    });
  }
  // The pointer over a picture without a button: where windows lie above each other off-screen, nobody knows which one
  // would get it.
  void Hover(const char* name, QPoint at) {
    auto* picture = Find<WaveformCanvas>(name);
    QMouseEvent event(QEvent::MouseMove, at, picture->mapToGlobal(QPointF(at)), Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QApplication::sendEvent(picture, &event);
  }
};

} // namespace calder
