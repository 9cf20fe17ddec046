// The main window with a modal tool open on it.
#pragma once

#include "MainWindowFixture.h"
#include "tools/frame/ToolForm.h"

#include <QMouseEvent>
#include <QPointer>
#include <QTimer>

#include <functional>

namespace calder {

struct ToolFixture : MainWindowFixture {
  // Chooses the entry; `act` runs once the tool is shown, with `driven` at it, and has to close it. Without one no tool
  // is to open.
  void OpenTool(const char* entry, const std::function<void()>& act) {
    auto* action = Find<QAction>(entry);
    if (act) Within(act);
    action->trigger();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    driven = window;
  }
  // The same for what the next gesture opens on top of the present form.
  void Within(const std::function<void()>& act) {
    QTimer::singleShot(0, window, [this, act] {
      QWidget* const below = driven;
      driven = QApplication::activeModalWidget();
      ASSERT_NE(driven, nullptr);
      ASSERT_NE(driven, below);
      ASSERT_TRUE(QTest::qWaitForWindowExposed(driven));
      QApplication::setActiveWindow(driven);
      QCoreApplication::processEvents();
      const QPointer<QWidget> form = driven;
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
  // Nothing is clipped at the smallest size; the form's picture goes to CALDER_PICTURES, when that names a folder.
  void LookAt(const char* name) {
    const QString folder = qEnvironmentVariable("CALDER_PICTURES");
    if (!folder.isEmpty()) {
      const bool english = State().language == Language::English;
      driven->grab().save(folder + QStringLiteral("/%1-%2-%3.png")
                                       .arg(QLatin1String(name), QLatin1String(english ? "en" : "ja"))
                                       .arg(driven->devicePixelRatioF()));
    }
    driven->resize(driven->minimumSizeHint());
    QCoreApplication::processEvents();
    ExpectWellLaidOut(*driven);
  }
};

} // namespace calder
