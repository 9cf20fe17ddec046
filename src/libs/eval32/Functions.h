// The functions of the language: how many arguments each takes and what it is made of. Inside the evaluator only.
#pragma once

#include "libs/eval32/Graph.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace calder::eval {

inline constexpr std::size_t kArgumentLimit = 64;

// What a function needs to know of the call beside its arguments.
struct Call {
  Graph& graph;
  std::span<const NodeId> arguments;
  std::size_t position = 0;      // of the name, for a division by zero
  std::uint32_t randomCount = 0; // rnd calls before this one in the text
  std::int32_t seed = 0;
  bool isDividingByZero = false; // set when a divisor is sure to be 0
};

struct Function {
  std::string_view name; // lower case
  std::size_t minimumArguments = 1;
  std::size_t maximumArguments = 1;
  NodeId (*build)(Call&, Op) = nullptr;
  Op op = Op::Constant; // for those that are one operation
};

// nullptr when there is none.
[[nodiscard]] const Function* FindFunction(std::string_view lowerCaseName);

// The key of the random values of one rnd.
[[nodiscard]] std::uint64_t RandomKey(std::int32_t seed, std::uint32_t occurrence);

} // namespace calder::eval
