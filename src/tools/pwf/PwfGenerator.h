// Computes a parameter-variable function into a buffer: the constant block from its parameters, the run, and the peak
// of the one function that is brought to full scale.
//
// REQUIRES: user units with X from 0 to 1 and Y from -1 to 1, which the formulas are written for.
#pragma once

#include "app/PwfTable.h"
#include "tools/expression/ExpressionRun.h"

#include <array>
#include <string>

namespace calder {

// The parameters' texts, which stand in the constant block as they are.
using PwfTexts = std::array<std::string, PwfTable::kMaxParams>;

class PwfGenerator {
public:
  // What they refer to must outlive this object.
  PwfGenerator(Evaluator& evaluator, const ConvUnit& units, const SystemInfo& settings, Language language)
      : evaluator_(evaluator), run_(units, settings, language) {}

  // Over the buffer's first `points` points, which are the whole X axis. On a fault they are as they were.
  [[nodiscard]] ExpressionFault Make(const PwfTable& table, int k, const PwfTexts& texts, WaveHandle buffer,
                                     std::int32_t points);
  // The same with the values of the definitions file, and without a trace but in the buffer: no constant is defined.
  [[nodiscard]] ExpressionFault MakeAside(const PwfTable& table, int k, WaveHandle buffer, std::int32_t points);

private:
  Evaluator& evaluator_;
  ExpressionRun run_;
};

// The values of the definitions file as texts.
[[nodiscard]] PwfTexts FileTexts(const PwfFunction& function);

// Rescales the buffer's first `points` codes so that the largest magnitude is full scale; all zeros stay.
void Normalize_Peak(WaveHandle buffer, std::int32_t points);

} // namespace calder
