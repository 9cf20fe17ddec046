#include "tools/create/PreviewDrag.h"

#include "platform/WaveLimits.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

constexpr double kPeriodStep = 0.02;
constexpr double kLeastPeriod = 0.1;
constexpr double kTurn = 360;          // degrees
constexpr double kCodes = W_CODE_SPAN; // codes from the bottom to the top
constexpr double kPercent = 100;
constexpr double kSlow = 4; // a drag across the whole picture is a quarter of the full range

} // namespace

PreviewDrag::Mode PreviewDrag::ModeAt(const CreatePage& page, double x, double y, double width, double height) {
  if (page.Function == kFunctionExpression || width <= 0 || height <= 0) return Mode::None;
  if (y <= height / 4 || y >= height * 3 / 4) return Mode::Size;
  const bool hasShape = page.Function == kFunctionTriangle || page.Function == kFunctionSquare;
  return hasShape && x > width / 2 ? Mode::Shape : Mode::Shift;
}

void PreviewDrag::Press(const CreatePage& page, double x, double y, double width, double height) {
  mode_ = ModeAt(page, x, y, width, height);
  if (mode_ == Mode::None) return;
  horizontalStep_ = mode_ == Mode::Size ? kPeriodStep : kTurn / width / kSlow;
  verticalStep_ = kCodes / height / kSlow;
  lastX_ = x;
  lastY_ = y;
}

bool PreviewDrag::Move(CreatePage& page, double x, double y) {
  if (mode_ == Mode::None) return false;
  const double right = (x - lastX_) * horizontalStep_;
  const double up = (lastY_ - y) * verticalStep_;
  bool taken = true;
  switch (mode_) {
  case Mode::None: break;
  case Mode::Size:
    taken = page.Period - right >= kLeastPeriod;
    if (taken) page.Period -= right;
    page.Amplitude += up;
    break;
  case Mode::Shift:
    page.Phase -= right;
    if (std::fabs(page.Phase) > kTurn) page.Phase = std::fmod(page.Phase, kTurn);
    page.Offset += up;
    break;
  case Mode::Shape:
    if (page.Function == kFunctionTriangle) {
      page.Symmetry = std::clamp(page.Symmetry + right, 0.0, kPercent);
    } else {
      page.Duty = std::clamp(page.Duty + right, 0.0, kPercent);
      page.Transition = std::clamp(page.Transition + right, 0.0, kPercent);
    }
    break;
  }
  if (taken) lastX_ = x; // a refused period waits for the pointer to come back
  lastY_ = y;
  return true;
}

} // namespace calder
