// The main window: lays the controls out, forwards what the user does to the Editor and shows what it says.
#pragma once

#include "editor/Editor.h"
#include "tools/frame/ToolForm.h"

#include <QMainWindow>

#include <functional>
#include <memory>

namespace Ui {
class MainWindow;
}

class QToolButton;

namespace calder {

class DigitalView;
class ValueBox;
class WaveformCanvas;

class MainWindow final : public QMainWindow, private EditorPort {
  Q_OBJECT

public:
  // The editor must outlive the window. REQUIRES: editor.Start() succeeded.
  explicit MainWindow(Editor& editor);
  ~MainWindow() override;

  // A tool of the Tools menu and of the tool buttons, or the System Setup. Tools that nobody adds are not offered.
  struct Tool {
    ToolNo number = kToolNone;
    ToolModality modality = ToolModality::Modal;
    std::function<std::unique_ptr<ToolForm>(QWidget* parent)> make; // nullptr: it cannot be opened now
  };
  void AddTool(Tool tool);

  // A command that opens a window which the editor does not know. Commands that nobody connects are not offered.
  void Offer(Command command, std::function<void()> open);

  // A line at the foot of the window that stays.
  void ShowStatus(const std::string& text);
  // A line in its place until the next command.
  void ShowNote(const std::string& text);

  // The desktop session wants to end. False: it must not.
  [[nodiscard]] bool SessionMayEnd();
  // What a close stores, without a question.
  void StoreSession();

  // Draws the picture that is shown.
  void Draw_Wave();
  // EditorPort, and for what changed beside the editor.
  void Show(Changes changes) override;

  // The window's name in the session state.
  static constexpr const char* kFormName = "MainWindow";

protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  void FillZoomLists();
  void HideUnbuilt();
  void OpenTool(const Tool& tool, QToolButton* button);
  void ToolClosed(QToolButton* button);
  // Takes the value that is typed into the box with the focus, as leaving the box does.
  void CommitFocus();
  void ConnectCommit();
  void ConnectMenus();
  void ConnectView();
  void ConnectReadouts();
  // Typed, left or confirmed with Tab or Enter: the text is the marker's.
  void ConnectReadout(ValueBox* box, bool (Markers::*type)(const std::string&));
  void HideNote();
  void ConnectPictures();
  void StorePosition();
  [[nodiscard]] bool MayClose(Editor::CloseReason reason);
  void PictureKey(int key, Qt::KeyboardModifiers modifiers);
  void MouseMoved(QPoint pixel);
  void WheelTurned(WaveformCanvas& picture, QPoint pixel, int steps, Qt::KeyboardModifiers modifiers);
  void MoveMarkers();
  void ShowView();
  void ShowReadouts();
  void ShowMouse();
  void ShowCommands();

  Editor& editor_;
  std::unique_ptr<Ui::MainWindow> ui_;
  std::unique_ptr<DigitalView> digital_;
  std::unique_ptr<ToolForm> modeless_;
  bool showing_ = false; // controls are being filled: their signals mean nothing
};

} // namespace calder
