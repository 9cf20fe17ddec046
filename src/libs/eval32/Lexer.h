// The words of an expression. Inside the evaluator only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace calder::eval {

enum class Symbol : std::uint8_t {
  End,
  Number,
  BadNumber,
  Name,
  Plus,
  Minus,
  Times,
  Divide,
  Percent,
  Caret,
  Open,
  Close,
  OpenBlock,
  CloseBlock,
  Comma,
  Semicolon,
  Question,
  Colon,
  Less,
  LessEqual,
  Greater,
  GreaterEqual,
  Equal,    // = or ==
  NotEqual, // != or <>
  And,
  Or,
  Not,
  Unknown
};

struct Token {
  Symbol symbol = Symbol::End;
  std::size_t position = 0; // bytes from the start of the text
  std::string_view text;
  double value = 0; // of a number
};

class Lexer {
public:
  explicit Lexer(std::string_view text) : text_(text) {}
  // Reads the next token into the given one.
  void Next(Token& token);
  // The character after the last token and its blanks; 0 at the end.
  [[nodiscard]] char Peek();

private:
  [[nodiscard]] bool IsWideBlank(std::size_t ahead) const;
  void SkipBlanks();
  void Number(Token& token);
  void Hexadecimal(Token& token);
  void Identifier(Token& token);
  void Operator(Token& token);
  void Make(Token& token, Symbol symbol, std::size_t length, double value = 0);
  [[nodiscard]] char At(std::size_t ahead) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }

  std::string_view text_;
  std::size_t at_ = 0;
};

} // namespace calder::eval
