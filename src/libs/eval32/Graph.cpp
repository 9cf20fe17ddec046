#include "libs/eval32/Graph.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

namespace calder::eval {

namespace {

// Short numbers differ only in the upper half of their bits, which products carry upwards and out.
std::size_t Hash(const Node& node) {
  const auto bits = std::bit_cast<std::uint64_t>(node.value);
  const std::uint64_t operands = node.a ^ std::uint64_t{node.b} << 20 ^ std::uint64_t{node.c} << 34;
  const std::uint64_t all = bits ^ (bits >> 32) ^ operands ^ static_cast<std::uint64_t>(node.op) << 14;
  return static_cast<std::size_t>((all * 0x9E3779B97F4A7C15U) >> 40);
}

bool IsSame(const Node& one, const Node& other) {
  return one.op == other.op && one.a == other.a && one.b == other.b && one.c == other.c &&
         std::bit_cast<std::uint64_t>(one.value) == std::bit_cast<std::uint64_t>(other.value);
}

// A power of two whose inverse is one as well: products with it are exact as long as they are normal.
bool IsPowerOfTwo(double value) {
  int exponent = 0;
  return std::abs(std::frexp(value, &exponent)) == 0.5 && std::abs(exponent) < 100;
}

} // namespace

void Graph::Clear() {
  nodes_.clear();
  checks_.clear();
  guard_ = kNoNode;
  std::fill(slots_.begin(), slots_.end(), kNoNode);
}

void Graph::Grow() {
  constexpr std::size_t smallest = 256;
  slots_.assign(std::max(smallest, slots_.size() * 2), kNoNode);
  for (NodeId id = 0; id < nodes_.size(); ++id) {
    std::size_t slot = Hash(nodes_[id]) & (slots_.size() - 1);
    while (slots_[slot] != kNoNode) slot = (slot + 1) & (slots_.size() - 1);
    slots_[slot] = id;
  }
}

NodeId Graph::Intern(const Node& node) {
  if (nodes_.size() * 2 >= slots_.size()) Grow();
  std::size_t slot = Hash(node) & (slots_.size() - 1);
  for (; slots_[slot] != kNoNode; slot = (slot + 1) & (slots_.size() - 1))
    if (IsSame(nodes_[slots_[slot]], node)) return slots_[slot];
  slots_[slot] = static_cast<NodeId>(nodes_.size());
  nodes_.push_back(node);
  return slots_[slot];
}

double Graph::Folded(Op op, double a, double b) const {
  if (op == Op::Add) return a + b;
  if (op == Op::Sub) return a - b;
  if (op == Op::Mul) return a * b;
  double left[kGroupPoints];
  double right[kGroupPoints];
  std::fill_n(left, kGroupPoints, a);
  std::fill_n(right, kGroupPoints, b);
  Operands operands;
  operands.out = left;
  operands.a = left;
  operands.b = right;
  operands.points = kGroupPoints;
  const auto at = static_cast<std::size_t>(op);
  (IsUnary(op) ? kernels_.unary[at] : kernels_.binary[at])(operands);
  return left[0];
}

NodeId Graph::Unary(Op op, NodeId a) {
  if (IsConstant(a)) return Constant(Folded(op, At(a).value, 0));
  return Intern({op, a, kNoNode, kNoNode, 0});
}

NodeId Graph::Binary(Op op, NodeId a, NodeId b) {
  if (IsConstant(a) && IsConstant(b)) return Constant(Folded(op, At(a).value, At(b).value));
  // An immediate operand stands on the right; others in the order of their numbers.
  if (IsCommutative(op) && (IsConstant(a) || (!IsConstant(b) && a > b))) std::swap(a, b);
  return Simplified(op, a, b);
}

bool Graph::IsNeverMinusZero(NodeId id) const {
  const Node& node = At(id);
  return node.op == Op::Point || (node.op == Op::Mul && At(node.a).op == Op::Point && At(node.b).value > 0);
}

// Only what gives the same bits as the operation that was written.
NodeId Graph::Simplified(Op op, NodeId a, NodeId b) {
  const double k = IsConstant(b) ? At(b).value : std::numeric_limits<double>::quiet_NaN();
  if (op == Op::Sub && IsConstant(b)) return BinaryK(Op::Add, a, -k);
  if (op == Op::Add && k == 0 && (std::signbit(k) || IsNeverMinusZero(a))) return a;
  if (op == Op::Div && IsPowerOfTwo(k)) return BinaryK(Op::Mul, a, 1 / k);
  if (op == Op::Mul && k == 1) return a;
  if (op == Op::Mul && IsConstant(b) && At(a).op == Op::Mul && IsConstant(At(a).b)) {
    const double inner = At(At(a).b).value;
    if (IsPowerOfTwo(inner) || IsPowerOfTwo(k)) return BinaryK(Op::Mul, At(a).a, inner * k);
  }
  if (op == Op::Pow && k == 1) return a;
  if (op == Op::Pow && k == 0) return Constant(1);
  if (op == Op::Pow && (k == 2 || k == 3 || k == 4)) {
    const NodeId square = Binary(Op::Mul, a, a);
    return k == 2 ? square : Binary(Op::Mul, square, k == 3 ? a : square);
  }
  return Intern({op, a, b, kNoNode, 0});
}

NodeId Graph::Select(NodeId condition, NodeId yes, NodeId no) {
  if (IsConstant(condition)) return At(condition).value != 0 ? yes : no;
  if (yes == no) return yes;
  return Intern({Op::Select, condition, yes, no, 0});
}

NodeId Graph::Wrap(NodeId angle, double shift) {
  if (!IsConstant(angle)) return Intern({Op::Wrap, angle, kNoNode, kNoNode, shift});
  double values[kGroupPoints];
  std::fill_n(values, kGroupPoints, At(angle).value);
  Operands operands;
  operands.out = values;
  operands.a = values;
  operands.k = 1;
  operands.m = shift;
  operands.points = kGroupPoints;
  kernels_.unary[static_cast<std::size_t>(Op::Wrap)](operands);
  return Constant(values[0]);
}

NodeId Graph::Random(NodeId counter, std::uint32_t occurrence, std::uint64_t key) {
  if (!IsConstant(counter)) return Intern({Op::Random, counter, kNoNode, kNoNode, static_cast<double>(occurrence)});
  double values[kGroupPoints];
  std::fill_n(values, kGroupPoints, At(counter).value);
  Operands operands;
  operands.out = values;
  operands.a = values;
  operands.key = key;
  operands.points = kGroupPoints;
  kernels_.unary[static_cast<std::size_t>(Op::Random)](operands);
  return Constant(values[0]);
}

NodeId Graph::GuardAnd(NodeId condition, bool holds) {
  const NodeId wanted = holds ? condition : Unary(Op::Not, condition);
  if (guard_ == kNoNode) return wanted;
  return IsConstant(guard_) && At(guard_).value == 0 ? guard_ : Binary(Op::And, guard_, wanted);
}

bool Graph::CheckDivisor(NodeId divisor, std::size_t position) {
  if (IsConstant(divisor) && At(divisor).value != 0) return true;
  if (guard_ != kNoNode && IsConstant(guard_)) {
    if (At(guard_).value == 0) return true;
    if (IsConstant(divisor)) return false;
    checks_.push_back({divisor, kNoNode, position});
    return true;
  }
  if (IsConstant(divisor) && guard_ == kNoNode) return false;
  checks_.push_back({divisor, guard_, position});
  return true;
}

} // namespace calder::eval
