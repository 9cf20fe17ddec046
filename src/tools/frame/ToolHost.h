// What a tool dialog asks of the editor that it was opened from. The editor implements it, with or without a window.
#pragma once

namespace calder {

class PictureTool;

class ToolHost {
public:
  virtual ~ToolHost() = default;
  // The current buffer's codes changed, perhaps its range too: readouts and picture follow.
  virtual void WaveformChanged() = 0;
  // The current buffer's range changed: markers and readouts follow.
  virtual void RangeChanged() = 0;
  // The tool draws on the main window's picture and gets its presses first; nullptr: no longer. It must outlive the
  // time that it is set.
  virtual void SetPictureTool(PictureTool* tool) = 0;
  // What the set tool draws changed.
  virtual void PictureToolChanged() = 0;
};

// How much of the main window waits while a tool is open.
enum class ToolModality {
  Modal,    // all of it
  Modeless, // the menus File, Edit, Tools and Setup, the digital view and the tool selector
};

} // namespace calder
