#include "libs/eval32/Polynomial.h"

#include <algorithm>
#include <cmath>

namespace calder::eval {

namespace {

// A deeper expression is no polynomial that anyone writes; and shared parts are walked through more than once.
constexpr int kPolynomialDepthLimit = 24;
constexpr int kVisitLimit = 200;

class Search {
public:
  explicit Search(const Graph& graph) : graph_(graph) {}

  std::optional<Polynomial> Of(NodeId id, int depth) {
    if (depth > kPolynomialDepthLimit || ++visits_ > kVisitLimit) return std::nullopt;
    const Node& node = graph_.At(id);
    Polynomial result;
    switch (node.op) {
    case Op::Constant: result.coefficients[0] = node.value; return result;
    case Op::Point:
      result.coefficients[1] = 1;
      result.degree = 1;
      return result;
    case Op::Add:
    case Op::Sub:
    case Op::Mul: break;
    default: return std::nullopt;
    }
    const std::optional<Polynomial> a = Of(node.a, depth + 1);
    if (!a) return std::nullopt;
    const std::optional<Polynomial> b = Of(node.b, depth + 1);
    if (!b) return std::nullopt;
    return node.op == Op::Mul ? Product(*a, *b) : Sum(*a, *b, node.op == Op::Sub ? -1 : 1);
  }

private:
  static Polynomial Sum(const Polynomial& a, const Polynomial& b, double sign) {
    Polynomial result;
    result.degree = std::max(a.degree, b.degree);
    for (std::size_t i = 0; i <= result.degree; ++i)
      result.coefficients[i] = a.coefficients[i] + sign * b.coefficients[i];
    return result;
  }
  static std::optional<Polynomial> Product(const Polynomial& a, const Polynomial& b) {
    Polynomial result;
    result.degree = a.degree + b.degree;
    if (result.degree > kPolynomialLimit) return std::nullopt;
    for (std::size_t i = 0; i <= a.degree; ++i)
      for (std::size_t j = 0; j <= b.degree; ++j) result.coefficients[i + j] += a.coefficients[i] * b.coefficients[j];
    return result;
  }

  const Graph& graph_;
  int visits_ = 0;
};

} // namespace

std::optional<Polynomial> PolynomialOf(const Graph& graph, NodeId id) {
  return Search(graph).Of(id, 0);
}

bool IsSafe(const Polynomial& polynomial, double largestX) {
  constexpr double largestSum = 0x1p20; // codes; the difference is then below 1e-9 of a code
  double sum = 0;
  for (std::size_t i = polynomial.degree + 1; i-- > 0;) sum = sum * largestX + std::abs(polynomial.coefficients[i]);
  return sum < largestSum; // false for a NaN
}

} // namespace calder::eval
