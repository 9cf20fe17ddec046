// Draws the main window's pictures: ground, grid, zero line, waveform, markers; or the 16 lanes of the digital view.
#pragma once

#include "app/EditBuffers.h"
#include "app/ViewState.h"
#include "editor/DigitalLanes.h"
#include "editor/Grid.h"
#include "editor/Markers.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace calder {

// What the digital view shows beside the waveform.
struct LanePicture {
  std::uint16_t selectedBits = 0; // data bits
  WaveHandle ghost = 0;           // what a typed pattern would make of the waveform; 0: none
  int cursorLane = -1;
  std::optional<DigitalLanes::Drag> drag = std::nullopt;
};

class WavePainter {
public:
  WavePainter(const SystemInfo& settings, const EditBuffers& buffers, const ViewState& view, Markers& markers)
      : settings_(settings), buffers_(buffers), view_(view), markers_(markers) {}

  [[nodiscard]] bool GridShown() const { return gridShown_; }
  void ShowGrid(bool shown) { gridShown_ = shown; }

  // Draws more on the waveform picture: beneath the waveform, and between it and the markers. Empty: nothing.
  using Layer = std::function<void(DeviceContext&)>;
  void SetToolLayers(Layer behind, Layer above) {
    behindWave_ = std::move(behind);
    toolLayer_ = std::move(above);
  }

  void Draw_Grid_Wave(DeviceContext& picture) const;
  void Draw_Wave(DeviceContext& picture);
  void Draw_Digital(DeviceContext& picture, const LanePicture& lanes);

private:
  static void DrawDrag(DeviceContext& picture, const DigitalLanes::Drag& drag);
  void Clear(DeviceContext& picture) const;

  const SystemInfo& settings_;
  const EditBuffers& buffers_;
  const ViewState& view_;
  Markers& markers_;
  Grid grid_;
  bool gridShown_ = true;
  Layer behindWave_;
  Layer toolLayer_;
};

} // namespace calder
