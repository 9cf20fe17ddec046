// The eight parameter boxes of a page: which of them a function has, what they show and what they accept.
#pragma once

#include "app/ConvUnit.h"
#include "app/PageTable.h"

#include <string>

namespace calder {

// Indices of the boxes.
enum PageBox : int {
  kBoxOffset = 0,
  kBoxSize = 1,
  kBoxAmplitude = 2,
  kBoxPeriod = 3,
  kBoxPhase = 4,
  kBoxSymmetry = 5,
  kBoxDuty = 6,
  kBoxTransition = 7,
};
inline constexpr int kPageBoxes = 8;

// An expression page has none.
[[nodiscard]] bool BoxShown(int function, int box);

// The field that a box shows.
[[nodiscard]] double& BoxField(CreatePage& page, int box);
[[nodiscard]] double BoxField(const CreatePage& page, int box);

// In the current units.
[[nodiscard]] std::string BoxText(const ConvUnit& units, const CreatePage& page, int box);

// Stores what a typed text means. False: it is not accepted, the page is as it was. The area's end follows its size,
// which is refused when it would pass the end of the waveform.
[[nodiscard]] bool ReadBox(const ConvUnit& units, std::int32_t memorySize, const std::string& text, CreatePage& page,
                           int box);

} // namespace calder
