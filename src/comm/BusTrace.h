// What went over the bus: a line an operation, for the user to look at and to save.
//
// The lines since the last transfer began are always kept; with Keep(true) those of earlier transfers stay too. Long
// data are shortened, and the oldest lines go when there are more than kMostLines.
#pragma once

#include <cstddef>
#include <deque>
#include <span>
#include <string>
#include <string_view>

namespace calder {

class BusTrace {
public:
  static constexpr std::size_t kMostLines = 20000;

  void Keep(bool keep) { keep_ = keep; }
  [[nodiscard]] bool Keeping() const { return keep_; }
  // A transfer begins: what is recorded from now on is the last transfer.
  void Begin(std::string_view title);
  // secondsOfDay: when the operation ended. data: sent or received; empty for none.
  void Add(double secondsOfDay, std::string_view operation, int address, std::string_view data, int errorCode);

  // All lines, each ended by a line feed.
  [[nodiscard]] std::string Text() const;
  // Those of the last transfer.
  [[nodiscard]] std::string LastTransfer() const;

private:
  void Push(std::string line);

  std::deque<std::string> lines_;
  std::size_t lastBegin_ = 0; // index of the first line of the last transfer
  bool keep_ = false;
};

// Printable text with C escapes for the rest, at most `longest` characters of it and then the number of bytes in all.
[[nodiscard]] std::string ShowBytes(std::string_view bytes, std::size_t longest);

} // namespace calder
