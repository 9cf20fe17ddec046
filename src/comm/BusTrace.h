// What went over the bus: a line an operation, for the user to look at and to save.
//
// The lines since the last transfer began are always there, long data shortened. With Keep(true) those of earlier
// transfers stay too, and every byte is shown. The oldest lines go when there are more than kMostLines or kMostBytes.
#pragma once

#include "comm/BusData.h"

#include <deque>

namespace calder {

class BusTrace {
public:
  static constexpr std::size_t kMostLines = 20000;
  static constexpr std::size_t kMostBytes = std::size_t{64} << 20; // a dozen of the largest waveforms

  void Keep(bool keep) { keep_ = keep; }
  [[nodiscard]] bool Keeping() const { return keep_; }
  // A transfer begins, and ends: what is recorded between is the last transfer.
  void Begin(std::string_view title);
  void End() { within_ = false; }
  // secondsOfDay: when the operation ended. data: sent or received.
  void Add(double secondsOfDay, std::string_view operation, int address, const BusData& data, int errorCode);

  // All lines, each ended by a line feed.
  [[nodiscard]] std::string Text() const;
  // Those of the last transfer.
  [[nodiscard]] std::string LastTransfer() const;

private:
  struct Line {
    std::string text;
    long transfer = 0; // its number, from 1; 0: between transfers
  };
  void Push(std::string text);

  std::deque<Line> lines_;
  std::size_t bytes_ = 0; // of all lines
  long transfers_ = 0;
  bool within_ = false;
  bool keep_ = false;
};

} // namespace calder
