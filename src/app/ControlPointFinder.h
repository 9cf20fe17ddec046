// The control points of the current waveform, looked for while the user does something else.
//
// The search takes up to a tenth of a second for half a million points of a smooth waveform. What the last one found is
// kept together with the codes that it was for, and one search can run on a thread of its own; whoever needs the
// control points compares the codes (20 microseconds) and mostly finds them there. All calls come from one thread.
#pragma once

#include "libs/wavelb32/wavelb32.h"

#include <cstdint>
#include <future>
#include <span>
#include <vector>

namespace calder {

class ControlPointFinder {
public:
  // Waits for a search that runs.
  ~ControlPointFinder();
  ControlPointFinder() = default;
  ControlPointFinder(const ControlPointFinder&) = delete;
  ControlPointFinder& operator=(const ControlPointFinder&) = delete;

  // Starts a search for these codes unless they are the last ones, or a search still runs.
  void Prepare(std::span<const std::int16_t> codes);
  // As ConvCPdata, for codes that need not be a buffer's. Waits for a search for the same codes, if one runs; searches
  // itself when there was none.
  [[nodiscard]] std::int32_t Find(std::span<const std::int16_t> codes, std::span<std::int32_t> positions,
                                  std::span<std::int16_t> values, std::int32_t& count);

private:
  struct Search {
    std::vector<std::int16_t> codes;
    std::vector<std::int32_t> positions;
    std::vector<std::int16_t> values;
    std::int32_t status = W_BAD_RANGE;
    std::int32_t count = 0;

    [[nodiscard]] bool IsFor(std::span<const std::int16_t> other) const;
    void Run(std::span<const std::int16_t> what);
  };

  void TakeFinished();

  Search found_;
  Search running_; // the thread's own while future_ is valid
  std::future<void> future_;
};

} // namespace calder
