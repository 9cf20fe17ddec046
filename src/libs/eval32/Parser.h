// Text to graph. Inside the evaluator only.
#pragma once

#include "libs/eval32/Functions.h"
#include "libs/eval32/Lexer.h"
#include "libs/eval32/eval32.h"

#include <string>
#include <vector>

namespace calder::eval {

struct NamedValue {
  std::string name; // lower case
  double value = 0;
};
using Constants = std::vector<NamedValue>;

class Parser {
public:
  Parser(std::string_view text, Graph& graph, std::int32_t seed) : lexer_(text), graph_(graph), seed_(seed) {}

  // The whole text: [constants]expression. The block's definitions are added to constants when the whole block is
  // valid, whatever becomes of the expression. kNoNode on a fault.
  [[nodiscard]] NodeId Parse(Constants& constants);
  [[nodiscard]] const EvalFault& Fault() const { return fault_; }

private:
  void CommitConstants(Constants& constants);
  [[nodiscard]] bool ParseBlock();
  [[nodiscard]] bool ParseDefinition();
  [[nodiscard]] NodeId Expression(int lowest);
  [[nodiscard]] NodeId Conditional(NodeId condition);
  [[nodiscard]] NodeId Operation(NodeId left, Symbol symbol, std::size_t position);
  [[nodiscard]] NodeId Prefix();
  [[nodiscard]] NodeId Power();
  [[nodiscard]] NodeId Primary();
  [[nodiscard]] NodeId Name();
  [[nodiscard]] NodeId CallOf(const Function& function, std::size_t position);
  [[nodiscard]] bool ParseArguments(const Function& function, std::vector<NodeId>& arguments);
  [[nodiscard]] NodeId Divided(Op op, NodeId left, NodeId right, std::size_t position);

  void Next() { lexer_.Next(token_); }
  [[nodiscard]] bool Is(Symbol symbol) const { return token_.symbol == symbol; }
  // Records the first fault; later ones follow from it.
  NodeId Fail(std::int16_t code, std::size_t position, EvalReason reason, std::string_view word = {});
  NodeId FailAtToken(EvalReason expected);

  Lexer lexer_;
  Graph& graph_;
  std::int32_t seed_;
  Constants* constants_ = nullptr;
  Constants own_;
  Token token_;
  EvalFault fault_;
  std::string lowerName_;
  std::uint32_t randomCount_ = 0;
  int depth_ = 0;
  bool isInBlock_ = false;
};

} // namespace calder::eval
