// Computes pages into the generation buffer: standard functions through the waveform library, expressions through the
// evaluator.
#pragma once

#include "app/Program.h"
#include "tools/expression/PreparedText.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace calder {

// Why an expression could not be computed, and where.
struct ExpressionFault {
  int message = 0; // of the message table; 0: none
  // Where the user wrote it, in bytes of the page's text; none when the fault is in no place.
  std::optional<TextPlace> place;
  std::string reason; // a sentence in the language of the program, may be empty
};

class PageGenerator {
public:
  explicit PageGenerator(Program& program) : program_(program), live_(1) {}

  // Pages are computed at their own place, or each at point 0 of a buffer of its own.
  enum class Placement { OwnArea, AtZero };
  void SetTarget(WaveHandle buffer, Placement placement);
  [[nodiscard]] WaveHandle GenBuffer() const { return buffer_; }
  [[nodiscard]] double StartOf(const CreatePage& page) const;

  // Seeds every source of random values.
  void InitRandom(std::int32_t seed);

  // Expressions are evaluated only while this is set; otherwise their area is cleared.
  bool ExprEnabled = false;

  // The page in its area of the buffer. What the library refuses (a parameter beyond all measure) clears the area. On a
  // fault the buffer is as it was.
  [[nodiscard]] ExpressionFault Make_Wave(const CreatePage& page);
  [[nodiscard]] ExpressionFault Evaluate(const CreatePage& page);
  // The same by an evaluator of its own, which knows the constants that are remembered but defines none: it leaves no
  // trace but in the buffer.
  [[nodiscard]] ExpressionFault EvaluateAside(const CreatePage& page);
  // Whether the page's constants are well formed at both ends of its area; message 18 when not.
  [[nodiscard]] ExpressionFault CheckConstants(const CreatePage& page);

  void ClearArea(const CreatePage& page) const;

private:
  [[nodiscard]] ExpressionFault EvaluateWith(Evaluator& evaluator, const CreatePage& page);
  [[nodiscard]] std::int32_t MakeStandard(const CreatePage& page) const;

  Program& program_;
  Evaluator live_;
  std::int32_t seed_ = 0;
  WaveHandle buffer_ = 0;
  Placement placement_ = Placement::OwnArea;
};

} // namespace calder
