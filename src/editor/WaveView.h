// The view of the waveform: the shown range, zoom and scroll, the mapping between positions and pixels, the range
// labels.
//
// 1. XStart..XEnd are points, YStart..YEnd depths (32767 - code); both ranges are never empty.
// 2. The waveform view and the digital view share one horizontal scroll bar state and one X zoom.
#pragma once

#include "app/ConvUnit.h"
#include "app/ViewState.h"

#include <cstdint>
#include <string>

namespace calder {

struct ScrollBarState {
  int minimum = 0;
  int maximum = 0;
  int value = 0;
  int largeChange = 1;
  bool enabled = false;
};

class WaveView {
public:
  static constexpr int kXZooms = 8; // 1:1 to 1:128
  static constexpr int kYZooms = 9; // 1:1 to 1:256

  WaveView(const SystemInfo& settings, const ConvUnit& units, ViewState& view)
      : settings_(settings), units_(units), view_(view) {}

  // The whole waveform, both zooms 1.
  void Init();
  // The shown X range becomes the whole memory after its size changed.
  void MemorySizeChanged() { Init(); }
  // False: the memory size is no longer the one that the view was made for.
  [[nodiscard]] bool FitsMemory() const { return size_ == settings_.MemorySize; }

  // Zooming by list index; the left edge stays (X), the middle stays (Y). An index outside its list changes nothing.
  void ZoomX(int index);
  void ZoomY(int index);
  // The same with the point or depth under the pointer kept in its place: fraction of the picture, 0 to 1.
  void ZoomXAt(int index, double fraction);
  void ZoomYAt(int index, double fraction);
  // The mouse wheel over that fraction of the picture: so many steps in, and the view by tenths of its page. The last
  // returns false when nothing moved.
  void WheelZoomX(int steps, double fraction);
  void WheelZoomY(int steps, double fraction);
  bool WheelScrollX(int steps);
  // Scrolls until the point is in the middle when it cannot be seen. False: nothing moved.
  bool ShowPoint(double point);
  // The scroll bars were moved to that value. False: nothing changed.
  bool Hrizontal_Scroll(int value);
  bool Vertical_Scroll(int value);

  [[nodiscard]] int XZoomIndex() const { return xZoomIndex_; }
  [[nodiscard]] int YZoomIndex() const { return yZoomIndex_; }
  [[nodiscard]] const ScrollBarState& HScroll() const { return hScroll_; }
  [[nodiscard]] const ScrollBarState& VScroll() const { return vScroll_; }

  // Range labels, in the current units.
  [[nodiscard]] std::string StartLabel() const;
  [[nodiscard]] std::string EndLabel() const;
  [[nodiscard]] std::string MaxLabel() const;
  [[nodiscard]] std::string OffsetLabel() const;
  [[nodiscard]] std::string MinLabel() const;

  // Mapping. width and height are the picture's size in pixels. The point is clamped as a conversion clamps it.
  [[nodiscard]] int PointToPixelX(double point, int width) const; // to the nearest
  [[nodiscard]] double PointToPixelXExact(double point, int width) const;
  [[nodiscard]] double PixelXToPoint(double x, int width) const;
  [[nodiscard]] int CodeToPixelY(double code, int height) const; // down
  [[nodiscard]] double CodeToPixelYExact(double code, int height) const;
  [[nodiscard]] double PixelYToCode(double y, int height) const;
  [[nodiscard]] std::string PixelXToText(double x, int width) const;
  [[nodiscard]] std::string PixelYToText(double y, int height) const;

private:
  void ShowY();

  const SystemInfo& settings_;
  const ConvUnit& units_;
  ViewState& view_;
  std::int32_t size_ = 0;
  int xZoomIndex_ = 0;
  int yZoomIndex_ = 0;
  ScrollBarState hScroll_;
  ScrollBarState vScroll_;
};

} // namespace calder
