#include "libs/eval32/Parser.h"

#include "platform/AsciiText.h"

#include <algorithm>
#include <numbers>
#include <utility>

namespace calder::eval {

namespace {

// Parentheses, signs in front of signs, powers of powers: each takes a level of the stack.
constexpr int kDepthLimit = 2000; // two of them a parenthesis
constexpr std::size_t kNodeLimit = 8192;

// From weak to strong. Signs and ^ bind stronger.
enum Precedence : int { conditional = 1, logicalOr, logicalAnd, equality, relation, sum, product };

int PrecedenceOf(Symbol symbol) {
  switch (symbol) {
  case Symbol::Question: return conditional;
  case Symbol::Or: return logicalOr;
  case Symbol::And: return logicalAnd;
  case Symbol::Equal:
  case Symbol::NotEqual: return equality;
  case Symbol::Less:
  case Symbol::LessEqual:
  case Symbol::Greater:
  case Symbol::GreaterEqual: return relation;
  case Symbol::Plus:
  case Symbol::Minus: return sum;
  case Symbol::Times:
  case Symbol::Divide:
  case Symbol::Percent: return product;
  default: return 0;
  }
}

// A word as a sentence shows it: long ones are cut at a whole character.
std::string Shown(std::string_view word) {
  constexpr std::size_t limit = 20;
  if (word.size() <= limit) return std::string(word);
  std::size_t end = limit;
  while (end > 0 && (static_cast<unsigned char>(word[end]) & 0xC0U) == 0x80U) --end;
  return std::string(word.substr(0, end)) + "...";
}

void MakeLower(std::string_view text, std::string& lower) {
  lower.assign(text);
  for (char& c : lower) c = Lower(c);
}

class RecursionGuard {
public:
  explicit RecursionGuard(int& depth) : depth_(depth) { ++depth_; }
  ~RecursionGuard() { --depth_; }
  RecursionGuard(const RecursionGuard&) = delete;
  RecursionGuard& operator=(const RecursionGuard&) = delete;

private:
  int& depth_;
};

} // namespace

NodeId Parser::Fail(std::int16_t code, std::size_t position, EvalReason reason, std::string_view word) {
  if (fault_.code == EVAL_SUCCESS) fault_ = {isInBlock_ ? EVAL_BAD_CONSTANTS : code, position, reason, Shown(word)};
  return kNoNode;
}

NodeId Parser::FailAtToken(EvalReason expected) {
  if (Is(Symbol::BadNumber)) return Fail(EVAL_BAD_NUMBER, token_.position, EvalReason::NoNumber, token_.text);
  return Fail(EVAL_SYNTAX, token_.position, expected, token_.text);
}

NodeId Parser::Parse(Constants& constants) {
  constants_ = &constants;
  Next();
  if (Is(Symbol::OpenBlock)) {
    isInBlock_ = true;
    if (!ParseBlock()) return kNoNode;
    isInBlock_ = false;
    CommitConstants(constants);
    Next();
  }
  const NodeId result = Expression(conditional);
  if (result == kNoNode) return kNoNode;
  if (Is(Symbol::Close)) return Fail(EVAL_UNBALANCED, token_.position, EvalReason::CloseWithoutOpen);
  if (!Is(Symbol::End)) return FailAtToken(EvalReason::OperatorExpected);
  return result;
}

void Parser::CommitConstants(Constants& constants) {
  for (NamedValue& own : own_) {
    const auto known = std::ranges::find(constants, own.name, &NamedValue::name);
    if (known != constants.end())
      known->value = own.value;
    else
      constants.push_back(std::move(own));
  }
  own_.clear();
}

// Ends on the "]".
bool Parser::ParseBlock() {
  const std::size_t start = token_.position;
  Next();
  for (;;) {
    while (Is(Symbol::Semicolon)) Next();
    if (Is(Symbol::CloseBlock)) return true;
    if (Is(Symbol::End)) {
      Fail(EVAL_BAD_CONSTANTS, start, EvalReason::BracketWithoutEnd);
      return false;
    }
    if (!ParseDefinition()) return false;
    if (!Is(Symbol::Semicolon) && !Is(Symbol::CloseBlock) && !Is(Symbol::End)) {
      FailAtToken(EvalReason::DefinitionEndExpected);
      return false;
    }
  }
}

bool Parser::ParseDefinition() {
  const Token name = token_;
  if (!Is(Symbol::Name)) {
    FailAtToken(EvalReason::ConstantNameExpected);
    return false;
  }
  MakeLower(name.text, lowerName_);
  NamedValue definition{lowerName_, 0};
  if (definition.name == "x") {
    Fail(EVAL_BAD_CONSTANTS, name.position, EvalReason::XIsTheVariable);
    return false;
  }
  Next();
  if (!Is(Symbol::Equal) || token_.text != "=") {
    FailAtToken(EvalReason::EqualSignExpected);
    return false;
  }
  Next();
  const std::size_t start = token_.position;
  const NodeId value = Expression(conditional);
  if (value == kNoNode) return false;
  if (!graph_.IsConstant(value)) {
    Fail(EVAL_BAD_CONSTANTS, start, EvalReason::ConstantUsesX);
    return false;
  }
  definition.value = graph_.At(value).value;
  own_.push_back(std::move(definition));
  return true;
}

NodeId Parser::Expression(int lowest) {
  const RecursionGuard guard(depth_);
  if (depth_ > kDepthLimit || graph_.Nodes().size() > kNodeLimit)
    return Fail(EVAL_TOO_COMPLEX, token_.position, EvalReason::TooComplex);
  NodeId left = Prefix();
  int compared = 0;
  while (left != kNoNode) {
    const Symbol symbol = token_.symbol;
    const int precedence = PrecedenceOf(symbol);
    if (precedence < lowest) break;
    const std::size_t position = token_.position;
    if (precedence == compared) return Fail(EVAL_SYNTAX, position, EvalReason::ComparisonsInARow);
    compared = precedence == equality || precedence == relation ? precedence : 0;
    Next();
    left = precedence == conditional ? Conditional(left) : Operation(left, symbol, position);
  }
  return left;
}

NodeId Parser::Conditional(NodeId condition) {
  const NodeId outer = graph_.Guard();
  graph_.SetGuard(graph_.GuardAnd(condition, true));
  const NodeId yes = Expression(conditional);
  graph_.SetGuard(outer);
  if (yes == kNoNode) return kNoNode;
  if (!Is(Symbol::Colon)) return FailAtToken(EvalReason::ColonExpected);
  Next();
  graph_.SetGuard(graph_.GuardAnd(condition, false));
  const NodeId no = Expression(conditional);
  graph_.SetGuard(outer);
  return no == kNoNode ? kNoNode : graph_.Select(condition, yes, no);
}

NodeId Parser::Divided(Op op, NodeId left, NodeId right, std::size_t position) {
  if (!graph_.CheckDivisor(right, position)) return Fail(EVAL_DIVIDE_BY_ZERO, position, EvalReason::DivisionByZero);
  return graph_.Binary(op, left, right);
}

NodeId Parser::Operation(NodeId left, Symbol symbol, std::size_t position) {
  // What stands after && and || counts only where it is looked at.
  const NodeId outer = graph_.Guard();
  if (symbol == Symbol::And || symbol == Symbol::Or) graph_.SetGuard(graph_.GuardAnd(left, symbol == Symbol::And));
  const NodeId right = Expression(PrecedenceOf(symbol) + 1);
  graph_.SetGuard(outer);
  if (right == kNoNode) return kNoNode;
  switch (symbol) {
  case Symbol::Or: return graph_.Binary(Op::Or, left, right);
  case Symbol::And: return graph_.Binary(Op::And, left, right);
  case Symbol::Equal: return graph_.Binary(Op::Equal, left, right);
  case Symbol::NotEqual: return graph_.Binary(Op::NotEqual, left, right);
  case Symbol::Less: return graph_.Binary(Op::Less, left, right);
  case Symbol::LessEqual: return graph_.Binary(Op::LessEqual, left, right);
  case Symbol::Greater: return graph_.Binary(Op::Less, right, left);
  case Symbol::GreaterEqual: return graph_.Binary(Op::LessEqual, right, left);
  case Symbol::Plus: return graph_.Binary(Op::Add, left, right);
  case Symbol::Minus: return graph_.Binary(Op::Sub, left, right);
  case Symbol::Times: return graph_.Binary(Op::Mul, left, right);
  case Symbol::Divide: return Divided(Op::Div, left, right, position);
  default: return Divided(Op::Mod, left, right, position);
  }
}

NodeId Parser::Prefix() {
  const RecursionGuard guard(depth_);
  if (depth_ > kDepthLimit) return Fail(EVAL_TOO_COMPLEX, token_.position, EvalReason::TooComplex);
  bool isNegative = false;
  for (; Is(Symbol::Plus) || Is(Symbol::Minus); Next()) isNegative ^= Is(Symbol::Minus);
  NodeId value = kNoNode;
  if (Is(Symbol::Not)) {
    Next();
    const NodeId operand = Prefix();
    if (operand == kNoNode) return kNoNode;
    value = graph_.Unary(Op::Not, operand);
  } else {
    value = Power();
  }
  return value != kNoNode && isNegative ? graph_.Negated(value) : value;
}

NodeId Parser::Power() {
  const NodeId base = Primary();
  if (base == kNoNode || !Is(Symbol::Caret)) return base;
  Next();
  const NodeId exponent = Prefix(); // whose own Power makes it right associative
  return exponent == kNoNode ? kNoNode : graph_.Binary(Op::Pow, base, exponent);
}

NodeId Parser::Primary() {
  if (Is(Symbol::Number)) {
    const double value = token_.value;
    Next();
    return graph_.Constant(value);
  }
  if (Is(Symbol::Name)) return Name();
  if (!Is(Symbol::Open)) return FailAtToken(EvalReason::ValueExpected);
  const std::size_t open = token_.position;
  Next();
  const NodeId inside = Expression(conditional);
  if (inside == kNoNode) return kNoNode;
  if (Is(Symbol::End) || Is(Symbol::CloseBlock)) return Fail(EVAL_UNBALANCED, open, EvalReason::OpenWithoutClose);
  if (!Is(Symbol::Close)) return FailAtToken(EvalReason::CloseExpected);
  Next();
  return inside;
}

NodeId Parser::Name() {
  const Token name = token_;
  MakeLower(name.text, lowerName_);
  const Function* function = FindFunction(lowerName_);
  if (function != nullptr && lexer_.Peek() == '(') return CallOf(*function, name.position);
  for (const Constants* constants : {&own_, constants_}) {
    for (auto at = constants->rbegin(); at != constants->rend(); ++at) {
      if (at->name != lowerName_) continue;
      Next();
      return graph_.Constant(at->value);
    }
  }
  if (function != nullptr) return Fail(EVAL_NO_PARENTHESIS, name.position, EvalReason::OpenExpected, lowerName_);
  Next();
  if (lowerName_ == "x") return graph_.Point();
  if (lowerName_ == "pi") return graph_.Constant(std::numbers::pi);
  if (lowerName_ == "e") return graph_.Constant(std::numbers::e);
  return Fail(EVAL_UNKNOWN_NAME, name.position, EvalReason::UnknownName, name.text);
}

NodeId Parser::CallOf(const Function& function, std::size_t position) {
  Next();
  const std::uint32_t randomCount = randomCount_;
  if (function.name == "rnd") ++randomCount_;
  const NodeId outer = graph_.Guard();
  std::vector<NodeId> arguments;
  const bool isRead = ParseArguments(function, arguments);
  graph_.SetGuard(outer);
  if (!isRead) return kNoNode;
  if (arguments.size() < function.minimumArguments || arguments.size() > function.maximumArguments)
    return Fail(EVAL_ARGUMENT_COUNT, position, EvalReason::ArgumentCount, function.name);
  Call call{graph_, arguments, position, randomCount, seed_};
  const NodeId result = function.build(call, function.op);
  return call.isDividingByZero ? Fail(EVAL_DIVIDE_BY_ZERO, position, EvalReason::DivisionByZero) : result;
}

// Begins on the "(" and ends after the ")".
bool Parser::ParseArguments(const Function& function, std::vector<NodeId>& arguments) {
  const std::size_t open = token_.position;
  Next();
  if (Is(Symbol::Close)) {
    Next();
    return true;
  }
  const NodeId outer = graph_.Guard();
  const bool isIf = function.name == "if";
  for (;;) {
    // The choices of if count only where they are taken.
    graph_.SetGuard(outer);
    if (isIf && (arguments.size() == 1 || arguments.size() == 2))
      graph_.SetGuard(graph_.GuardAnd(arguments[0], arguments.size() == 1));
    const NodeId argument = Expression(conditional);
    if (argument == kNoNode) return false;
    arguments.push_back(argument);
    if (Is(Symbol::Comma)) {
      Next();
      continue;
    }
    if (Is(Symbol::Close)) {
      Next();
      return true;
    }
    if (Is(Symbol::End) || Is(Symbol::CloseBlock))
      Fail(EVAL_UNBALANCED, open, EvalReason::OpenWithoutClose);
    else
      FailAtToken(EvalReason::ArgumentEndExpected);
    return false;
  }
}

} // namespace calder::eval
