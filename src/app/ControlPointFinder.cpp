#include "app/ControlPointFinder.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

namespace calder {

bool ControlPointFinder::Search::IsFor(std::span<const std::int16_t> other) const {
  return codes.size() == other.size() &&
         (other.empty() || std::memcmp(codes.data(), other.data(), other.size_bytes()) == 0);
}

void ControlPointFinder::Search::Run(std::span<const std::int16_t> what) {
  positions.resize(W_MAX_CONTROL_POINTS);
  values.resize(W_MAX_CONTROL_POINTS);
  status = W_FindControlPoints(what, positions, values, count);
}

ControlPointFinder::~ControlPointFinder() {
  if (future_.valid()) future_.wait();
}

void ControlPointFinder::TakeFinished() {
  if (!future_.valid() || future_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return;
  future_.get();
  std::swap(found_, running_);
}

void ControlPointFinder::Prepare(std::span<const std::int16_t> codes) {
  TakeFinished();
  if (future_.valid() || found_.IsFor(codes)) return;
  running_.codes.assign(codes.begin(), codes.end());
  future_ = std::async(std::launch::async, [this] { running_.Run(running_.codes); });
}

std::int32_t ControlPointFinder::Find(std::span<const std::int16_t> codes, std::span<std::int32_t> positions,
                                      std::span<std::int16_t> values, std::int32_t& count) {
  // The thread does not change its codes, so they may be looked at.
  if (future_.valid() && running_.IsFor(codes)) future_.wait();
  TakeFinished();
  if (!found_.IsFor(codes)) {
    found_.codes.assign(codes.begin(), codes.end());
    found_.Run(codes);
  }
  count = 0;
  if (found_.status != W_SUCCESS) return found_.status;
  const auto entries = static_cast<std::size_t>(found_.count);
  if (entries > positions.size() || entries > values.size()) return W_NOT_POSSIBLE;
  std::copy_n(found_.positions.begin(), entries, positions.begin());
  std::copy_n(found_.values.begin(), entries, values.begin());
  count = found_.count;
  return W_SUCCESS;
}

} // namespace calder
