// The editor as a tool sees it, counting what it is asked.
#pragma once

#include "Testing.h"
#include "tools/frame/ToolHost.h"

namespace calder {

struct RecordingHost final : ToolHost {
  void WaveformChanged() override { ++waveforms; }
  void RangeChanged() override { ++ranges; }
  void SetPictureTool(PictureTool* set) override { tool = set; }
  void PictureToolChanged() override { ++layers; }

  PictureTool* tool = nullptr;
  int waveforms = 0;
  int ranges = 0;
  int layers = 0;
};

} // namespace calder
