// One run of an expression over a range of a buffer: the codes, or why there are none and where the user wrote what is
// wrong.
#pragma once

#include "app/Messages.h"
#include "libs/eval32/eval32.h"
#include "tools/expression/PreparedText.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace calder {

// Why an expression could not be computed, and where.
struct ExpressionFault {
  int message = 0; // of the message table; 0: none
  // Where the user wrote it, in bytes of the text; none when the fault is in no place.
  std::optional<TextPlace> place;
  std::string reason; // a sentence in the language of the program, may be empty
};

struct ExpressionTexts {
  std::string_view constants;
  std::string_view formula;
};

// Whole points of a buffer; x of the formula counts from 0 at the buffer's point 0.
struct ExpressionRange {
  WaveHandle buffer = 0;
  double start = 0; // points
  double count = 0;
  // The points over which X runs from its start to its end; 0: those of the memory.
  std::int32_t axisPoints = 0;
};

class ExpressionRun {
public:
  // What they refer to must outlive this object.
  ExpressionRun(const ConvUnit& units, const SystemInfo& settings, Language language)
      : units_(units), settings_(settings), language_(language), aside_(1) {}

  // Computes the range with an evaluator that remembers the constants. On a fault the buffer is as it was.
  [[nodiscard]] ExpressionFault Run(Evaluator& evaluator, const ExpressionTexts& texts, const ExpressionRange& range);
  // The same by an evaluator of its own, which knows the constants that `remembered` has but defines none: it leaves no
  // trace but in the buffer. seed: of its random values.
  [[nodiscard]] ExpressionFault RunAside(const Evaluator& remembered, std::int32_t seed, const ExpressionTexts& texts,
                                         const ExpressionRange& range);
  // Whether the constants are well formed at these points; message 18 when not.
  [[nodiscard]] ExpressionFault CheckConstants(Evaluator& evaluator, std::string_view constants,
                                               std::initializer_list<double> points) const;

private:
  [[nodiscard]] ExpressionFault FaultOf(std::int16_t code, const PreparedText& text,
                                        const Evaluator::Fault& fault) const;

  const ConvUnit& units_;
  const SystemInfo& settings_;
  const Language language_;
  Evaluator aside_;
};

} // namespace calder
