// Runs a program over a range of points, block by block, on one thread or two. Inside the evaluator only.
#pragma once

#include "libs/eval32/Program.h"
#include "libs/eval32/Worker.h"

#include <atomic>
#include <memory>
#include <span>

namespace calder::eval {

// The number of the first check that failed, kNoCheck when none did.
inline constexpr std::uint32_t kNoCheck = UINT32_MAX;

class Runner {
public:
  // chunkPoints 0: a worker helps only where the work is worth waking it for.
  Runner(const KernelTable& kernels, int maximumThreads, std::size_t chunkPoints);

  // codes[i] is the value at x = first + i.
  [[nodiscard]] std::uint32_t RunCodes(const Program& program, double first, std::span<std::int16_t> codes);
  [[nodiscard]] std::uint32_t RunValue(const Program& program, double x, double& value);

private:
  struct RowDelete {
    void operator()(double* rows) const;
  };
  // One thread's rows.
  struct Workspace {
    std::unique_ptr<double, RowDelete> rows;
    std::size_t size = 0;
    // Constants fill that many places of their rows.
    void Prepare(const Program& program, std::size_t points);
    [[nodiscard]] double* Row(std::uint32_t row) const {
      return row == kNoRow ? nullptr : rows.get() + static_cast<std::size_t>(row) * kRowStride;
    }
    [[nodiscard]] Operands OperandsOf(const Pass& pass, std::size_t points) const;
  };
  // What the threads share in one run.
  struct Work {
    const Program& program;
    double first = 0;
    std::span<std::int16_t> codes;
    std::size_t chunk = 0;
    std::atomic<std::size_t> next{0};
    std::atomic<std::uint32_t> failed{kNoCheck};
  };

  void RunPasses(const Program& program, const Workspace& workspace, double first, std::size_t count,
                 std::atomic<std::uint32_t>& failed) const;
  void RunBlock(Work& work, const Workspace& workspace, std::size_t start, std::size_t count) const;
  void RunChunks(Work& work, const Workspace& workspace) const;

  const KernelTable& kernels_;
  int maximumThreads_;
  std::size_t chunkPoints_;
  Workspace own_;
  Workspace helpers_;
  Worker worker_;
};

} // namespace calder::eval
