#include "libs/eval32/Program.h"

#include "libs/eval32/Functions.h"
#include "libs/eval32/Polynomial.h"

#include <algorithm>
#include <optional>

namespace calder::eval {

namespace {

constexpr std::size_t Index(auto value) {
  return static_cast<std::size_t>(value);
}

// Nanoseconds a point, on a processor with short vectors; only the choice of one thread or two hangs on it.
double CostOf(const Node& node) {
  if (node.op >= Op::Sin && node.op <= Op::Sinc) return 1.5;
  if (node.op >= Op::Pow && node.op <= Op::Gauss) return 3;
  return node.op == Op::Random || node.op == Op::Mod ? 0.8 : 0.2;
}

} // namespace

ProgramBuilder::StepOf ProgramBuilder::AsStep(const Node& node) const {
  const bool isRightConstant = node.b != kNoNode && graph_->IsConstant(node.b);
  const double right = isRightConstant ? graph_->At(node.b).value : 0;
  switch (node.op) {
  case Op::Abs: return {Step::Abs, node.a, 0};
  case Op::Floor: return {Step::Floor, node.a, 0};
  case Op::Add: return isRightConstant ? StepOf{Step::AddK, node.a, right} : StepOf{};
  case Op::Mul: return isRightConstant ? StepOf{Step::MulK, node.a, right} : StepOf{};
  case Op::Div: return isRightConstant ? StepOf{Step::DivK, node.a, right} : StepOf{};
  case Op::Min: return isRightConstant ? StepOf{Step::MinK, node.a, right} : StepOf{};
  case Op::Max: return isRightConstant ? StepOf{Step::MaxK, node.a, right} : StepOf{};
  case Op::Sub: return graph_->IsConstant(node.a) ? StepOf{Step::RSubK, node.b, graph_->At(node.a).value} : StepOf{};
  default: return {};
  }
}

Join ProgramBuilder::AsJoin(const Node& node) const {
  if (!IsBinary(node.op) || graph_->IsConstant(node.a) || graph_->IsConstant(node.b)) return Join::Count;
  switch (node.op) {
  case Op::Add: return Join::Add;
  case Op::Sub: return Join::Sub;
  case Op::Mul: return Join::Mul;
  case Op::Min: return Join::Min;
  case Op::Max: return Join::Max;
  default: return Join::Count;
  }
}

bool ProgramBuilder::IsMulK(NodeId id) const {
  const Node& node = graph_->At(id);
  return node.op == Op::Mul && graph_->IsConstant(node.b);
}

void ProgramBuilder::Build(const Graph& graph, NodeId root, Outcome outcome, std::int32_t seed, double largestX,
                           Program& program) {
  graph_ = &graph;
  program_ = &program;
  seed_ = seed;
  program.constants.clear();
  program.passes.clear();
  program.pointRow = kNoRow;
  program.rowCount = 0;
  program.costPerPoint = 0.2;
  program.pack = nullptr;
  program.isPolynomial = outcome == Outcome::Codes && BuildPolynomial(root, largestX);
  if (program.isPolynomial) return;
  CountUses(root);
  ChooseLast(root, outcome);
  Fuse();
  DraftAll();
  AssignRows();
}

bool ProgramBuilder::BuildPolynomial(NodeId root, double largestX) {
  if (!graph_->Checks().empty()) return false;
  std::optional<Polynomial> found = PolynomialOf(*graph_, root);
  if (!found || !IsSafe(*found, largestX)) return false;
  program_->coefficients = found->coefficients;
  program_->pack = kernels_.packPolynomial[found->degree];
  program_->costPerPoint += 0.05 * static_cast<double>(found->degree);
  return true;
}

void ProgramBuilder::CountUses(NodeId root) {
  const std::vector<Node>& nodes = graph_->Nodes();
  uses_.assign(nodes.size(), 0);
  isAbsorbed_.assign(nodes.size(), false);
  ++uses_[root];
  for (const ZeroCheck& check : graph_->Checks()) {
    ++uses_[check.divisor];
    if (check.guard != kNoNode) ++uses_[check.guard];
  }
  for (std::size_t id = nodes.size(); id-- > 0;) {
    if (uses_[id] == 0) continue;
    program_->costPerPoint += CostOf(nodes[id]);
    for (const NodeId operand : {nodes[id].a, nodes[id].b, nodes[id].c})
      if (operand != kNoNode) ++uses_[operand];
  }
}

// A last product with a constant, a cheap operation before it and a product before that are done in the last pass.
void ProgramBuilder::ChooseLast(NodeId root, Outcome outcome) {
  last_ = {};
  last_.pass.k = 1;
  last_.operands[0] = root;
  if (outcome == Outcome::Values) return;
  program_->pack = kernels_.pack;
  if (IsMulK(root) && IsUsedOnce(root)) {
    isAbsorbed_[root] = true;
    last_.operands[0] = graph_->At(root).a;
    last_.pass.k = graph_->At(graph_->At(root).b).value;
  }
  const NodeId before = last_.operands[0];
  const Node& node = graph_->At(before);
  const Join join = AsJoin(node);
  if (join == Join::Count || !IsUsedOnce(before)) return;
  isAbsorbed_[before] = true;
  last_.operands[0] = node.a;
  last_.operands[1] = node.b;
  program_->pack = kernels_.packJoin[Index(join)];
  for (const std::size_t side : {0U, 1U}) {
    const NodeId operand = last_.operands[side];
    if (!IsMulK(operand) || !IsUsedOnce(operand)) continue;
    isAbsorbed_[operand] = true;
    last_.operands[side] = graph_->At(operand).a;
    last_.pass.m = graph_->At(graph_->At(operand).b).value;
    program_->pack = (side == 0 ? kernels_.packMulJoin : kernels_.packJoinMul)[Index(join)];
    return;
  }
}

void ProgramBuilder::Fuse() {
  const std::vector<Node>& nodes = graph_->Nodes();
  for (std::size_t id = nodes.size(); id-- > 0;) {
    if (uses_[id] == 0 || isAbsorbed_[id]) continue;
    const Node& node = nodes[id];
    const StepOf step = AsStep(node);
    if (step.step != Step::Count) {
      const Node& inner = nodes[step.operand];
      if (IsUsedOnce(step.operand) && (AsStep(inner).step != Step::Count || AsJoin(inner) != Join::Count))
        isAbsorbed_[step.operand] = true;
    } else if (IsUnary(node.op) && kernels_.unaryMulK[Index(node.op)] != nullptr) {
      if (IsMulK(node.a) && IsUsedOnce(node.a)) isAbsorbed_[node.a] = true;
    } else if (AsJoin(node) != Join::Count) {
      if (IsMulK(node.a) && IsUsedOnce(node.a))
        isAbsorbed_[node.a] = true;
      else if (IsMulK(node.b) && IsUsedOnce(node.b))
        isAbsorbed_[node.b] = true;
    }
  }
}

ProgramBuilder::CodeBuffer ProgramBuilder::DraftStep(const Node&, const StepOf& step) const {
  CodeBuffer draft;
  draft.pass.k = step.k;
  draft.operands[0] = step.operand;
  if (!isAbsorbed_[step.operand]) {
    draft.pass.kernel = kernels_.step[Index(step.step)];
    return draft;
  }
  const Node& inner = graph_->At(step.operand);
  const StepOf first = AsStep(inner);
  if (first.step != Step::Count) {
    draft.pass.kernel = kernels_.steps[Index(first.step)][Index(step.step)];
    draft.pass.k = first.k;
    draft.pass.m = step.k;
    draft.operands[0] = first.operand;
    return draft;
  }
  draft.pass.kernel = kernels_.joinStep[Index(AsJoin(inner))][Index(step.step)];
  draft.operands[0] = inner.a;
  draft.operands[1] = inner.b;
  return draft;
}

ProgramBuilder::CodeBuffer ProgramBuilder::DraftBinary(const Node& node) const {
  CodeBuffer draft;
  draft.operands[0] = node.a;
  if (graph_->IsConstant(node.b)) {
    draft.pass.kernel = kernels_.binaryK[Index(node.op)];
    draft.pass.k = graph_->At(node.b).value;
    return draft;
  }
  if (graph_->IsConstant(node.a)) {
    draft.pass.kernel = kernels_.kBinary[Index(node.op)];
    draft.pass.k = graph_->At(node.a).value;
    draft.operands[0] = node.b;
    return draft;
  }
  draft.operands[1] = node.b;
  draft.pass.kernel = kernels_.binary[Index(node.op)];
  const Join join = AsJoin(node);
  if (join == Join::Count) return draft;
  for (const std::size_t side : {0U, 1U}) {
    const NodeId operand = draft.operands[side];
    if (!isAbsorbed_[operand]) continue;
    draft.pass.kernel = (side == 0 ? kernels_.mulKJoin : kernels_.joinMulK)[Index(join)];
    draft.pass.k = graph_->At(graph_->At(operand).b).value;
    draft.operands[side] = graph_->At(operand).a;
    break;
  }
  return draft;
}

ProgramBuilder::CodeBuffer ProgramBuilder::DraftOf(NodeId id) const {
  const Node& node = graph_->At(id);
  const StepOf step = AsStep(node);
  if (step.step != Step::Count) return DraftStep(node, step);
  if (IsBinary(node.op)) return DraftBinary(node);
  CodeBuffer draft;
  draft.operands[0] = node.a;
  if (node.op == Op::Select) {
    draft.operands[1] = node.b;
    draft.operands[2] = node.c;
    draft.pass.kernel = kernels_.select;
    return draft;
  }
  draft.pass.kernel = kernels_.unary[Index(node.op)];
  if (node.op == Op::Random) draft.pass.key = RandomKey(seed_, static_cast<std::uint32_t>(node.value));
  if (node.op == Op::Wrap) {
    draft.pass.k = 1;
    draft.pass.m = node.value;
  }
  if (isAbsorbed_[node.a]) {
    draft.pass.kernel = kernels_.unaryMulK[Index(node.op)];
    draft.pass.k = graph_->At(graph_->At(node.a).b).value;
    draft.operands[0] = graph_->At(node.a).a;
  }
  if (node.op == Op::Wrap && graph_->At(draft.operands[0]).op == Op::Point) {
    draft.pass.kernel = kernels_.wrapPoints;
    draft.operands[0] = kNoNode;
  }
  return draft;
}

void ProgramBuilder::DraftAll() {
  const std::vector<Node>& nodes = graph_->Nodes();
  drafts_.clear();
  for (NodeId id = 0; id < nodes.size(); ++id) {
    if (uses_[id] == 0 || isAbsorbed_[id] || nodes[id].op == Op::Constant || nodes[id].op == Op::Point) continue;
    drafts_.push_back(DraftOf(id));
    drafts_.back().out = id;
  }
  // A program with a fault has no result that anyone waits for, so the checks can stand at the end; but each as soon as
  // its operands are there keeps rows free.
  const std::vector<ZeroCheck>& checks = graph_->Checks();
  for (std::size_t i = 0; i < checks.size(); ++i) {
    CodeBuffer draft;
    draft.pass.isZero = kernels_.isZero;
    draft.pass.key = i;
    draft.operands[0] = checks[i].divisor;
    draft.operands[1] = checks[i].guard;
    const NodeId ready = checks[i].guard == kNoNode ? checks[i].divisor : std::max(checks[i].divisor, checks[i].guard);
    const auto next = std::find_if(drafts_.begin(), drafts_.end(),
                                   [&](const CodeBuffer& d) { return d.out != kNoNode && d.out > ready; });
    drafts_.insert(next, draft);
  }
}

std::uint32_t ProgramBuilder::TakeRow() {
  if (freeRows_.empty()) return program_->rowCount++;
  const std::uint32_t row = freeRows_.back();
  freeRows_.pop_back();
  return row;
}

// Constants and x get rows of their own, which nothing else uses.
std::uint32_t ProgramBuilder::RowOf(NodeId id) {
  if (rows_[id] != kNoRow) return rows_[id];
  rows_[id] = program_->rowCount++;
  if (graph_->IsConstant(id))
    program_->constants.push_back({rows_[id], graph_->At(id).value});
  else
    program_->pointRow = rows_[id];
  return rows_[id];
}

void ProgramBuilder::AssignRows() {
  rows_.assign(graph_->Nodes().size(), kNoRow);
  lastUse_.assign(graph_->Nodes().size(), 0);
  freeRows_.clear();
  drafts_.push_back(last_);
  for (std::uint32_t i = 0; i < drafts_.size(); ++i)
    for (const NodeId operand : drafts_[i].operands)
      if (operand != kNoNode) lastUse_[operand] = i;
  for (std::uint32_t i = 0; i < drafts_.size(); ++i) {
    CodeBuffer& draft = drafts_[i];
    std::uint32_t* const places[] = {&draft.pass.a, &draft.pass.b, &draft.pass.c};
    for (std::size_t side = 0; side < 3; ++side)
      if (draft.operands[side] != kNoNode) *places[side] = RowOf(draft.operands[side]);
    // A row that is read for the last time may take the result.
    for (std::size_t side = 0; side < 3; ++side) {
      const NodeId operand = draft.operands[side];
      if (operand == kNoNode || lastUse_[operand] != i) continue;
      const Op op = graph_->At(operand).op;
      if (op != Op::Constant && op != Op::Point) freeRows_.push_back(rows_[operand]);
      lastUse_[operand] = UINT32_MAX; // once, where it is both operands
    }
    if (draft.out != kNoNode) draft.pass.out = rows_[draft.out] = TakeRow();
  }
  program_->last = drafts_.back().pass;
  drafts_.pop_back();
  for (const CodeBuffer& draft : drafts_) program_->passes.push_back(draft.pass);
}

} // namespace calder::eval
