#include "libs/eval32/Functions.h"

#include <algorithm>
#include <numbers>

namespace calder::eval {

namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr double kPercent = 100;
// A jump counts as reached this part of a period early, so that the rounding of 2 pi does not move it by a point.
constexpr double kEarly = 1e-9;

NodeId OneOperation(Call& call, Op op) {
  return call.graph.Unary(op, call.arguments[0]);
}

NodeId TwoOperands(Call& call, Op op) {
  return call.graph.Binary(op, call.arguments[0], call.arguments[1]);
}

NodeId Modulo(Call& call, Op op) {
  call.isDividingByZero = !call.graph.CheckDivisor(call.arguments[1], call.position);
  return TwoOperands(call, op);
}

NodeId OverAll(Call& call, Op op) {
  NodeId result = call.arguments[0];
  for (const NodeId argument : call.arguments.subspan(1)) result = call.graph.Binary(op, result, argument);
  return result;
}

NodeId If(Call& call, Op) {
  return call.graph.Select(call.arguments[0], call.arguments[1], call.arguments[2]);
}

NodeId Clip(Call& call, Op) {
  Graph& g = call.graph;
  return g.Binary(Op::Min, g.Binary(Op::Max, call.arguments[0], call.arguments[1]), call.arguments[2]);
}

NodeId Scaled(Call& call, double factor) {
  return call.graph.BinaryK(Op::Mul, call.arguments[0], factor);
}
NodeId Degrees(Call& call, Op) {
  return Scaled(call, 180 / std::numbers::pi);
}
NodeId Radians(Call& call, Op) {
  return Scaled(call, std::numbers::pi / 180);
}

// ---- periodic shapes: period 2 pi, so that they can stand where sin stands ----

// Twice the place of the angle in the turn that begins shift (in turns) before 0.
NodeId TwicePlace(Call& call, NodeId shift) {
  Graph& g = call.graph;
  if (g.IsConstant(shift)) return g.Wrap(call.arguments[0], g.At(shift).value + kEarly);
  const NodeId turns = Scaled(call, 1 / kTwoPi);
  const NodeId whole = g.Unary(Op::Floor, g.Binary(Op::Add, turns, g.BinaryK(Op::Add, shift, kEarly)));
  return g.BinaryK(Op::Mul, g.Binary(Op::Sub, turns, whole), 2.0);
}

NodeId Fraction(Graph& g, NodeId percentage) {
  return g.BinaryK(Op::Mul, g.BinaryK(Op::Min, g.BinaryK(Op::Max, percentage, 0.0), kPercent), 1 / kPercent);
}

NodeId Saw(Call& call, Op) {
  return TwicePlace(call, call.graph.Constant(0.5));
}

NodeId Square(Call& call, Op) {
  Graph& g = call.graph;
  const NodeId place = g.BinaryK(Op::Mul, TwicePlace(call, g.Constant(0)), 0.5);
  const NodeId duty = call.arguments.size() > 1 ? Fraction(g, call.arguments[1]) : g.Constant(0.5);
  const NodeId isHigh = g.Binary(Op::Less, g.BinaryK(Op::Add, place, kEarly), duty);
  return g.Select(isHigh, g.Constant(1), g.Constant(-1));
}

NodeId Triangle(Call& call, Op) {
  Graph& g = call.graph;
  if (call.arguments.size() == 1) { // 1 - |4 place - 1|
    const NodeId fourfold = g.BinaryK(Op::Mul, TwicePlace(call, g.Constant(0.25)), 2.0);
    return g.Binary(Op::Sub, g.Constant(1), g.Unary(Op::Abs, g.BinaryK(Op::Sub, fourfold, 1.0)));
  }
  // Rises from -rise / 2 to rise / 2, then falls.
  const NodeId rise = Fraction(g, call.arguments[1]);
  const NodeId half = g.BinaryK(Op::Mul, rise, 0.5);
  const NodeId place = g.BinaryK(Op::Mul, TwicePlace(call, half), 0.5);
  const NodeId rising = g.Binary(Op::Div, place, half);
  const NodeId fall = g.Binary(Op::Sub, g.Constant(0.5), half);
  const NodeId falling = g.Binary(Op::Div, g.Binary(Op::Sub, g.Constant(0.5), place), fall);
  return g.Select(g.Binary(Op::Less, g.BinaryK(Op::Add, place, kEarly), half), rising, falling);
}

// ---- shapes that stand alone ----

NodeId Between(Graph& g, NodeId value, NodeId low, NodeId high) { // low <= value < high
  return g.Binary(Op::And, g.Binary(Op::LessEqual, low, value), g.Binary(Op::Less, value, high));
}

NodeId StepShape(Call& call, Op) {
  return call.graph.Binary(Op::LessEqual, call.graph.Constant(0), call.arguments[0]);
}

NodeId Ramp(Call& call, Op) {
  Graph& g = call.graph;
  return g.BinaryK(Op::Min, g.BinaryK(Op::Max, call.arguments[0], 0.0), 1.0);
}

NodeId Rect(Call& call, Op) {
  Graph& g = call.graph;
  const NodeId half = call.arguments.size() > 1 ? g.BinaryK(Op::Mul, call.arguments[1], 0.5) : g.Constant(0.5);
  return Between(g, call.arguments[0], g.Negated(half), half);
}

NodeId Pulse(Call& call, Op) {
  Graph& g = call.graph;
  NodeId place = call.arguments[0];
  if (call.arguments.size() == 3) {
    call.isDividingByZero = !g.CheckDivisor(call.arguments[2], call.position);
    place = g.Binary(Op::Mod, place, call.arguments[2]);
  }
  return Between(g, place, g.Constant(0), call.arguments[1]);
}

NodeId Gauss(Call& call, Op op) {
  Graph& g = call.graph;
  const NodeId sigma = call.arguments.size() > 1 ? call.arguments[1] : g.Constant(1);
  call.isDividingByZero = !g.CheckDivisor(sigma, call.position);
  return g.Binary(op, call.arguments[0], sigma);
}

// sin of 2 pi times the integral of a frequency that runs from f0 at 0 to f1 at the given time.
NodeId Chirp(Call& call, Op) {
  Graph& g = call.graph;
  const NodeId t = call.arguments[0];
  const NodeId f0 = call.arguments[1];
  const NodeId f1 = call.arguments[2];
  const NodeId time = call.arguments[3];
  call.isDividingByZero = !g.CheckDivisor(time, call.position);
  const NodeId slope = g.Binary(Op::Div, g.Binary(Op::Sub, f1, f0), g.BinaryK(Op::Mul, time, 2.0));
  const NodeId turns = g.Binary(Op::Mul, g.Binary(Op::Add, f0, g.Binary(Op::Mul, slope, t)), t);
  return g.Unary(Op::Sin, g.BinaryK(Op::Mul, turns, kTwoPi));
}

// rnd(), rnd(point), rnd(limit), rnd(point, limit): of one argument, a constant is the limit.
NodeId Rnd(Call& call, Op) {
  Graph& g = call.graph;
  NodeId point = call.arguments.empty() ? g.Point() : call.arguments[0];
  NodeId limit = call.arguments.size() == 2 ? call.arguments[1] : kNoNode;
  if (call.arguments.size() == 1 && g.IsConstant(point)) {
    limit = point;
    point = g.Point();
  }
  const NodeId value = g.Random(point, call.randomCount, RandomKey(call.seed, call.randomCount));
  return limit == kNoNode ? value : g.Binary(Op::Mul, value, limit);
}

// In alphabetical order.
constexpr Function kFunctions[] = {
    {"abs", 1, 1, &OneOperation, Op::Abs},
    {"acos", 1, 1, &OneOperation, Op::Acos},
    {"acosh", 1, 1, &OneOperation, Op::Acosh},
    {"asin", 1, 1, &OneOperation, Op::Asin},
    {"asinh", 1, 1, &OneOperation, Op::Asinh},
    {"atan", 1, 1, &OneOperation, Op::Atan},
    {"atan2", 2, 2, &TwoOperands, Op::Atan2},
    {"atanh", 1, 1, &OneOperation, Op::Atanh},
    {"cbrt", 1, 1, &OneOperation, Op::Cbrt},
    {"ceil", 1, 1, &OneOperation, Op::Ceil},
    {"chirp", 4, 4, &Chirp},
    {"clip", 3, 3, &Clip},
    {"cos", 1, 1, &OneOperation, Op::Cos},
    {"cosh", 1, 1, &OneOperation, Op::Cosh},
    {"deg", 1, 1, &Degrees},
    {"exp", 1, 1, &OneOperation, Op::Exp},
    {"exp10", 1, 1, &OneOperation, Op::Exp10},
    {"exp2", 1, 1, &OneOperation, Op::Exp2},
    {"floor", 1, 1, &OneOperation, Op::Floor},
    {"frac", 1, 1, &OneOperation, Op::Frac},
    {"gauss", 1, 2, &Gauss, Op::Gauss},
    {"hypot", 2, 2, &TwoOperands, Op::Hypot},
    {"if", 3, 3, &If},
    {"int", 1, 1, &OneOperation, Op::Trunc},
    {"ln", 1, 1, &OneOperation, Op::Log},
    {"log", 1, 1, &OneOperation, Op::Log},
    {"log10", 1, 1, &OneOperation, Op::Log10},
    {"log2", 1, 1, &OneOperation, Op::Log2},
    {"max", 1, kArgumentLimit, &OverAll, Op::Max},
    {"min", 1, kArgumentLimit, &OverAll, Op::Min},
    {"mod", 2, 2, &Modulo, Op::Mod},
    {"pow", 2, 2, &TwoOperands, Op::Pow},
    {"pulse", 2, 3, &Pulse},
    {"rad", 1, 1, &Radians},
    {"ramp", 1, 1, &Ramp},
    {"rect", 1, 2, &Rect},
    {"rnd", 0, 2, &Rnd},
    {"round", 1, 1, &OneOperation, Op::Round},
    {"saw", 1, 1, &Saw},
    {"sgn", 1, 1, &OneOperation, Op::Sign},
    {"sign", 1, 1, &OneOperation, Op::Sign},
    {"sin", 1, 1, &OneOperation, Op::Sin},
    {"sinc", 1, 1, &OneOperation, Op::Sinc},
    {"sinh", 1, 1, &OneOperation, Op::Sinh},
    {"sqr", 1, 2, &Square},
    {"sqrt", 1, 1, &OneOperation, Op::Sqrt},
    {"step", 1, 1, &StepShape},
    {"tan", 1, 1, &OneOperation, Op::Tan},
    {"tanh", 1, 1, &OneOperation, Op::Tanh},
    {"tri", 1, 2, &Triangle},
};
static_assert(std::ranges::is_sorted(kFunctions, {}, &Function::name));

} // namespace

const Function* FindFunction(std::string_view lowerCaseName) {
  if (lowerCaseName.size() < 2) return nullptr; // no name is shorter, and x is frequent
  const auto* found = std::ranges::lower_bound(kFunctions, lowerCaseName, {}, &Function::name);
  return found != std::end(kFunctions) && found->name == lowerCaseName ? found : nullptr;
}

std::uint64_t RandomKey(std::int32_t seed, std::uint32_t occurrence) {
  const std::uint64_t both = static_cast<std::uint64_t>(static_cast<std::uint32_t>(seed)) << 32 | occurrence;
  return (both + 1) * 0x9E3779B97F4A7C15U;
}

} // namespace calder::eval
