// Expressions that are polynomials of x. Inside the evaluator only.
#pragma once

#include "libs/eval32/Graph.h"

#include <array>
#include <cstddef>
#include <optional>

namespace calder::eval {

struct Polynomial {
  std::array<double, kPolynomialLimit + 1> coefficients{}; // the constant first
  std::size_t degree = 0;
};

// None where the node is no polynomial, or one beyond kPolynomialLimit.
[[nodiscard]] std::optional<Polynomial> PolynomialOf(const Graph& graph, NodeId id);

// Whether the polynomial in Horner's form gives the codes of the expression as it was written, but for exact halves:
// the two differ by some units in the last place of the largest term, which has to be far below a code. REQUIRES:
// largestX, the largest magnitude of x, is a number.
[[nodiscard]] bool IsSafe(const Polynomial& polynomial, double largestX);

} // namespace calder::eval
