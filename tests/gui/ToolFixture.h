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
  // The form that is driven, at its smallest size: nothing is clipped, no two controls share an access key but the
  // given ones, Tab reaches all. Its picture goes to CALDER_PICTURES, when that names a folder.
  void LookAt(const char* name, const char* sharedKeys = "") {
    const QString folder = qEnvironmentVariable("CALDER_PICTURES");
    const QString language = QLatin1String(State().language == Language::English ? "en" : "ja");
    if (!folder.isEmpty())
      driven->grab().save(
          folder + QStringLiteral("/%1-%2-%3.png").arg(QLatin1String(name), language).arg(driven->devicePixelRatioF()));
    driven->resize(driven->minimumSizeHint());
    QCoreApplication::processEvents();
    EXPECT_FALSE(driven->windowTitle().isEmpty()) << name;
    SCOPED_TRACE(name + language.toStdString());
    ExpectWellLaidOut(*driven, QLatin1String(sharedKeys));
    ExpectReachable(*driven);
  }
};

} // namespace calder
