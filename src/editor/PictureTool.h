// A tool that is at work on the main window's waveform picture: it draws beneath the waveform and between it and the
// markers, and gets the gestures that Editor does not keep for itself. Pixels are device pixels of the picture.
#pragma once

#include <cstdint>

namespace calder {

class DeviceContext;

// A place of the picture under the pointer and the size of the picture.
struct PicturePoint {
  int x = 0;
  int y = 0;
  int width = 1;
  int height = 1;
  double scale = 1; // device pixels a logical pixel
};

class PictureTool {
public:
  enum class Pointer { Cross, Hand };

  virtual ~PictureTool() = default;
  // Beneath the waveform; for most tools nothing.
  virtual void DrawBehind(DeviceContext& /*picture*/) {}
  virtual void DrawLayer(DeviceContext& picture) = 0;
  // A press of the left button, alone or with Ctrl. True: the tool has taken hold; else a marker may be grabbed.
  virtual bool Press(const PicturePoint& at, bool withCtrl) = 0;
  // The pointer moved, with the button held or not.
  virtual void Move(const PicturePoint& at) = 0;
  virtual void Release(const PicturePoint& at) = 0;
  virtual void BackspaceKey() = 0;
  // What the pointer looks like there while no button is held.
  [[nodiscard]] virtual Pointer PointerAt(const PicturePoint& at) const = 0;
};

} // namespace calder
