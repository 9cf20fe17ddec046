// The operations that expressions are made of. Inside the evaluator only.
#pragma once

#include <cstdint>

namespace calder::eval {

enum class Op : std::uint8_t {
  Constant, // value
  Point,    // x, the index in the buffer
  // of one operand
  Abs,
  Floor,
  Ceil,
  Trunc,
  Round, // halves away from zero
  Frac,  // a - Trunc(a)
  Sign,
  Not,
  Sqrt,
  Sin,
  Cos,
  Tan,
  Asin,
  Acos,
  Atan,
  Sinh,
  Cosh,
  Tanh,
  Asinh,
  Acosh,
  Atanh,
  Exp,
  Exp2,
  Exp10,
  Log,
  Log2,
  Log10,
  Cbrt,
  Sinc,   // sin(a) / a, 1 at 0
  Wrap,   // twice the place of an angle in its turn: 2 (u - floor(u + value)), u = a / 2 pi
  Random, // value: the number of the rnd in the text
  // of two operands
  Add,
  Sub,
  Mul,
  Div,
  Mod, // sign of the divisor
  Min,
  Max,
  Pow,
  Atan2,
  Hypot,
  Gauss, // exp(-(a / b)^2 / 2)
  Less,  // 1 or 0, as all comparisons
  LessEqual,
  Equal,
  NotEqual,
  And,
  Or,
  // of three operands
  Select, // a is not 0 ? b : c
  Count
};

inline constexpr int kOpCount = static_cast<int>(Op::Count);

[[nodiscard]] constexpr bool IsUnary(Op op) {
  return op >= Op::Abs && op <= Op::Random;
}
[[nodiscard]] constexpr bool IsBinary(Op op) {
  return op >= Op::Add && op <= Op::Or;
}
[[nodiscard]] constexpr bool IsCommutative(Op op) {
  return op == Op::Add || op == Op::Mul || op == Op::Equal || op == Op::NotEqual || op == Op::And || op == Op::Or;
}

// Cheap operations of a row and an immediate operand; two of them in a row are done in one pass.
enum class Step : std::uint8_t { AddK, MulK, RSubK, DivK, MinK, MaxK, Abs, Floor, Count };
inline constexpr int kStepCount = static_cast<int>(Step::Count);
// Cheap operations of two rows; one of them and a step after it are done in one pass.
enum class Join : std::uint8_t { Add, Sub, Mul, Min, Max, Count };
inline constexpr int kJoinCount = static_cast<int>(Join::Count);

} // namespace calder::eval
