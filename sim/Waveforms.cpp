// The blocks that instruments take and give. An array of an XJ, QN, PJ, VJ, KZ or UB is its codes, 2 bytes each, as
// many as the set size. An XG's block has a header of two 32-bit words: format 0 and the number of codes, which follow,
// or format 1 and the number of control points, which follow as a 32-bit position and a 16-bit value each.
#include "sim/Instrument.h"

namespace calder::sim {
namespace {

constexpr std::size_t kHeaderBytes = 8;
constexpr std::size_t kControlBytes = 6;
constexpr std::int32_t kPositionMax = 524288;

std::uint32_t Byte(std::string_view block, std::size_t at) {
  return static_cast<unsigned char>(block[at]);
}

void AppendBytes(std::string& text, std::uint32_t value, int bytes, bool lowFirst) {
  for (int i = 0; i < bytes; ++i) {
    const int shift = 8 * (lowFirst ? i : bytes - 1 - i);
    text += static_cast<char>((value >> shift) & 0xFF);
  }
}

} // namespace

bool Instrument::LowByteFirst() const {
  return Get("order") == "SWAP";
}

std::int16_t Instrument::Code(std::string_view block, std::size_t at) const {
  const std::size_t low = LowByteFirst() ? at : at + 1;
  const std::size_t high = LowByteFirst() ? at + 1 : at;
  return static_cast<std::int16_t>(Byte(block, high) << 8 | Byte(block, low));
}

std::int32_t Instrument::Word(std::string_view block, std::size_t at) const {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value = value << 8 | Byte(block, LowByteFirst() ? at + 3 - i : at + i);
  return static_cast<std::int32_t>(value);
}

bool Instrument::ReadCodes(std::string_view block, std::size_t at, std::size_t count, Waveform& waveform) {
  // One more than the greatest code is taken too: full scale divided down is rounded to it.
  const int limit = 1 << (model_.dataBits - 1);
  waveform.codes.resize(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::int16_t code = Code(block, at + 2 * i);
    if (code < -limit || code > limit) return false;
    waveform.codes[i] = code;
  }
  return true;
}

bool Instrument::ReadControls(std::string_view block, std::size_t count, Waveform& waveform) {
  std::int32_t last = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = kHeaderBytes + kControlBytes * i;
    const ControlPoint point{Word(block, at), Code(block, at + 4)};
    if (point.position < last || point.position > kPositionMax) return false;
    waveform.controls.push_back(point);
    last = point.position;
  }
  return true;
}

void Instrument::ExpectBlock(int number, std::string_view name) {
  expectsBlock_ = true;
  blockMemory_ = number;
  blockName_ = name;
}

std::size_t Instrument::RawBytes() const {
  if (!model_.formatted) return static_cast<std::size_t>(ToInteger(Get("size")).value_or(0)) * 2;
  if (input_.size() < kHeaderBytes) return 0;
  const auto count = static_cast<std::uint32_t>(Word(input_, 4));
  return kHeaderBytes + std::size_t{count} * (Word(input_, 0) == 0 ? 2 : kControlBytes);
}

void Instrument::StoreArray(int number, std::string_view name, std::string_view block) {
  const auto size = static_cast<std::size_t>(ToInteger(Get("size")).value_or(0));
  if (block.size() != size * 2) return Error(-161);
  Waveform waveform;
  waveform.name = name;
  if (!ReadCodes(block, 0, size, waveform)) return Error(-222);
  memories_[number] = std::move(waveform);
}

void Instrument::StoreFormatted(int number, std::string_view name, std::string_view block) {
  if (block.size() < kHeaderBytes) return Error(-161);
  Waveform waveform;
  waveform.name = name;
  waveform.format = Word(block, 0);
  if (waveform.format != 0 && waveform.format != 1) return Error(-161);
  const std::size_t each = waveform.format == 0 ? 2 : kControlBytes;
  const std::size_t count = (block.size() - kHeaderBytes) / each;
  if (count < 2 || block.size() != kHeaderBytes + count * each) return Error(-161);
  if (Word(block, 4) != static_cast<std::int32_t>(count)) return Error(-161);
  if (count > static_cast<std::size_t>(model_.sizeMax)) return Error(-222);
  const bool good =
      waveform.format == 0 ? ReadCodes(block, kHeaderBytes, count, waveform) : ReadControls(block, count, waveform);
  if (!good) return Error(-222);
  memories_[number] = std::move(waveform);
}

std::string Instrument::FormattedBlock(const Waveform& waveform) const {
  const bool low = LowByteFirst();
  const std::size_t count = waveform.format == 0 ? waveform.codes.size() : waveform.controls.size();
  std::string block;
  block.reserve(kHeaderBytes + count * kControlBytes);
  AppendBytes(block, static_cast<std::uint32_t>(waveform.format), 4, low);
  AppendBytes(block, static_cast<std::uint32_t>(count), 4, low);
  if (waveform.format == 0) {
    for (const std::int16_t code : waveform.codes) AppendBytes(block, static_cast<std::uint16_t>(code), 2, low);
  } else {
    for (const ControlPoint& point : waveform.controls) {
      AppendBytes(block, static_cast<std::uint32_t>(point.position), 4, low);
      AppendBytes(block, static_cast<std::uint16_t>(point.value), 2, low);
    }
  }
  return block;
}

void Instrument::StoreKeptBlock(int number) {
  if (kept_.empty()) return;
  const std::string block = std::move(kept_);
  kept_.clear();
  StoreFormatted(number, "ARB" + std::to_string(number), block);
}

const Waveform* Instrument::Stored(int number) const {
  const auto found = memories_.find(number);
  return found == memories_.end() ? nullptr : &found->second;
}

} // namespace calder::sim
