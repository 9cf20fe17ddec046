// The heart of the main window, without the window: start-up, the edit commands with their follow-ups, the close.
//
// The window forwards what the user does and shows what this object says. EditorPort is the way back.
#pragma once

#include "app/Program.h"
#include "editor/EditCommands.h"
#include "editor/Markers.h"
#include "editor/PictureTool.h"
#include "editor/WavePainter.h"
#include "editor/WaveView.h"
#include "files/FileCommands.h"
#include "files/WaveFiles.h"
#include "instrument/SystemSetup.h"
#include "tools/frame/ToolHost.h"

#include <string>

namespace calder {

// What the editor asks of its window.
class EditorPort {
public:
  virtual ~EditorPort() = default;
  // The waveform, the view or the markers changed: draw the picture that is shown.
  virtual void Draw_Wave() = 0;
  // Only the markers moved: Move_Marker on the picture is enough.
  virtual void MoveMarkers() = 0;
  // Texts, scroll bars, lists, menu states or the title changed.
  virtual void ShowState() = 0;
};

class Editor final : public ToolHost {
public:
  enum class CloseReason { User, SessionEnds };
  enum class ViewKind { Wave, Digital };

  explicit Editor(Program& program);
  ~Editor() override;
  Editor(const Editor&) = delete;
  Editor& operator=(const Editor&) = delete;

  // REQUIRES: a port before any other call but Start.
  void SetPort(EditorPort* port) { port_ = port; }

  // Start-up behind the registry and the language; false: the program ends and the user was told why.
  [[nodiscard]] bool Start();
  // The file of the command line, after the window exists; empty: none. One that cannot be opened is told and leaves an
  // empty editor.
  void OpenCommandLine(const std::string& file);

  // True: the window may go; everything that has to be stored was stored.
  [[nodiscard]] bool QueryUnload(CloseReason reason);
  // Stores it without a question, for an end that cannot be refused.
  void StoreSession();

  [[nodiscard]] std::string Title() const;

  // What the user does.
  void Copy();
  void Cut();
  void Paste();
  void Delete();
  void Undo();
  // A waveform that was read is shown whole; a cancelled or failed open leaves zoom and view as they are.
  void FileOpen();
  void FileSave();
  void FileSaveAs(bool asText);
  void FileDropped(const std::string& path);
  void FileNew();
  void ToggleGrid();
  void ZoomX(int index);
  void ZoomY(int index);
  void WheelZoomX(int steps, double fraction);
  void WheelZoomY(int steps, double fraction);
  void WheelScrollX(int steps);
  void Hrizontal_Scroll(int value);
  void Vertical_Scroll(int value);
  void TypeStart(const std::string& text);
  void TypeEnd(const std::string& text);
  void TypeScope(const std::string& text);
  void ChooseTrack(bool track);
  void ChooseView(ViewKind kind);
  // The mouse over a picture of that size in device pixels; what happens outside of it is ignored.
  void MouseMove(int x, int y, int width, int height, double scale, bool overWave);
  // What a press of the left button was made with.
  enum class PressKeys { None, Ctrl, Other };
  void MousePress(const PicturePoint& at, PressKeys keys);
  void MouseRelease(const PicturePoint& at);
  void BackspaceKey();

  // The tool selector, around the time that a tool's form is shown. A modeless tool leaves the window partly usable.
  void ToolOpened(ToolNo tool, ToolModality modality);
  void ToolClosed();
  [[nodiscard]] bool PartlyBlocked() const { return partlyBlocked_; }
  [[nodiscard]] PictureTool* ToolOnPicture() const { return pictureTool_; }

  // ToolHost
  void WaveformChanged() override { AfterEdit(); }
  void RangeChanged() override { AfterEdit(); }
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

private:
  void AfterEdit();
  void AfterOpen();
  void SettingsChanged();
  void ClampScopes();
  void Redraw();

  EditorPort* port_ = nullptr;
  PictureTool* pictureTool_ = nullptr;
  bool partlyBlocked_ = false;
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
