#include "tools/create/PageBoxes.h"

#include "app/EngValB.h"

#include <array>
#include <cassert>
#include <limits>

namespace calder {
namespace {

constexpr std::array<double CreatePage::*, kPageBoxes> kFields{
    &CreatePage::Offset, &CreatePage::Size,     &CreatePage::Amplitude, &CreatePage::Period,
    &CreatePage::Phase,  &CreatePage::Symmetry, &CreatePage::Duty,      &CreatePage::Transition};

// The boxes of each function, one bit a box.
constexpr std::array<unsigned, kPageFunctions> kBoxes{0b00011111, 0b00111111, 0b11011111, 0b00000111, 0b00000011, 0};

// Of the boxes that show plain numbers.
struct Limits {
  double least;
  double most;
};
constexpr std::array<Limits, kPageBoxes> kLimits{
    {{}, {}, {}, {0, std::numeric_limits<double>::max()}, {-360, 360}, {0, 100}, {0, 100}, {0, 100}}};

double CreatePage::*FieldOf(int box) {
  assert(box >= 0 && box < kPageBoxes);
  return kFields[static_cast<std::size_t>(box)];
}

} // namespace

bool BoxShown(int function, int box) {
  if (function < 0 || function >= kPageFunctions || box < 0 || box >= kPageBoxes) return false;
  return (kBoxes[static_cast<std::size_t>(function)] >> static_cast<unsigned>(box) & 1U) != 0;
}

double& BoxField(CreatePage& page, int box) {
  return page.*FieldOf(box);
}

double BoxField(const CreatePage& page, int box) {
  return page.*FieldOf(box);
}

std::string BoxText(const ConvUnit& units, const CreatePage& page, int box) {
  const double value = page.*FieldOf(box);
  switch (box) {
  case kBoxOffset: return units.CodeToYText(value);
  case kBoxSize: return units.PointToXText(value);
  case kBoxAmplitude: return units.CodeSpanToYText(value);
  default: return NumberText(value);
  }
}

bool ReadBox(const ConvUnit& units, std::int32_t memorySize, const std::string& text, CreatePage& page, int box) {
  double value = ParseEng(text);
  switch (box) {
  case kBoxOffset:
    if (!units.CheckYCurrent(value)) return false;
    page.Offset = units.YToCodeUnclamped(value);
    return true;
  case kBoxSize: {
    if (!units.CheckXCurrent(value)) return false;
    const double size = units.XToPoint(value);
    if (page.StartX + size > memorySize) return false;
    page.SetArea(page.StartX, page.StartX + size);
    page.Size = size;
    return true;
  }
  case kBoxAmplitude: page.Amplitude = units.YSpanToCode(value); return true;
  default: {
    const Limits& limits = kLimits[static_cast<std::size_t>(box)];
    if (value < limits.least || value > limits.most) return false;
    BoxField(page, box) = value;
    return true;
  }
  }
}

} // namespace calder
