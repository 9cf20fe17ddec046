// Computes pages into the generation buffer: standard functions through the waveform library, expressions through the
// evaluator.
#pragma once

#include "app/PageTable.h"
#include "tools/expression/ExpressionRun.h"

namespace calder {

class PageGenerator {
public:
  // Pages are computed at their own place, or each at point 0 of a buffer of its own.
  enum class Placement { OwnArea, AtZero };
  // What becomes of an expression page.
  enum class Expressions { Cleared, Evaluated };

  // What they refer to must outlive this object.
  PageGenerator(Evaluator& evaluator, const ConvUnit& units, const SystemInfo& settings, Language language)
      : evaluator_(evaluator), run_(units, settings, language) {}

  void SetTarget(WaveHandle buffer, Placement placement);
  [[nodiscard]] WaveHandle GenBuffer() const { return buffer_; }
  [[nodiscard]] double StartOf(const CreatePage& page) const; // points, in the buffer

  // Seeds every source of random values.
  void InitRandom(std::int32_t seed);

  // The page in its area of the buffer. What the library refuses (a parameter beyond all measure) clears the area. On a
  // fault the buffer is as it was.
  [[nodiscard]] ExpressionFault Make_Wave(const CreatePage& page, Expressions expressions);
  [[nodiscard]] ExpressionFault Evaluate(const CreatePage& page);
  // The same without a trace but in the buffer: no constant is defined.
  [[nodiscard]] ExpressionFault EvaluateAside(const CreatePage& page);
  // Whether the page's constants are well formed at both ends of its area; message 18 when not.
  [[nodiscard]] ExpressionFault CheckConstants(const CreatePage& page) const;

  void ClearArea(const CreatePage& page) const;

private:
  [[nodiscard]] ExpressionRange RangeOf(const CreatePage& page) const;
  [[nodiscard]] std::int32_t MakeStandard(const CreatePage& page) const;

  Evaluator& evaluator_;
  ExpressionRun run_;
  std::int32_t seed_ = 0;
  WaveHandle buffer_ = 0;
  Placement placement_ = Placement::OwnArea;
};

} // namespace calder
