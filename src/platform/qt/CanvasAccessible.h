// What assistive technology is told about a picture.
#pragma once

namespace calder {

// Pictures (WaveformCanvas) have the role of a chart, and what they say of themselves as its value. To be called once.
void InstallCanvasAccessibility();

} // namespace calder
