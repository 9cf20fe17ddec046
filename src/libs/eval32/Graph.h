// An expression as a graph of operations. Equal operations are one node, operations on constants are done at once, with
// the same functions as the loops use. Inside the evaluator only.
//
// Invariants:
// 1. A node's operands have lower numbers than the node.
// 2. No node but a constant has only constant operands.
#pragma once

#include "libs/eval32/Kernels.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace calder::eval {

using NodeId = std::uint32_t;
inline constexpr NodeId kNoNode = UINT32_MAX;

struct Node {
  Op op = Op::Constant;
  NodeId a = kNoNode;
  NodeId b = kNoNode;
  NodeId c = kNoNode;
  double value = 0;
};

// A division: a fault when the divisor is 0 at a point where the guard (the conditions around it) is not 0.
struct ZeroCheck {
  NodeId divisor = kNoNode;
  NodeId guard = kNoNode; // kNoNode: always looked at
  std::size_t position = 0;
};

class Graph {
public:
  explicit Graph(const KernelTable& kernels) : kernels_(kernels) {}

  // Forgets all nodes and keeps their memory.
  void Clear();
  [[nodiscard]] NodeId Constant(double value) { return Intern({Op::Constant, kNoNode, kNoNode, kNoNode, value}); }
  [[nodiscard]] NodeId Point() { return Intern({Op::Point, kNoNode, kNoNode, kNoNode, 0}); }
  [[nodiscard]] NodeId Unary(Op op, NodeId a);
  [[nodiscard]] NodeId Binary(Op op, NodeId a, NodeId b);
  [[nodiscard]] NodeId BinaryK(Op op, NodeId a, double k) { return Binary(op, a, Constant(k)); }
  [[nodiscard]] NodeId Select(NodeId condition, NodeId yes, NodeId no);
  [[nodiscard]] NodeId Wrap(NodeId angle, double shift);
  // occurrence distinguishes the random numbers of one text.
  [[nodiscard]] NodeId Random(NodeId counter, std::uint32_t occurrence, std::uint64_t key);
  [[nodiscard]] NodeId Negated(NodeId a) { return BinaryK(Op::Mul, a, -1); }

  // Looks after a divisor under the conditions that hold now. False when it is sure to be 0.
  [[nodiscard]] bool CheckDivisor(NodeId divisor, std::size_t position);
  [[nodiscard]] NodeId Guard() const { return guard_; }
  void SetGuard(NodeId guard) { guard_ = guard; }
  // The guard for where condition holds (or not) as well as the guard that is set now.
  [[nodiscard]] NodeId GuardAnd(NodeId condition, bool holds);

  [[nodiscard]] const std::vector<Node>& Nodes() const { return nodes_; }
  [[nodiscard]] const Node& At(NodeId id) const { return nodes_[id]; }
  [[nodiscard]] bool IsConstant(NodeId id) const { return nodes_[id].op == Op::Constant; }
  [[nodiscard]] const std::vector<ZeroCheck>& Checks() const { return checks_; }

private:
  [[nodiscard]] NodeId Intern(const Node& node);
  [[nodiscard]] NodeId Simplified(Op op, NodeId a, NodeId b);
  [[nodiscard]] double Folded(Op op, double a, double b) const;
  [[nodiscard]] bool IsNeverMinusZero(NodeId id) const;
  void Grow();

  const KernelTable& kernels_;
  std::vector<Node> nodes_;
  std::vector<NodeId> slots_; // open addressing, a power of two
  std::vector<ZeroCheck> checks_;
  NodeId guard_ = kNoNode;
};

} // namespace calder::eval
