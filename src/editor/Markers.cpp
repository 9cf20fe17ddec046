#include "editor/Markers.h"

#include "app/EngValB.h"
#include "platform/DeviceContext.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

constexpr int kFlag = 10;                // the flag's width and height in logical pixels
constexpr Color kMarkerColor = 0x5555FF; // inverting pens ignore it; a recorder sees it

// One logical pixel.
int LineWidth(double scale) {
  return std::max(1, static_cast<int>(std::lround(scale)));
}

} // namespace

std::string Markers::StartXText() const {
  return units_.PointToXText(buffers_.CurrentScope().Start);
}
std::string Markers::EndXText() const {
  return units_.PointToXText(buffers_.CurrentScope().End);
}
std::string Markers::ScopeText() const {
  return units_.PointToXText(buffers_.CurrentScope().Length());
}

std::string Markers::StartYText() const {
  return units_.CodeToYText(W_GetWaveData(buffers_.Current(), buffers_.CurrentScope().Start, settings_.MemorySize));
}

std::string Markers::EndYText() const {
  return units_.CodeToYText(W_GetWaveData(buffers_.Current(), buffers_.CurrentScope().End, settings_.MemorySize));
}

void Markers::MoveStartTo(double point) {
  Scope& scope = buffers_.CurrentScope();
  const double length = scope.Length();
  scope.Start = point;
  if (!track_) return;
  scope.End = point + length;
  const double size = settings_.MemorySize;
  if (scope.End > size) {
    scope.End = size;
    scope.Start = size - length;
  }
}

void Markers::MoveEndTo(double point) {
  Scope& scope = buffers_.CurrentScope();
  const double length = scope.Length();
  scope.End = point;
  if (!track_) return;
  scope.Start = point - length;
  if (scope.Start < 0) {
    scope.Start = 0;
    scope.End = length;
  }
}

bool Markers::TypeStart(const std::string& text) {
  double x = ParseEng(text);
  if (!units_.CheckXCurrent(x)) return false;
  const double point = units_.XToPoint(x);
  if (!track_ && point > buffers_.CurrentScope().End) return false;
  MoveStartTo(point);
  chosen_ = Which::A;
  return true;
}

bool Markers::TypeEnd(const std::string& text) {
  double x = ParseEng(text);
  if (!units_.CheckXCurrent(x)) return false;
  const double point = units_.XToPoint(x);
  if (!track_ && point < buffers_.CurrentScope().Start) return false;
  MoveEndTo(point);
  chosen_ = Which::B;
  return true;
}

bool Markers::TypeScope(const std::string& text) {
  Scope& scope = buffers_.CurrentScope();
  const double size = settings_.MemorySize;
  double x = ParseEng(text);
  // Tested before the conversion, which would take a length beyond the end for 0.
  static_cast<void>(units_.CheckXCurrent(x));
  scope.End = scope.Start + std::min(units_.XToPoint(x), size - scope.Start);
  return true;
}

bool Markers::OnColumn(int x, int markerPixel, int width, double scale) const {
  const int reach = LineWidth(scale) - 1;
  return std::abs(x - markerPixel) <= reach || (markerPixel == width && x >= width - 1 - reach);
}

bool Markers::Hover(int x, int y, int width, double scale) {
  const Scope& scope = buffers_.CurrentScope();
  const int a = mapping_.PointToPixelX(scope.Start, width);
  const int b = mapping_.PointToPixelX(scope.End, width);
  const int flag = static_cast<int>(std::lround(kFlag * scale));
  const bool onA = OnColumn(x, a, width, scale);
  const bool onB = OnColumn(x, b, width, scale);
  // B wins, but where both stand at the right edge only A can be moved.
  const bool isB = onB || (y < flag && x >= b && x <= b + flag);
  const bool isA = onA || (y <= flag && x >= a - flag && x <= a);
  remembered_ = isB && !(onA && onB && x >= width - 2) ? Which::B : Which::A;
  hovering_ = isA || isB;
  return hovering_;
}

bool Markers::Press() {
  grabbed_ = hovering_;
  return grabbed_;
}

bool Markers::Drag(int x, int width) {
  if (!grabbed_) return false;
  const Scope before = buffers_.CurrentScope();
  const double size = settings_.MemorySize;
  const double point = std::clamp(std::nearbyint(mapping_.PixelXToPoint(x, width)), 0.0, size);
  if (remembered_ == Which::A) {
    if (point > before.End) return false;
    MoveStartTo(point);
  } else {
    if (point < before.Start) return false;
    MoveEndTo(point);
  }
  chosen_ = remembered_;
  return !(buffers_.CurrentScope() == before);
}

double Markers::ChosenPoint() const {
  const Scope& scope = buffers_.CurrentScope();
  return chosen_ == Which::A ? scope.Start : scope.End;
}

bool Markers::Step(double points) {
  const Scope before = buffers_.CurrentScope();
  const double lowest = track_ || chosen_ == Which::A ? 0 : before.Start;
  const double highest = track_ || chosen_ == Which::B ? settings_.MemorySize : before.End;
  const double point = std::clamp(std::nearbyint(ChosenPoint() + points), lowest, highest);
  if (chosen_ == Which::A)
    MoveStartTo(point);
  else
    MoveEndTo(point);
  return !(buffers_.CurrentScope() == before);
}

int Markers::DrawnPixel(double point, int width) const {
  if (point < view_.XStart || point > view_.XEnd) return kNotDrawn;
  const int pixel = static_cast<int>(std::ceil(mapping_.PointToPixelXExact(point, width)));
  return std::clamp(pixel, 0, width - 1);
}

void Markers::DrawAt(DeviceContext& picture, const Pixels& pixels) {
  const DrawMode saved = picture.GetDrawMode();
  const int bottom = picture.Height() - 1;
  const int flag = static_cast<int>(std::lround(kFlag * picture.Scale()));
  const int line = LineWidth(picture.Scale());
  const auto column = [&](int x, int lastRow) {
    if (x < 0 || x >= picture.Width()) return;
    picture.Line(x, 0, x, lastRow);
    touched_.left = std::min(touched_.left, x);
    touched_.right = std::max(touched_.right, x + 1);
  };
  picture.SetDrawMode(DrawMode::Invert);
  picture.SetPen(kMarkerColor);
  if (pixels.a != kNotDrawn) {
    for (int i = 0; i < line; ++i) column(pixels.a + i, bottom);
    for (int i = 0; i < flag; ++i) column(pixels.a + line + i, flag);
  }
  if (pixels.b != kNotDrawn) {
    for (int i = 0; i < line && pixels.b != pixels.a; ++i) column(pixels.b + i, bottom);
    for (int i = 1; i <= flag; ++i) column(pixels.b - i, flag);
  }
  picture.SetDrawMode(saved);
}

void Markers::Draw_Marker(DeviceContext& picture) {
  const Scope& scope = buffers_.CurrentScope();
  touched_ = {picture.Width(), 0};
  drawn_ = {DrawnPixel(scope.Start, picture.Width()), DrawnPixel(scope.End, picture.Width())};
  DrawAt(picture, drawn_);
}

void Markers::Move_Marker(DeviceContext& picture) {
  touched_ = {picture.Width(), 0};
  DrawAt(picture, drawn_);
  const Scope& scope = buffers_.CurrentScope();
  drawn_ = {DrawnPixel(scope.Start, picture.Width()), DrawnPixel(scope.End, picture.Width())};
  DrawAt(picture, drawn_);
}

} // namespace calder
