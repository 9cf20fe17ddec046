#include "libs/eval32/Runner.h"

#include "libs/eval32/VectorMath.h"

#include <algorithm>
#include <new>

namespace calder::eval {

namespace {

constexpr std::align_val_t kAlignment{64};
// Points that a thread takes at a time, and the work in nanoseconds above which waking the worker pays.
constexpr std::size_t kUsualChunk = 16384;
constexpr double kWorthSharing = 200e3;

// The points worked on at a time. All rows of a block shall stay in the first cache, of which 32 KiB are usual; where
// few are needed, a longer block starts its loops less often.
std::size_t BlockOf(const Program& program) {
  return program.rowCount <= 3 ? kLargestBlock : kLargestBlock / 2;
}

} // namespace

void Runner::RowDelete::operator()(double* rows) const {
  ::operator delete(rows, kAlignment);
}

void Runner::Workspace::Prepare(const Program& program, std::size_t points) {
  const std::size_t needed = std::max<std::size_t>(1, program.rowCount) * kRowStride;
  if (needed > size) {
    rows.reset();
    size = 0;
    rows.reset(static_cast<double*>(::operator new(needed * sizeof(double), kAlignment)));
    size = needed;
  }
  for (const ConstantRow& constant : program.constants) std::fill_n(Row(constant.row), points, constant.value);
}

Operands Runner::Workspace::OperandsOf(const Pass& pass, std::size_t points) const {
  return {Row(pass.out), Row(pass.a), Row(pass.b), Row(pass.c), pass.k, pass.m, nullptr, pass.key, 0, 0, points};
}

Runner::Runner(const KernelTable& kernels, int maximumThreads, std::size_t chunkPoints)
    : kernels_(kernels), maximumThreads_(maximumThreads), chunkPoints_(chunkPoints) {}

// Points after the last one take its x, so that nothing happens there that does not happen in the range.
void Runner::RunPasses(const Program& program, const Workspace& workspace, double first, std::size_t count,
                       std::atomic<std::uint32_t>& failed) const {
  const std::size_t points = (count + kGroupPoints - 1) / kGroupPoints * kGroupPoints;
  const double last = first + static_cast<double>(count - 1);
  if (program.pointRow != kNoRow) {
    Operands operands;
    operands.out = workspace.Row(program.pointRow);
    operands.first = first;
    operands.last = last;
    operands.points = points;
    kernels_.points(operands);
  }
  for (const Pass& pass : program.passes) {
    Operands operands = workspace.OperandsOf(pass, points);
    operands.first = first;
    operands.last = last;
    if (pass.isZero == nullptr) {
      pass.kernel(operands);
    } else if (pass.isZero(operands)) {
      const auto check = static_cast<std::uint32_t>(pass.key);
      std::uint32_t known = failed.load();
      while (check < known && !failed.compare_exchange_weak(known, check)) {
      }
    }
  }
}

void Runner::RunBlock(Work& work, const Workspace& workspace, std::size_t start, std::size_t count) const {
  const std::size_t groups = (count + kGroupPoints - 1) / kGroupPoints * kGroupPoints;
  const double first = work.first + static_cast<double>(start);
  Operands last;
  if (work.program.isPolynomial) {
    last.coefficients = work.program.coefficients.data();
    last.first = first;
    last.points = groups;
  } else {
    RunPasses(work.program, workspace, first, count, work.failed);
    last = workspace.OperandsOf(work.program.last, groups);
  }
  if (groups == count) {
    work.program.pack(last, work.codes.data() + start);
    return;
  }
  std::int16_t codes[kLargestBlock];
  work.program.pack(last, codes);
  std::copy_n(codes, count, work.codes.begin() + static_cast<std::ptrdiff_t>(start));
}

void Runner::RunChunks(Work& work, const Workspace& workspace) const {
  const std::size_t all = work.codes.size();
  const std::size_t block = BlockOf(work.program);
  for (;;) {
    const std::size_t chunk = work.next.fetch_add(work.chunk);
    if (chunk >= all) return;
    const std::size_t end = std::min(all, chunk + work.chunk);
    for (std::size_t start = chunk; start < end; start += block)
      RunBlock(work, workspace, start, std::min(block, end - start));
  }
}

std::uint32_t Runner::RunCodes(const Program& program, double first, std::span<std::int16_t> codes) {
  if (codes.empty()) return kNoCheck;
  if (!program.isPolynomial) MapMathConstants();
  Work work{program, first, codes};
  work.chunk = chunkPoints_ != 0 ? chunkPoints_ : kUsualChunk;
  own_.Prepare(program, BlockOf(program));
  const bool isWorth = chunkPoints_ != 0 || program.costPerPoint * static_cast<double>(codes.size()) > kWorthSharing;
  const bool isShared = maximumThreads_ > 1 && isWorth && codes.size() > work.chunk && worker_.Start();
  if (!isShared) {
    RunChunks(work, own_);
    return work.failed;
  }
  helpers_.Prepare(program, BlockOf(program));
  auto help = [&] { RunChunks(work, helpers_); };
  worker_.Begin(help);
  RunChunks(work, own_);
  worker_.Finish();
  return work.failed;
}

std::uint32_t Runner::RunValue(const Program& program, double x, double& value) {
  own_.Prepare(program, kGroupPoints);
  std::atomic<std::uint32_t> failed{kNoCheck};
  RunPasses(program, own_, x, 1, failed);
  if (failed == kNoCheck) value = *own_.Row(program.last.a);
  return failed;
}

} // namespace calder::eval
