// The main window: lays the controls out, forwards what the user does to the Editor and shows what it says.
#pragma once

#include "editor/Editor.h"

#include <QMainWindow>

#include <functional>
#include <memory>

namespace Ui {
class MainWindow;
}

namespace calder {

class WaveformCanvas;

class MainWindow final : public QMainWindow, private EditorPort {
  Q_OBJECT

public:
  // The editor must outlive the window. REQUIRES: editor.Start() succeeded.
  explicit MainWindow(Editor& editor);
  ~MainWindow() override;

  // A tool of the Tools menu and of the tool buttons: opening it returns when it is closed. Tools that nobody adds are
  // not offered.
  void AddTool(ToolNo tool, std::function<void()> open);

  // The System Setup entry of the menu.
  void AddSystemSetup(std::function<void()> open);
  // A line at the foot of the window that stays.
  void ShowStatus(const std::string& text);

  // The desktop session wants to end. False: it must not.
  [[nodiscard]] bool SessionMayEnd();

  // EditorPort, and what the tool dialogs call.
  void Draw_Wave() override;
  void MoveMarkers() override;
  void ShowState() override;

  // The window's name in the session state.
  static constexpr const char* kFormName = "MainWindow";

protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  void FillZoomLists();
  void HideUnbuilt();
  void OpenTool(ToolNo tool, const std::function<void()>& open);
  void ConnectMenus();
  void ConnectView();
  void ConnectReadouts();
  void ConnectPicture(WaveformCanvas& picture, bool wave);
  void StorePosition();
  [[nodiscard]] bool MayClose(Editor::CloseReason reason);
  void MouseMoved(WaveformCanvas& picture, QPoint pixel, bool wave);
  void WheelTurned(WaveformCanvas& picture, QPoint pixel, int steps, Qt::KeyboardModifiers modifiers);
  void ShowScrollBars();
  void ShowLabels();

  Editor& editor_;
  std::unique_ptr<Ui::MainWindow> ui_;
  bool showing_ = false; // controls are being filled: their signals mean nothing
};

} // namespace calder
