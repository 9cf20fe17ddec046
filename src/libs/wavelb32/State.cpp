#include "libs/wavelb32/State.h"

#include "platform/WholePoint.h"
#include "platform/posix/BigPages.h"

#include <algorithm>
#include <utility>

namespace calder::wavelb {

namespace {

constexpr std::size_t kPointsAlignment = 64;
constexpr std::int32_t kPointsLimit = 1 << 26;

template <class Point>
std::span<Point> AsPoints(std::byte* memory, std::size_t count) {
  return {reinterpret_cast<Point*>(memory), count};
}

} // namespace

WaveHandle BufferTable::Allocate(std::int32_t points, PointKind kind) {
  WaveHandle handle = 0;
  return AllocateTogether(points, kind, {&handle, 1}) ? handle : 0;
}

bool BufferTable::AllocateTogether(std::int32_t points, PointKind kind, std::span<WaveHandle> handles) {
  std::ranges::fill(handles, 0);
  if (points < 1 || points > kPointsLimit) return false;
  const auto count = static_cast<std::size_t>(points);
  const std::size_t bytes = count * (kind == PointKind::Code16 ? sizeof(std::int16_t) : sizeof(std::int32_t));
  const std::size_t pitch = (bytes + kPointsAlignment - 1) / kPointsAlignment * kPointsAlignment;
  const std::shared_ptr<std::byte> block = AllocateZeros(pitch * handles.size());
  if (block == nullptr) return false;
  for (std::size_t i = 0; i < handles.size(); ++i) {
    handles[i] = Take({block, block.get() + i * pitch}, count, kind);
    if (handles[i] != 0) continue;
    for (WaveHandle& taken : handles.first(i)) static_cast<void>(Free(std::exchange(taken, 0), kind));
    return false;
  }
  return true;
}

WaveHandle BufferTable::Take(std::shared_ptr<std::byte> memory, std::size_t points, PointKind kind) {
  const bool mayGrow = slots_.size() < kSlotLimit;
  std::int32_t index = 0;
  if (free_.size() > kMinimumFree || (!mayGrow && !free_.empty())) {
    index = free_.front();
    free_.pop_front();
  } else if (mayGrow) {
    index = static_cast<std::int32_t>(slots_.size());
    slots_.emplace_back();
  } else {
    return 0;
  }
  Slot& slot = slots_[static_cast<std::size_t>(index)];
  slot.memory = std::move(memory);
  slot.points = points;
  slot.kind = kind;
  return slot.generation * kSlotLimit + index;
}

BufferTable::Slot* BufferTable::Find(WaveHandle handle, PointKind kind) {
  if (handle <= 0) return nullptr;
  const auto index = static_cast<std::size_t>(handle % kSlotLimit);
  if (index >= slots_.size()) return nullptr;
  Slot& slot = slots_[index];
  const bool fits = slot.memory != nullptr && slot.generation == handle / kSlotLimit && slot.kind == kind;
  return fits ? &slot : nullptr;
}

std::int32_t BufferTable::Free(WaveHandle handle, PointKind kind) {
  Slot* slot = Find(handle, kind);
  if (slot == nullptr) return W_BAD_HANDLE;
  slot->memory.reset();
  slot->points = 0;
  slot->generation = slot->generation == kGenerationLimit ? 1 : slot->generation + 1;
  free_.push_back(handle % kSlotLimit);
  return W_SUCCESS;
}

std::span<std::int16_t> BufferTable::Codes(WaveHandle handle) {
  const Slot* slot = Find(handle, PointKind::Code16);
  if (slot == nullptr) return {};
  return AsPoints<std::int16_t>(slot->memory.get(), slot->points);
}

std::span<std::int32_t> BufferTable::Values(WaveHandle handle) {
  const Slot* slot = Find(handle, PointKind::Value32);
  if (slot == nullptr) return {};
  return AsPoints<std::int32_t>(slot->memory.get(), slot->points);
}

State& TheState() {
  static State state;
  return state;
}

std::optional<PointRange> WholePoints(double start, double count, std::size_t size) {
  const auto limit = static_cast<double>(size);
  // A NaN fails these comparisons. A start between -1 and 0 still begins with point 0.
  if (!(start > -1 && start <= limit && count >= 0 && count <= limit + 1)) return std::nullopt;
  // Start and count come from a subtraction, so their sum may miss the end by a rounding.
  constexpr double tolerance = 1e-6;
  if (start + count > limit + tolerance) return std::nullopt;
  const auto first = static_cast<std::size_t>(std::max(0.0, WholePoint(start)));
  const auto whole = static_cast<std::size_t>(WholePoint(count));
  return PointRange{first, std::min(whole, size - first)};
}

CodeRange FindCodes(WaveHandle handle, double start, double count) {
  const std::span<std::int16_t> codes = TheState().buffers.Codes(handle);
  if (codes.empty()) return {W_BAD_HANDLE, {}};
  const std::optional<PointRange> range = WholePoints(start, count, codes.size());
  if (!range) return {W_BAD_RANGE, {}};
  return {W_SUCCESS, codes.subspan(range->first, range->count)};
}

} // namespace calder::wavelb
