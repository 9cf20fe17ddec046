// The main window's behaviour without the window: start-up, commands, mouse, close, and what each changed of the
// display.
//
// The window passes on what the user does; EditorPort takes back what there is to show, once an action.
#pragma once

#include "app/Program.h"
#include "editor/Changes.h"
#include "editor/Commands.h"
#include "editor/DigitalLanes.h"
#include "editor/EditCommands.h"
#include "editor/Markers.h"
#include "editor/PatternDesk.h"
#include "editor/PictureTool.h"
#include "editor/WavePainter.h"
#include "editor/WaveView.h"
#include "files/FileCommands.h"
#include "files/WaveFiles.h"
#include "instrument/SystemSetup.h"
#include "tools/frame/ToolHost.h"

#include <string>
#include <type_traits>

namespace calder {

// What the editor asks of its window.
class EditorPort {
public:
  virtual ~EditorPort() = default;
  // Once after an action that changed something: show it.
  virtual void Show(Changes changes) = 0;
};

class Editor final : public ToolHost {
public:
  enum class CloseReason { User, SessionEnds };
  enum class ViewKind { Wave, Digital };

  explicit Editor(Program& program);
  ~Editor() override;
  Editor(const Editor&) = delete;
  Editor& operator=(const Editor&) = delete;

  // Null, as at first: nothing is shown.
  void SetPort(EditorPort* port) { port_ = port; }

  // Start-up after the registry and the language; false: the program ends, and a message has said why.
  [[nodiscard]] bool Start();
  // The file of the command line, after the window exists; empty: none. One that cannot be opened brings a
  // message and leaves an empty editor.
  void OpenCommandLine(const std::string& file);
  // Another copy of the program could not be started: says so.
  void ReportNoCopy() const;

  // True: the window may go; everything that has to be stored was stored.
  [[nodiscard]] bool QueryUnload(CloseReason reason);
  // Stores it without a question, for an end that cannot be refused.
  void StoreSession();

  [[nodiscard]] std::string Title() const;

  // A command of the menus, and the same by its number.
  void Do(const WindowCommand& command);
  void Do(Command id) { Do(CommandRow(id)); }
  // What a control does: the call changes something of this object's parts, and what it changed is shown. A call that
  // returns false changed nothing.
  template <typename Call>
  void Apply(Changes changes, Call call) {
    const Action action(*this);
    if constexpr (std::is_same_v<decltype(call()), bool>) {
      if (call()) Mark(changes);
    } else {
      call();
      Mark(changes);
    }
  }
  // A file was dropped on the window. One that cannot be read leaves zoom and view as they are.
  void FileDropped(const std::string& path);
  // A waveform was read from a file: it is shown whole.
  void ShowNewWaveform();
  void ChooseView(ViewKind kind);
  // The mouse over a picture of that size in device pixels; what happens outside of it is ignored.
  void MouseMove(int x, int y, int width, int height, double scale, bool overWave);
  // What a press of the left button was made with.
  enum class PressKeys { None, Ctrl, Other };
  void MousePress(const PicturePoint& at, PressKeys keys);
  void MouseRelease(const PicturePoint& at);
  void BackspaceKey();
  // Keys on the waveform's picture. A step of a marker: a point, a pixel of a picture of that width, or all that the
  // view shows; the view follows it.
  enum class KeyStep { Point, Pixel, Page };
  void MarkerKey(int direction, KeyStep step, int width);
  void ChooseMarker(Markers::Which marker);
  // What a screen reader says of the picture.
  [[nodiscard]] std::string SpokenPicture() const;
  // The same over the digital view, whose markers cannot be grabbed.
  void LaneMove(const PicturePoint& at);
  void LanePress(const PicturePoint& at, PressKeys keys);
  void LaneRelease(const PicturePoint& at);
  void LanePress(LaneKey key);
  void LaneLeave();
  // A button of the digital view, and the text of its pattern box.
  void PatternPress(int item);
  void PatternTyped(const std::string& text);

  // The tool selector, around the time that a tool's form is shown. A modeless tool leaves the window partly usable.
  void ToolOpened(ToolNo tool, ToolModality modality);
  void ToolClosed();
  [[nodiscard]] bool PartlyBlocked() const { return partlyBlocked_; }
  [[nodiscard]] PictureTool* ToolOnPicture() const { return pictureTool_; }

  // ToolHost
  void WaveformChanged() override;
  void RangeChanged() override;
  void SetPictureTool(PictureTool* tool) override;
  void PictureToolChanged() override;

  // What the window shows.
  [[nodiscard]] ViewKind ShownView() const { return shownView_; }
  // Where the pointer stands, in the view as it is now; empty until it came over a picture.
  [[nodiscard]] std::string MouseXText() const;
  [[nodiscard]] std::string MouseYText() const;

  Program& program;
  SystemSetup setup;
  WaveFiles waveFiles;
  FileCommands fileCommands;
  WaveView view;
  Markers markers;
  WavePainter painter;
  EditCommands commands;
  DigitalLanes lanes;
  PatternDesk patterns;

private:
  // While one lives, what is marked waits; the outermost one shows it when it goes.
  class Action {
  public:
    explicit Action(Editor& editor) : editor_(editor) { ++editor_.actions_; }
    ~Action() {
      if (--editor_.actions_ == 0) editor_.Flush();
    }
    Action(const Action&) = delete;
    Action& operator=(const Action&) = delete;

  private:
    Editor& editor_;
  };

  // REQUIRES: an Action.
  void Mark(Changes changes) { marked_ = marked_ | changes; }
  void Flush();
  void Mark(DigitalLanes::Outcome outcome);
  void SettingsChanged();
  void ClampScopes();

  int actions_ = 0;
  Changes marked_;
  EditorPort* port_ = nullptr;
  PictureTool* pictureTool_ = nullptr;
  bool partlyBlocked_ = false;
  bool toolPressed_ = false; // the button is held that the picture tool knows of
  ViewKind shownView_ = ViewKind::Wave;
  struct MousePixel {
    int x = 0;
    int y = 0;
    int width = 0; // of the picture; 0: the pointer was over none yet
    int height = 0;
  };
  MousePixel mouse_;
};

} // namespace calder
