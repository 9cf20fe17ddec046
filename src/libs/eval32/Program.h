// A graph as a list of passes over rows. Inside the evaluator only.
#pragma once

#include "libs/eval32/Graph.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace calder::eval {

inline constexpr std::uint32_t kNoRow = UINT32_MAX;

struct Pass {
  Kernel kernel = nullptr;     // one of the two
  ZeroKernel isZero = nullptr; // a check; its number is in key
  std::uint32_t out = kNoRow;
  std::uint32_t a = kNoRow;
  std::uint32_t b = kNoRow;
  std::uint32_t c = kNoRow;
  double k = 0;
  double m = 0;
  std::uint64_t key = 0;
};

struct ConstantRow {
  std::uint32_t row = 0;
  double value = 0;
};

struct Program {
  std::vector<ConstantRow> constants; // filled once
  std::vector<Pass> passes;           // run for every block
  std::uint32_t pointRow = kNoRow;    // takes the indices of the block's points first
  std::uint32_t rowCount = 0;
  // The result: of a program for values the row a, of one for codes what the last pass works on.
  Pass last;
  PackKernel pack = nullptr;
  // Where the whole expression is a polynomial of x: its coefficients, the constant first. No other pass is run then.
  std::array<double, kPolynomialLimit + 1> coefficients{};
  bool isPolynomial = false;
  double costPerPoint = 0; // nanoseconds, roughly
};

enum class Outcome : std::uint8_t { Values, Codes };

// Makes programs; keeps its working memory from one to the next.
class ProgramBuilder {
public:
  explicit ProgramBuilder(const KernelTable& kernels) : kernels_(kernels) {}
  // largestX: the largest magnitude of x that the program will be run with.
  void Build(const Graph& graph, NodeId root, Outcome outcome, std::int32_t seed, double largestX, Program& program);

private:
  // A pass whose operands are still nodes.
  struct CodeBuffer {
    Pass pass;
    NodeId out = kNoNode;
    NodeId operands[3] = {kNoNode, kNoNode, kNoNode};
  };
  struct StepOf {
    Step step = Step::Count; // Count: it is none
    NodeId operand = kNoNode;
    double k = 0;
  };

  [[nodiscard]] bool BuildPolynomial(NodeId root, double largestX);
  void CountUses(NodeId root);
  void ChooseLast(NodeId root, Outcome outcome);
  void Fuse();
  void DraftAll();
  [[nodiscard]] CodeBuffer DraftOf(NodeId id) const;
  [[nodiscard]] CodeBuffer DraftStep(const Node& node, const StepOf& step) const;
  [[nodiscard]] CodeBuffer DraftBinary(const Node& node) const;
  void AssignRows();
  [[nodiscard]] std::uint32_t RowOf(NodeId id);
  [[nodiscard]] std::uint32_t TakeRow();

  [[nodiscard]] StepOf AsStep(const Node& node) const;
  [[nodiscard]] Join AsJoin(const Node& node) const; // Count: it is none
  [[nodiscard]] bool IsMulK(NodeId id) const;
  [[nodiscard]] bool IsUsedOnce(NodeId id) const { return uses_[id] == 1; }

  const KernelTable& kernels_;
  const Graph* graph_ = nullptr;
  Program* program_ = nullptr;
  std::int32_t seed_ = 0;
  std::vector<std::uint32_t> uses_;
  std::vector<bool> isAbsorbed_; // done in the pass of the node that uses it
  std::vector<CodeBuffer> drafts_;
  CodeBuffer last_;
  std::vector<std::uint32_t> lastUse_; // by node: the draft that needs it last
  std::vector<std::uint32_t> rows_;    // by node
  std::vector<std::uint32_t> freeRows_;
};

} // namespace calder::eval
