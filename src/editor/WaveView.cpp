#include "editor/WaveView.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

constexpr int kDeepest = 32767; // the vertical bar moves in steps of two codes

int Round(double value) {
  return static_cast<int>(std::nearbyint(value));
}

} // namespace

void WaveView::Init() {
  ViewState& view = program_.view;
  const std::int32_t size = program_.settings.MemorySize;
  size_ = size;
  view.XStart = 0;
  view.XEnd = size;
  view.YStart = 0;
  view.YEnd = W_CODE_SPAN;
  view.XZoom = 1;
  view.YZoom = 1;
  view.ScrollStep = ScrollStepFor(size);
  xZoomIndex_ = 0;
  yZoomIndex_ = 0;
  hScroll_ = {0, Round(size / 2.0 / view.ScrollStep), 0, 1, false};
  vScroll_ = {0, kDeepest, 0, 1, false};
}

void WaveView::ZoomX(int index) {
  if (index < 0 || index >= kXZooms) return;
  ViewState& view = program_.view;
  const std::int32_t size = program_.settings.MemorySize;
  xZoomIndex_ = index;
  view.XZoom = 1 << index;
  if (view.XZoom == 1) {
    hScroll_.value = 0;
    hScroll_.enabled = false;
    view.XStart = 0;
    view.XEnd = size;
    return;
  }
  const double units = static_cast<double>(size) / view.ScrollStep;
  const int page = std::max(1, Round(units / view.XZoom));
  hScroll_.maximum = std::max(0, Round(units - page));
  hScroll_.largeChange = page;
  hScroll_.enabled = true;
  hScroll_.value = std::min(hScroll_.value, hScroll_.maximum);
  view.XStart = hScroll_.value * view.ScrollStep;
  view.XEnd = (hScroll_.value + page) * view.ScrollStep;
}

void WaveView::ZoomXAt(int index, double fraction) {
  if (index < 0 || index >= kXZooms) return;
  const ViewState& view = program_.view;
  const double point = view.XStart + fraction * (view.XEnd - view.XStart);
  ZoomX(index);
  if (view.XZoom == 1) return;
  const double start = point - fraction * (view.XEnd - view.XStart);
  Hrizontal_Scroll(std::clamp(Round(start / view.ScrollStep), 0, hScroll_.maximum));
}

bool WaveView::Hrizontal_Scroll(int value) {
  ViewState& view = program_.view;
  hScroll_.value = std::clamp(value, hScroll_.minimum, hScroll_.maximum);
  if (!hScroll_.enabled || hScroll_.value == view.XStart / view.ScrollStep) return false;
  const int span = std::max(1, Round(static_cast<double>(program_.settings.MemorySize) / view.XZoom));
  view.XStart = hScroll_.value * view.ScrollStep;
  view.XEnd = view.XStart + span;
  return true;
}

void WaveView::ZoomY(int index) {
  if (index < 0 || index >= kYZooms) return;
  ViewState& view = program_.view;
  yZoomIndex_ = index;
  view.YZoom = 1 << index;
  if (view.YZoom == 1) {
    vScroll_ = {0, kDeepest, 0, 1, false};
    view.YStart = 0;
    view.YEnd = W_CODE_SPAN;
    return;
  }
  const int page = kDeepest / view.YZoom;
  vScroll_.maximum = kDeepest - page;
  vScroll_.enabled = true;
  vScroll_.largeChange = page;
  if (vScroll_.value == 0) {
    vScroll_.value = Round(kDeepest / 2.0 - page / 2.0);
  } else {
    const double middle = ((view.YEnd - view.YStart) / 2.0 + view.YStart) / 2.0 - page / 2.0;
    vScroll_.value = std::clamp(static_cast<int>(middle), 0, vScroll_.maximum);
  }
  ShowY();
}

void WaveView::ZoomYAt(int index, double fraction) {
  if (index < 0 || index >= kYZooms) return;
  const ViewState& view = program_.view;
  const double depth = view.YStart + fraction * (view.YEnd - view.YStart);
  ZoomY(index);
  if (view.YZoom == 1) return;
  const double start = depth - fraction * (view.YEnd - view.YStart);
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

bool WaveView::Vertical_Scroll(int value) {
  if (!vScroll_.enabled) return false;
  vScroll_.value = std::clamp(value, vScroll_.minimum, vScroll_.maximum);
  const std::int32_t before = program_.view.YStart;
  ShowY();
  return program_.view.YStart != before;
}

void WaveView::ShowY() {
  ViewState& view = program_.view;
  view.YStart = 2 * vScroll_.value;
  view.YEnd = static_cast<std::int32_t>(std::floor(65536.0 / view.YZoom + 0.5)) + view.YStart - 1;
}

std::string WaveView::StartLabel() const {
  return program_.units.PointToXText(program_.view.XStart) + program_.units.XUnitName();
}

std::string WaveView::EndLabel() const {
  const std::int32_t end = std::min(program_.view.XEnd, program_.settings.MemorySize);
  return program_.units.PointToXText(end) + program_.units.XUnitName();
}

std::string WaveView::MaxLabel() const {
  return program_.units.CodeToYText(W_CODE_MAX - program_.view.YStart) + program_.units.YUnitName();
}

std::string WaveView::OffsetLabel() const {
  const ViewState& view = program_.view;
  int centre = W_CODE_MAX - (Round((view.YEnd - view.YStart) / 2.0) + view.YStart);
  if (centre == -1) centre = 0;
  return program_.units.CodeToYText(centre) + program_.units.YUnitName();
}

std::string WaveView::MinLabel() const {
  return program_.units.CodeToYText(W_CODE_MAX - program_.view.YEnd) + program_.units.YUnitName();
}

double WaveView::PointToPixelXExact(double point, int width) const {
  const ViewState& view = program_.view;
  program_.units.ClampX(point, 0);
  return (point - view.XStart) * width / (view.XEnd - view.XStart);
}

int WaveView::PointToPixelX(double point, int width) const {
  return Round(PointToPixelXExact(point, width));
}

double WaveView::PixelXToPoint(double x, int width) const {
  const ViewState& view = program_.view;
  return x * (view.XEnd - view.XStart) / width + view.XStart;
}

double WaveView::CodeToPixelYExact(double code, int height) const {
  const ViewState& view = program_.view;
  return (W_CODE_MAX - code - view.YStart) * height / (view.YEnd - view.YStart);
}

int WaveView::CodeToPixelY(double code, int height) const {
  return static_cast<int>(std::floor(CodeToPixelYExact(code, height)));
}

double WaveView::PixelYToCode(double y, int height) const {
  const ViewState& view = program_.view;
  return W_CODE_MAX - y * (view.YEnd - view.YStart) / height - view.YStart;
}

std::string WaveView::PixelXToText(double x, int width) const {
  return program_.units.PointToXText(PixelXToPoint(x, width));
}

std::string WaveView::PixelYToText(double y, int height) const {
  return program_.units.CodeToYText(PixelYToCode(y, height));
}

} // namespace calder
