// Draws the main window's pictures: ground, grid, zero line, waveform, markers; or the 16 lanes of the digital view.
#pragma once

#include "app/Program.h"
#include "editor/Grid.h"
#include "editor/Markers.h"

#include <cstdint>
#include <functional>

namespace calder {

class WavePainter {
public:
  WavePainter(Program& program, Markers& markers) : program_(program), markers_(markers) {}

  [[nodiscard]] bool GridShown() const { return gridShown_; }
  void ShowGrid(bool shown) { gridShown_ = shown; }

  // Draws more on the waveform picture, between the waveform and the markers; for the tool that edits in the view.
  void SetToolLayer(std::function<void(DeviceContext&)> draw) { toolLayer_ = std::move(draw); }

  void Draw_Grid_Wave(DeviceContext& picture) const;
  void Draw_Wave(DeviceContext& picture);
  // selectedBits: the data bits of the selected lanes.
  void Draw_Digital(DeviceContext& picture, std::uint16_t selectedBits);

private:
  void Clear(DeviceContext& picture) const;

  Program& program_;
  Markers& markers_;
  Grid grid_;
  bool gridShown_ = true;
  std::function<void(DeviceContext&)> toolLayer_;
};

} // namespace calder
