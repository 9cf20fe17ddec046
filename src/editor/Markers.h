// The two markers and the range between them: typing positions, dragging in the view, independent or together.
//
// Marker A is the start and marker B the end of the current buffer's scope; A is never right of B.
#pragma once

#include "app/ConvUnit.h"
#include "app/EditBuffers.h"
#include "app/ViewState.h"
#include "editor/WaveView.h"

#include <string>

namespace calder {

class DeviceContext;

class Markers {
public:
  enum class Which { A, B };

  Markers(const SystemInfo& settings, const ConvUnit& units, EditBuffers& buffers, const ViewState& view,
          const WaveView& mapping)
      : settings_(settings), units_(units), buffers_(buffers), view_(view), mapping_(mapping) {}

  void SetTrack(bool track) { track_ = track; }
  [[nodiscard]] bool Track() const { return track_; }

  // Readouts.
  [[nodiscard]] std::string StartXText() const;
  [[nodiscard]] std::string EndXText() const;
  [[nodiscard]] std::string ScopeText() const;
  [[nodiscard]] std::string StartYText() const;
  [[nodiscard]] std::string EndYText() const;

  // A text was typed and left. False: it was refused (or means what is already there) and nothing moved.
  bool TypeStart(const std::string& text);
  bool TypeEnd(const std::string& text);
  bool TypeScope(const std::string& text);

  // The pointer at a device pixel of the picture: true shows the horizontal-resize pointer and remembers the marker.
  // scale: device pixels per logical pixel; the grab zones at the top are as large as the flags.
  bool Hover(int x, int y, int width, double scale);
  // Grabs the remembered marker when the last Hover found one.
  bool Press();
  // The pointer moved to column x while a marker is grabbed. True: a marker moved.
  bool Drag(int x, int width);
  void Release() { grabbed_ = false; }
  [[nodiscard]] bool Grabbed() const { return grabbed_; }
  [[nodiscard]] bool Hovering() const { return hovering_; }

  // The marker that keys move: the one that was moved or chosen last, A at first.
  void Choose(Which marker) { chosen_ = marker; }
  [[nodiscard]] Which Chosen() const { return chosen_; }
  [[nodiscard]] double ChosenPoint() const;
  // Moves it by so many points onto a whole one; it stops at the waveform's ends and, unless they move together, at the
  // other marker. False: it stayed.
  bool Step(double points);

  // Draws both markers on a freshly drawn picture and remembers their pixels.
  void Draw_Marker(DeviceContext& picture);
  // Erases the markers where they were drawn last and draws them where they are now.
  void Move_Marker(DeviceContext& picture);
  // The pixel columns that the last Draw_Marker or Move_Marker touched, end excluded.
  struct Touched {
    int left = 0;
    int right = 0;
  };
  [[nodiscard]] Touched LastTouched() const { return touched_; }

private:
  static constexpr int kNotDrawn = -1;

  struct Pixels {
    int a = kNotDrawn;
    int b = kNotDrawn;
  };

  [[nodiscard]] int DrawnPixel(double point, int width) const;
  [[nodiscard]] bool OnColumn(int x, int markerPixel, int width, double scale) const;
  void DrawAt(DeviceContext& picture, const Pixels& pixels);
  void MoveStartTo(double point);
  void MoveEndTo(double point);

  const SystemInfo& settings_;
  const ConvUnit& units_;
  EditBuffers& buffers_;
  const ViewState& view_;
  const WaveView& mapping_; // between points and pixels
  bool track_ = false;
  bool hovering_ = false;
  bool grabbed_ = false;
  Which remembered_ = Which::A;
  Which chosen_ = Which::A;
  Pixels drawn_;
  Touched touched_;
};

} // namespace calder
