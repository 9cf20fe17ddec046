#include "sim/Command.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>

namespace calder::sim {
namespace {

char Upper(char c) {
  return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsBlank(char c) {
  return static_cast<unsigned char>(c) <= ' ';
}

// Takes the blanks off and keeps the argument when it is not the empty rest of a list.
void AddArgument(Command& command, std::string_view text) {
  command.arguments.emplace_back(Trim(text));
}

// Where a definite-length block's data begin, and how many they are; nothing when it is none.
struct BlockPlace {
  std::size_t begin;
  std::size_t count;
};
std::optional<BlockPlace> FindBlock(std::string_view text, std::size_t hash) {
  if (hash + 1 >= text.size() || !IsDigit(text[hash + 1]) || text[hash + 1] == '0') return std::nullopt;
  const auto digits = static_cast<std::size_t>(text[hash + 1] - '0');
  if (hash + 2 + digits > text.size()) return std::nullopt;
  std::size_t count = 0;
  const char* end = text.data() + hash + 2 + digits;
  const auto [stop, error] = std::from_chars(text.data() + hash + 2, end, count);
  if (error != std::errc() || stop != end) return std::nullopt;
  return BlockPlace{hash + 2 + digits, std::min(count, text.size() - hash - 2 - digits)};
}

// Reads one command that begins at `at`, and moves `at` past its ";".
Command ReadCommand(std::string_view message, std::size_t& at) {
  Command command;
  while (at < message.size() && IsBlank(message[at])) ++at;
  const std::size_t begin = at;
  while (at < message.size() && !IsBlank(message[at]) && message[at] != ';') ++at;
  command.header = message.substr(begin, at - begin);
  if (!command.header.empty() && command.header.back() == '?') {
    command.query = true;
    command.header.pop_back();
  }
  std::size_t start = at;
  bool any = false; // the list is not empty
  char quote = 0;
  for (; at < message.size(); ++at) {
    const char c = message[at];
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == ';') {
      break;
    } else if (c == ',') {
      AddArgument(command, message.substr(start, at - start));
      start = at + 1;
      any = true;
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '#' && Trim(message.substr(start, at - start)).empty()) {
      const auto place = FindBlock(message, at);
      if (!place) continue;
      command.block = message.substr(place->begin, place->count);
      at = place->begin + place->count;
      start = at;
      while (at < message.size() && message[at] != ';') ++at;
      break;
    }
  }
  const std::string_view last = Trim(message.substr(start, at - start));
  if (any || !last.empty()) AddArgument(command, last);
  if (at < message.size()) ++at;
  return command;
}

// One word of a header; both without their colons.
bool MatchNode(std::string_view pattern, std::string_view word, int& suffix) {
  const bool numbered = !pattern.empty() && pattern.back() == '#';
  if (numbered) {
    pattern.remove_suffix(1);
    std::size_t letters = word.size();
    while (letters > 0 && IsDigit(word[letters - 1])) --letters;
    suffix = letters == word.size() ? 1 : ToInteger(word.substr(letters)).value_or(0);
    word = word.substr(0, letters);
  }
  return MatchWord(pattern, word);
}

} // namespace

std::size_t MessageScanner::Scan(std::string_view bytes, bool& complete) {
  complete = false;
  std::size_t at = 0;
  while (at < bytes.size()) {
    if (missing_ > 0) {
      const std::size_t some = std::min(missing_, bytes.size() - at);
      missing_ -= some;
      at += some;
      continue;
    }
    const char c = bytes[at++];
    if (c == '\n' && state_ != State::Quoted) {
      complete = true;
      Clear();
      return at;
    }
    Step(c);
  }
  return at;
}

void MessageScanner::Step(char c) {
  switch (state_) {
  case State::Text:
    if (c == '"' || c == '\'') {
      quote_ = c;
      state_ = State::Quoted;
    } else if (c == '#' && (previous_ == ',' || IsBlank(previous_))) {
      state_ = State::Hash;
    }
    previous_ = c;
    break;
  case State::Quoted:
    if (c == quote_) state_ = State::Text;
    break;
  case State::Hash:
    digits_ = IsDigit(c) ? c - '0' : 0;
    count_ = 0;
    state_ = digits_ > 0 ? State::Digits : State::Text;
    break;
  case State::Digits:
    if (!IsDigit(c)) {
      state_ = State::Text;
      break;
    }
    count_ = count_ * 10 + static_cast<std::size_t>(c - '0');
    if (--digits_ == 0) {
      missing_ = count_;
      state_ = State::Text;
    }
    break;
  }
}

std::vector<Command> SplitMessage(std::string_view message) {
  std::vector<Command> commands;
  std::size_t at = 0;
  while (at < message.size()) {
    Command command = ReadCommand(message, at);
    if (!command.header.empty() || command.query) commands.push_back(std::move(command));
  }
  return commands;
}

bool MatchHeader(std::string_view pattern, std::string_view header, int& suffix) {
  suffix = 0;
  if (!header.empty() && header.front() == ':') header.remove_prefix(1);
  while (true) {
    const std::size_t patternEnd = std::min(pattern.find(':'), pattern.size());
    const std::size_t headerEnd = std::min(header.find(':'), header.size());
    if (!MatchNode(pattern.substr(0, patternEnd), header.substr(0, headerEnd), suffix)) return false;
    const bool last = patternEnd == pattern.size();
    if (last != (headerEnd == header.size())) return false;
    if (last) return true;
    pattern.remove_prefix(patternEnd + 1);
    header.remove_prefix(headerEnd + 1);
  }
}

bool MatchWord(std::string_view pattern, std::string_view word) {
  std::size_t shortForm = 0;
  while (shortForm < pattern.size() && std::islower(static_cast<unsigned char>(pattern[shortForm])) == 0) ++shortForm;
  if (word.size() != shortForm && word.size() != pattern.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (Upper(word[i]) != Upper(pattern[i])) return false;
  }
  return true;
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view Unquote(std::string_view text) {
  if (text.size() < 2 || text.front() != text.back() || (text.front() != '"' && text.front() != '\'')) return text;
  return text.substr(1, text.size() - 2);
}

std::optional<double> ToNumber(std::string_view text) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  double number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || stop != text.data() + text.size() || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::optional<int> ToInteger(std::string_view text) {
  int number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || stop != text.data() + text.size()) return std::nullopt;
  return number;
}

std::string ToText(double number) {
  std::array<char, 32> text{};
  const auto [stop, error] = std::to_chars(text.data(), text.data() + text.size(), number);
  return {text.data(), stop};
}

} // namespace calder::sim
