// The expression evaluator: waveform expressions into data codes, and bit patterns. The language of expressions is in
// docs/expressions.md, that of patterns in docs/patterns.md.
//
// An evaluator owns its constants and its random state; two evaluators know nothing of each other. It is used from one
// thread at a time; long ranges are shared with one worker thread of its own, which sleeps between calls. Results do
// not depend on the number of threads. Texts are UTF-8; names of functions and constants may be in capitals or not.
#pragma once

#include "libs/wavelb32/wavelb32.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace calder {

// Result codes. They are the numbers of messages: never renumber.
inline constexpr std::int16_t EVAL_SUCCESS = 0;
inline constexpr std::int16_t EVAL_BAD_CONSTANTS = -1;   // a fault inside the constant block
inline constexpr std::int16_t EVAL_SYNTAX = 100;         // something is missing, or stands where it cannot
inline constexpr std::int16_t EVAL_NO_PARENTHESIS = 101; // a function's name without "("
inline constexpr std::int16_t EVAL_UNBALANCED = 102;     // "(" without ")", or ")" without "("
inline constexpr std::int16_t EVAL_ARGUMENT_COUNT = 103; // more or fewer arguments than the function takes
inline constexpr std::int16_t EVAL_DIVIDE_BY_ZERO = 104; // "/", "%" or mod by 0 at a point of the range
inline constexpr std::int16_t EVAL_BUFFER = 105;         // no such buffer, or the range is not inside it
inline constexpr std::int16_t EVAL_TOO_COMPLEX = 106;    // nested too deeply, or too many operations
inline constexpr std::int16_t EVAL_NO_MEMORY = 107;      // memory could not be had
inline constexpr std::int16_t EVAL_UNKNOWN_NAME = 108;   // neither constant nor function
inline constexpr std::int16_t EVAL_BAD_NUMBER = 109;     // a number that is not written as one
inline constexpr std::int16_t PATTERN_TOO_LONG = 110;    // the text is too long
inline constexpr std::int16_t PATTERN_UNBALANCED = 111;  // "[" without "]", or "]" without "["
inline constexpr std::int16_t PATTERN_TOO_DEEP = 112;    // groups too deep inside each other, or too much work
inline constexpr std::int16_t PATTERN_COUNT_TOO_LARGE =
    113;                                                // a count or a number of repeats beyond the limit, or negative
inline constexpr std::int16_t PATTERN_BRACES = 114;     // "{" without "}", or "}" without "{"
inline constexpr std::int16_t PATTERN_EXPRESSION = 115; // a fault of the expression inside { }
inline constexpr std::int16_t PATTERN_MASK = 116;       // "Mask" without "$" and a number of 16 bits
inline constexpr std::int16_t PATTERN_NO_OPERATION = 117; // a count without L, H, N, X or $ after it
inline constexpr std::int16_t PATTERN_SYNTAX = 118;       // any other character; no such buffer or range

// Why a text is refused, as the number of a sentence (EvalReasonText). "Expected" reasons are found at a word.
enum class EvalReason : std::uint8_t {
  None,
  NoNumber,
  OperatorExpected,
  ValueExpected,
  CloseExpected,
  ColonExpected,
  ArgumentEndExpected,
  DefinitionEndExpected,
  ConstantNameExpected,
  EqualSignExpected,
  OpenExpected,
  CloseWithoutOpen,
  OpenWithoutClose,
  BracketWithoutEnd,
  BracketWithoutStart,
  ArgumentCount,
  DivisionByZero,
  UnknownName,
  XIsTheVariable,
  ConstantUsesX,
  ComparisonsInARow,
  TooComplex,
  RangeOutsideBuffer,
  NoMemory,
  // of patterns
  TextTooLong,
  GroupsTooDeep,
  GroupsTakeTooLong,
  MaskDigits,
  WordDigits,
  BraceWithoutEnd,
  BraceWithoutStart,
  ActExpected,
  NotInLanguage,
  CountTooLarge,
  NoCount,
  Count
};

// Where the last call found a fault, for people: code 0 when it found none.
struct EvalFault {
  std::int16_t code = EVAL_SUCCESS;
  std::size_t position = 0; // bytes from the start of the text as it was passed
  EvalReason reason = EvalReason::None;
  std::string word; // what the sentence names, long ones cut; empty where it names nothing, or the end of the text
};

// A reason as a short sentence, UTF-8; empty without one.
struct EvalSentence {
  std::string japanese;
  std::string english;
};
[[nodiscard]] EvalSentence EvalReasonText(const EvalFault& fault);

// The processors that the evaluator has programs for. The first two give the same bits. The last is for processors that
// lack fused multiplication; its functions are as exact, but may differ in the last bits.
enum class EvalProcessor : std::uint8_t { Avx512, Avx2, Plain };

class Evaluator {
public:
  using Fault = EvalFault;

  // maximumThreads: 1, or 2 to share long ranges with a worker thread where there is a second processor.
  explicit Evaluator(int maximumThreads = 2);
  // REQUIRES: IsUsable(processor). For tests and benchmarks: a worker is used even for short ranges when chunkPoints,
  // the points that a thread takes at a time, is given.
  Evaluator(int maximumThreads, EvalProcessor processor, std::size_t chunkPoints = 0);
  ~Evaluator();
  Evaluator(const Evaluator&) = delete;
  Evaluator& operator=(const Evaluator&) = delete;

  [[nodiscard]] static bool IsUsable(EvalProcessor processor);

  // Evaluates "[constants]expression" for every point of the range (whole points as wavelb32 takes them) with x = the
  // point's index in the buffer, and writes the values as codes: to nearest, halves to even, limited to -32767..32767,
  // a value that is not a number as 0. 0, -1 or 100 to 109; the buffer is changed only on 0.
  [[nodiscard]] std::int16_t EvalArray1(double start, double count, WaveHandle buffer, std::string_view text);
  // Evaluates the text at one x. 0, -1 or 100 to 109; result is changed only on 0.
  [[nodiscard]] std::int16_t EvalOneL(std::string_view text, std::int32_t x, double& result);
  // Forgets the constants of earlier texts.
  void ClearConstant();
  // Remembers what the other one remembers, and nothing else.
  void TakeConstants(const Evaluator& other);
  // The same seed gives the same rnd. An evaluator starts with seed 0.
  void EvalInitRandom(std::int32_t seed);

  // How long a pattern may take before it is refused with 112: about a second, or a few milliseconds.
  enum class PatternEffort : std::uint8_t { Full, Frame };
  // Rewrites bits of count points from start by a pattern. 0 or 110 to 118; the buffer is changed only on 0.
  [[nodiscard]] std::int16_t DigitalPattern(std::string_view text, std::int32_t start, WaveHandle buffer,
                                            std::int32_t count, PatternEffort effort = PatternEffort::Full);

  [[nodiscard]] const Fault& LastFault() const;

private:
  struct State;
  std::unique_ptr<State> state_;
};

// What a dialog can show and insert. Texts are UTF-8.
struct EvalEntry {
  std::string_view name;      // as it is written
  std::string_view arguments; // with parentheses, optional ones in [ ]; empty for a constant and the variable
  std::string_view japanese;
  std::string_view english;
};
// Functions and constants, those of one kind together.
[[nodiscard]] std::span<const EvalEntry> EvalEntries();
// The parts of a bit pattern, each with numbers in it that can stand as they are.
[[nodiscard]] std::span<const EvalEntry> PatternEntries();

} // namespace calder
