// The bit-pattern language: text to a list of items, with the expressions in braces already compiled. Inside the
// evaluator only.
#pragma once

#include "libs/eval32/Program.h"
#include "libs/eval32/eval32.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace calder::eval {

enum class PatternAct : std::uint8_t {
  Clear,  // L
  Set,    // H
  Invert, // N
  Keep,   // X
  Word,   // $hex
  Mask,
  Open, // a group, done count times; partner: its Close
  Close // partner: its Open
};

struct PatternItem {
  PatternAct act = PatternAct::Keep;
  std::uint16_t bits = 0;       // of a word or a mask
  std::uint32_t count = 1;      // 0: to the end of the range
  std::int32_t expression = -1; // the number of the expression that gives the count, -1: none
  std::size_t partner = 0;
  std::size_t position = 0;   // of the count, in the text
  bool hasExpression = false; // Open: a count inside the group is an expression
};

struct Pattern {
  std::vector<PatternItem> items;
  std::vector<Program> expressions;
};

inline constexpr std::size_t kPatternTextLimit = 32767; // bytes
inline constexpr std::size_t kPatternDepthLimit = 32;
inline constexpr std::uint32_t kPatternCountLimit = W_MAX_POINTS;

class PatternParser {
public:
  // Compiles an expression; on a fault the position is counted from the expression's start.
  using Compile = std::function<EvalFault(std::string_view text, Program& program)>;

  PatternParser(std::string_view text, Compile compile) : text_(text), compile_(std::move(compile)) {}
  // The fault's code is 0 when there is none.
  [[nodiscard]] EvalFault Parse(Pattern& pattern);

private:
  struct Count {
    std::uint32_t value = 1;
    std::int32_t expression = -1;
    bool isWritten = false;
    std::size_t position = 0;
  };

  [[nodiscard]] bool ParseItem();
  [[nodiscard]] bool ParseMask();
  [[nodiscard]] bool ParseRun();
  [[nodiscard]] bool ParseClose();
  [[nodiscard]] bool ParseCount(Count& count);
  [[nodiscard]] bool ParseBraces(Count& count);
  // The digits after a "$"; false when there are none or they make more than 16 bits.
  [[nodiscard]] bool ParseHexadecimal(std::uint16_t& bits);
  void SkipBlanks();
  bool Fail(std::int16_t code, std::size_t position, EvalReason reason);
  [[nodiscard]] char Now() const { return at_ < text_.size() ? text_[at_] : '\0'; }

  std::string_view text_;
  Compile compile_;
  Pattern* pattern_ = nullptr;
  std::vector<std::size_t> open_;            // the groups that are open, as items
  std::vector<std::size_t> expressionSince_; // of each: how many expressions came before it
  EvalFault fault_;
  std::size_t at_ = 0;
};

} // namespace calder::eval
