#include "files/SettingsBlock.h"

#include "libs/file32/LittleEndian.h"
#include "libs/wavelb32/wavelb32.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>

namespace calder {

namespace {

// The fields in the block's order, after the first word. One list for both directions.
template <class Record, class Visitor>
void ForEachField(Record& r, Visitor visit) {
  visit(r.ModelName, 16);
  visit(r.Address);
  visit(r.AddressMin);
  visit(r.AddressMax);
  visit(r.DefaultArbCommand, 64);
  visit(r.MemorySizeNo);
  visit(r.MemorySize);
  visit(r.CodeSpan);
  visit(r.Field9);
  visit(r.Field10);
  visit(r.DataBits);
  visit(r.MemoryNoSelectable);
  visit(r.MemoryNo);
  visit(r.MemoryNoMin);
  visit(r.MemoryNoMax);
  visit(r.MemoryNameSelectable);
  visit(r.MemoryName, 32);
  visit(r.ChannelSelectable);
  visit(r.Channel);
  visit(r.Output);
  visit(r.Frequency);
  visit(r.FrequencyMin);
  visit(r.FrequencyMax);
  visit(r.Field23);
  visit(r.Period);
  visit(r.Field25);
  visit(r.Field26);
  visit(r.Field27);
  visit(r.RangeNo);
  visit(r.Field46);
  visit(r.Amplitude);
  visit(r.AmplitudeMin);
  visit(r.AmplitudeMax);
  visit(r.Field31);
  visit(r.OffsetSwitch);
  visit(r.Offset);
  visit(r.OffsetMin);
  visit(r.OffsetMax);
  visit(r.Field35);
  visit(r.OffsetOn);
  visit(r.XUnit);
  visit(r.XUserMin);
  visit(r.XUserMax);
  visit(r.YUnit);
  visit(r.YUserMin);
  visit(r.YUserMax);
  visit(r.XUserName, 8);
  visit(r.YUserName, 8);
  visit(r.TransferFormat);
  visit(r.ControlPointCount);
  visit(r.SizeRatio);
  visit(r.Polarity);
}

// The first word: the model's index below, the interface kind + 1 above; nothing above means that there is no kind.
constexpr std::size_t kFirstWordBytes = 2;
constexpr unsigned kKindShift = 8;
constexpr std::int16_t kLeastWithKind = 256;

// The block holds the output as a truth value: -1 on, 0 off. The record has 0 on, 1 off.
std::int16_t OutputToBlock(std::int16_t output) {
  if (output == 0) return -1;
  return output == 1 ? std::int16_t{0} : output;
}
std::int16_t OutputFromBlock(std::int16_t output) {
  if (output == -1) return 0;
  return output == 0 ? std::int16_t{1} : output;
}

class Packer {
public:
  Packer(std::byte* at, CodePage page) : at_(at), page_(page) {}

  template <class Number>
  void operator()(const Number& value) {
    StoreLittleEndian(value, at_);
    at_ += sizeof(Number);
  }
  void operator()(const std::string& text, std::size_t width) {
    const std::string field = ToCodePageField(text, page_, width);
    at_ = std::transform(field.begin(), field.end(), at_, [](char c) { return static_cast<std::byte>(c); });
  }

private:
  std::byte* at_;
  CodePage page_;
};

class Unpacker {
public:
  Unpacker(const std::byte* at, CodePage page) : at_(at), page_(page) {}

  template <class Number>
  void operator()(Number& value) {
    value = LoadLittleEndian<Number>(at_);
    at_ += sizeof(Number);
  }
  void operator()(std::string& text, std::size_t width) {
    text = FromCodePageField(std::string_view(reinterpret_cast<const char*>(at_), width), page_);
    at_ += width;
  }

private:
  const std::byte* at_;
  CodePage page_;
};

} // namespace

void Pack_Settings(const SystemInfo& record, std::int32_t interfaceKind, CodePage page,
                   std::span<std::byte, WDB_SETTINGS_BYTES> block) {
  const auto low = static_cast<std::uint16_t>(static_cast<std::uint16_t>(record.ModelNo) & 0xFFU);
  const auto high = static_cast<std::uint16_t>(static_cast<std::uint32_t>(interfaceKind + 1) << kKindShift);
  StoreLittleEndian(static_cast<std::uint16_t>(high | low), block.data());

  SystemInfo stored = record;
  stored.Output = OutputToBlock(record.Output);
  ForEachField(std::as_const(stored), Packer(block.data() + kFirstWordBytes, page));
}

void Unpack_Settings(std::span<const std::byte, WDB_SETTINGS_BYTES> block, CodePage page, SystemInfo& record,
                     std::int32_t& interfaceKind) {
  const auto word = LoadLittleEndian<std::int16_t>(block.data());
  record.ModelNo = static_cast<std::int16_t>(word & 0xFF);
  if (word >= kLeastWithKind) interfaceKind = (word >> kKindShift) - 1;

  ForEachField(record, Unpacker(block.data() + kFirstWordBytes, page));
  record.Output = OutputFromBlock(record.Output);
}

bool IsSound(const SystemInfo& record) {
  const double values[] = {record.Frequency, record.FrequencyMin, record.FrequencyMax, record.Period,
                           record.Amplitude, record.AmplitudeMin, record.AmplitudeMax, record.Offset,
                           record.OffsetMin, record.OffsetMax,    record.XUserMin,     record.XUserMax,
                           record.YUserMin,  record.YUserMax};
  if (!std::all_of(std::begin(values), std::end(values), [](double value) { return std::isfinite(value); }))
    return false;
  return record.MemorySize >= 1 && record.MemorySize <= W_MAX_POINTS && record.Frequency > 0 && record.Period > 0 &&
         record.XUserMin < record.XUserMax && record.YUserMin < record.YUserMax &&
         std::isfinite(record.XUserMax - record.XUserMin) && std::isfinite(record.YUserMax - record.YUserMin) &&
         record.XUnit >= kXPoints && record.XUnit <= kXUser && record.YUnit >= kYCodes && record.YUnit <= kYUser;
}

} // namespace calder
