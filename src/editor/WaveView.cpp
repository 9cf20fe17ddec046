#include "editor/WaveView.h"

#include "libs/wavelb32/wavelb32.h"
#include "platform/WaveLimits.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

constexpr int kDeepest = W_CODE_MAX; // the vertical bar moves in steps of two codes

int Round(double value) {
  return static_cast<int>(std::nearbyint(value));
}

} // namespace

void WaveView::Init() {
  const std::int32_t size = settings_.MemorySize;
  size_ = size;
  view_.XStart = 0;
  view_.XEnd = size;
  view_.YStart = 0;
  view_.YEnd = W_CODE_SPAN;
  view_.XZoom = 1;
  view_.YZoom = 1;
  view_.ScrollStep = ScrollStepFor(size);
  xZoomIndex_ = 0;
  yZoomIndex_ = 0;
  hScroll_ = {0, Round(size / 2.0 / view_.ScrollStep), 0, 1, false};
  vScroll_ = {0, kDeepest, 0, 1, false};
}

void WaveView::ZoomX(int index) {
  if (index < 0 || index >= kXZooms) return;
  const std::int32_t size = settings_.MemorySize;
  xZoomIndex_ = index;
  view_.XZoom = 1 << index;
  if (view_.XZoom == 1) {
    hScroll_.value = 0;
    hScroll_.enabled = false;
    view_.XStart = 0;
    view_.XEnd = size;
    return;
  }
  const double units = static_cast<double>(size) / view_.ScrollStep;
  const int page = std::max(1, Round(units / view_.XZoom));
  hScroll_.maximum = std::max(0, Round(units - page));
  hScroll_.largeChange = page;
  hScroll_.enabled = true;
  hScroll_.value = std::min(hScroll_.value, hScroll_.maximum);
  view_.XStart = hScroll_.value * view_.ScrollStep;
  view_.XEnd = (hScroll_.value + page) * view_.ScrollStep;
}

void WaveView::ZoomXAt(int index, double fraction) {
  if (index < 0 || index >= kXZooms) return;
  const double point = view_.XStart + fraction * (view_.XEnd - view_.XStart);
  ZoomX(index);
  if (view_.XZoom == 1) return;
  const double start = point - fraction * (view_.XEnd - view_.XStart);
  Hrizontal_Scroll(std::clamp(Round(start / view_.ScrollStep), 0, hScroll_.maximum));
}

bool WaveView::Hrizontal_Scroll(int value) {
  hScroll_.value = std::clamp(value, hScroll_.minimum, hScroll_.maximum);
  if (!hScroll_.enabled || hScroll_.value == view_.XStart / view_.ScrollStep) return false;
  const int span = std::max(1, Round(static_cast<double>(settings_.MemorySize) / view_.XZoom));
  view_.XStart = hScroll_.value * view_.ScrollStep;
  view_.XEnd = view_.XStart + span;
  return true;
}

void WaveView::ZoomY(int index) {
  if (index < 0 || index >= kYZooms) return;
  yZoomIndex_ = index;
  view_.YZoom = 1 << index;
  if (view_.YZoom == 1) {
    vScroll_ = {0, kDeepest, 0, 1, false};
    view_.YStart = 0;
    view_.YEnd = W_CODE_SPAN;
    return;
  }
  const int page = kDeepest / view_.YZoom;
  vScroll_.maximum = kDeepest - page;
  vScroll_.enabled = true;
  vScroll_.largeChange = page;
  if (vScroll_.value == 0) {
    vScroll_.value = Round(kDeepest / 2.0 - page / 2.0);
  } else {
    const double middle = ((view_.YEnd - view_.YStart) / 2.0 + view_.YStart) / 2.0 - page / 2.0;
    vScroll_.value = std::clamp(static_cast<int>(middle), 0, vScroll_.maximum);
  }
  ShowY();
}

void WaveView::ZoomYAt(int index, double fraction) {
  if (index < 0 || index >= kYZooms) return;
  const double depth = view_.YStart + fraction * (view_.YEnd - view_.YStart);
  ZoomY(index);
  if (view_.YZoom == 1) return;
  const double start = depth - fraction * (view_.YEnd - view_.YStart);
  Vertical_Scroll(std::clamp(Round(start / 2), 0, vScroll_.maximum));
}

void WaveView::WheelZoomX(int steps, double fraction) {
  ZoomXAt(std::clamp(xZoomIndex_ + steps, 0, kXZooms - 1), fraction);
}

void WaveView::WheelZoomY(int steps, double fraction) {
  ZoomYAt(std::clamp(yZoomIndex_ + steps, 0, kYZooms - 1), fraction);
}

bool WaveView::WheelScrollX(int steps) {
  return Hrizontal_Scroll(hScroll_.value + steps * std::max(1, hScroll_.largeChange / 10));
}

bool WaveView::ShowPoint(double point) {
  if (point >= view_.XStart && point <= view_.XEnd) return false;
  return Hrizontal_Scroll(Round((point - (view_.XEnd - view_.XStart) / 2.0) / view_.ScrollStep));
}

bool WaveView::Vertical_Scroll(int value) {
  if (!vScroll_.enabled) return false;
  vScroll_.value = std::clamp(value, vScroll_.minimum, vScroll_.maximum);
  const std::int32_t before = view_.YStart;
  ShowY();
  return view_.YStart != before;
}

void WaveView::ShowY() {
  view_.YStart = 2 * vScroll_.value;
  view_.YEnd = static_cast<std::int32_t>(std::floor(65536.0 / view_.YZoom + 0.5)) + view_.YStart - 1;
}

std::string WaveView::StartLabel() const {
  return units_.PointToXText(view_.XStart) + units_.XUnitName();
}

std::string WaveView::EndLabel() const {
  const std::int32_t end = std::min(view_.XEnd, settings_.MemorySize);
  return units_.PointToXText(end) + units_.XUnitName();
}

std::string WaveView::MaxLabel() const {
  return units_.CodeToYText(W_CODE_MAX - view_.YStart) + units_.YUnitName();
}

std::string WaveView::OffsetLabel() const {
  int centre = W_CODE_MAX - (Round((view_.YEnd - view_.YStart) / 2.0) + view_.YStart);
  if (centre == -1) centre = 0;
  return units_.CodeToYText(centre) + units_.YUnitName();
}

std::string WaveView::MinLabel() const {
  return units_.CodeToYText(W_CODE_MAX - view_.YEnd) + units_.YUnitName();
}

double WaveView::PointToPixelXExact(double point, int width) const {
  units_.ClampX(point, 0);
  return (point - view_.XStart) * width / (view_.XEnd - view_.XStart);
}

int WaveView::PointToPixelX(double point, int width) const {
  return Round(PointToPixelXExact(point, width));
}

double WaveView::PixelXToPoint(double x, int width) const {
  return x * (view_.XEnd - view_.XStart) / width + view_.XStart;
}

double WaveView::CodeToPixelYExact(double code, int height) const {
  return (W_CODE_MAX - code - view_.YStart) * height / (view_.YEnd - view_.YStart);
}

int WaveView::CodeToPixelY(double code, int height) const {
  return static_cast<int>(std::floor(CodeToPixelYExact(code, height)));
}

double WaveView::PixelYToCode(double y, int height) const {
  return W_CODE_MAX - y * (view_.YEnd - view_.YStart) / height - view_.YStart;
}

std::string WaveView::PixelXToText(double x, int width) const {
  return units_.PointToXText(PixelXToPoint(x, width));
}

std::string WaveView::PixelYToText(double y, int height) const {
  return units_.CodeToYText(PixelYToCode(y, height));
}

} // namespace calder
