// Program messages taken apart: commands, their headers and arguments.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calder::sim {

// One command of a message: "header arguments" or "header? arguments".
struct Command {
  std::string header; // as it was sent, without the question mark
  bool query = false;
  int suffix = 0;                     // the number in the header; 0: the pattern has none
  std::vector<std::string> arguments; // without the blanks around them; quoted ones keep their quotes
  std::optional<std::string> block;   // the bytes of a definite-length block, which is the last argument
};

// Finds the end of a message in what arrives piece by piece: a line feed outside of texts in quotes and of blocks.
class MessageScanner {
public:
  // How many of the bytes belong to the message, the line feed among them; `complete` says whether it was met.
  std::size_t Scan(std::string_view bytes, bool& complete);
  // True while bytes of a block with a known length are missing: an end mark there cuts the block.
  [[nodiscard]] bool InBlock() const { return missing_ > 0; }
  void Clear() { *this = MessageScanner(); }

private:
  enum class State { Text, Quoted, Hash, Digits };
  void Step(char c);

  State state_ = State::Text;
  char quote_ = 0;
  char previous_ = 0; // a block begins where an argument does
  int digits_ = 0;
  std::size_t count_ = 0;
  std::size_t missing_ = 0;
};

// The commands of a message, separated by ";" outside of texts in quotes and of blocks.
std::vector<Command> SplitMessage(std::string_view message);

// Whether a header is that of a pattern. A pattern writes the short form of each word in capitals and the rest of its
// long form in small letters, "SOURce#:FREQuency"; # stands for a number, 1 when it is left out. Upper and lower case
// are equal, and a colon before the header does not count.
[[nodiscard]] bool MatchHeader(std::string_view pattern, std::string_view header, int& suffix);
// The same for one word, such as "INFinity".
[[nodiscard]] bool MatchWord(std::string_view pattern, std::string_view word);

[[nodiscard]] std::string_view Trim(std::string_view text);
// The text inside of the quotes, or all of it.
[[nodiscard]] std::string_view Unquote(std::string_view text);
// The whole text as a number.
[[nodiscard]] std::optional<double> ToNumber(std::string_view text);
[[nodiscard]] std::optional<int> ToInteger(std::string_view text);
// The shortest text of a number.
[[nodiscard]] std::string ToText(double number);

} // namespace calder::sim
