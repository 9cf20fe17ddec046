#include "comm/ReadBack.h"

#include "app/EditBuffers.h"
#include "app/EngValB.h"
#include "comm/CommandTemplate.h"
#include "comm/GpibIO.h"
#include "comm/TransferBlock.h"
#include "instrument/SystemSetup.h"
#include "libs/file32/file32.h"
#include "libs/spline32/spline32.h"
#include "platform/Desktop.h"
#include "platform/posix/WholeFile.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace calder {
namespace {

constexpr int kReceiveLimit = 1048832; // bytes: the largest block and what stands before it
constexpr std::size_t kSearched = 32;  // bytes in which the block's start is looked for
constexpr std::size_t kControlPoint = 6;

std::string ReceiveFile(const TransferContext& context) {
  return context.desktop.folders.state + "/recvbin.dat";
}

// Exactly three fields, the third one 0: the memory is empty.
bool SaysEmpty(const std::string& reply) {
  if (std::count(reply.begin(), reply.end(), ',') != 2) return false;
  return LeadingNumber(std::string_view(reply).substr(reply.rfind(',') + 1)) == 0;
}

std::uint32_t WordAt(std::string_view bytes, std::size_t at) {
  std::uint32_t word = 0;
  for (std::size_t i = 0; i < 4; ++i) word = word << 8 | static_cast<unsigned char>(bytes[at + i]);
  return word;
}

std::int16_t CodeAt(std::string_view bytes, std::size_t at) {
  return static_cast<std::int16_t>(static_cast<unsigned char>(bytes[at]) << 8 |
                                   static_cast<unsigned char>(bytes[at + 1]));
}

// The positions on the waveform's own points, one control point a point at most.
void JoinControlPoints(const TransferContext& context, const ReceivedBlock& block) {
  const std::int32_t points = context.settings.MemorySize;
  std::vector<double> x;
  std::vector<double> y;
  for (std::size_t i = 0; i < block.codes.size(); ++i) {
    const double place = static_cast<double>(block.positions[i]) * points / W_CONTROL_POINT_SCALE;
    const double point = std::clamp(std::nearbyint(place), 0.0, points - 1.0);
    if (!x.empty() && point <= x.back()) continue;
    x.push_back(point);
    y.push_back(block.codes[i]);
  }
  Spline_Hokan_Line(context.buffers.Current(), 0, points, x.data(), y.data(), static_cast<std::int32_t>(x.size()),
                    points, W_CODE_MAX);
}

} // namespace

bool ReceiveWaveform(const TransferContext& context, const std::function<bool()>& cancelled) {
  std::remove(ReceiveFile(context).c_str()); // never decode an old one
  GpibIO io(context, cancelled);
  if (!io.Begin("Read back")) return false;
  const Protocol& protocol = io.ModelProtocol();
  const std::string information = io.Query(FillTemplate(protocol.ReadInformation, io.Snapshot()));
  if (io.Stopped()) return false;
  if (SaysEmpty(information)) {
    io.Report(kMsgNoWaveInMemory);
    return false;
  }
  return io.Send(FillTemplate(protocol.ReadData, io.Snapshot())) && io.ReceiveFile(ReceiveFile(context), kReceiveLimit);
}

ReceivedBlock ParseReceivedBlock(std::string_view content) {
  ReceivedBlock block;
  const std::size_t at = content.substr(0, kSearched).find(",#");
  if (at == std::string_view::npos || at + 2 >= content.size()) return block;
  const int digits = content[at + 2] - '0';
  const std::size_t countAt = at + 3;
  if (digits < 1 || digits > 9 || countAt + static_cast<std::size_t>(digits) > content.size()) return block;
  const std::string_view countText = content.substr(countAt, static_cast<std::size_t>(digits));
  std::size_t bytes = 0;
  const auto [end, error] = std::from_chars(countText.data(), countText.data() + countText.size(), bytes);
  if (error != std::errc{} || end != countText.data() + countText.size()) return block;
  const std::string_view body = content.substr(countAt + countText.size());
  if (bytes < kBlockHeader || body.size() < bytes) return block;

  const std::uint32_t format = WordAt(body, 0);
  if (format == 0) {
    block.kind = ReceivedBlock::Kind::Points;
    for (std::size_t i = kBlockHeader; i + 2 <= bytes; i += 2) block.codes.push_back(CodeAt(body, i));
  } else if (format == 1) {
    block.kind = ReceivedBlock::Kind::ControlPoints;
    for (std::size_t i = kBlockHeader; i + kControlPoint <= bytes; i += kControlPoint) {
      block.positions.push_back(static_cast<std::int32_t>(WordAt(body, i)));
      block.codes.push_back(CodeAt(body, i + 4));
    }
  }
  if (block.codes.empty()) block.kind = ReceivedBlock::Kind::None;
  return block;
}

bool DecodeWaveform(const TransferContext& context, SystemSetup& setup) {
  std::vector<char> content;
  if (ReadWholeFile(ReceiveFile(context), content) != 0) return false;
  const ReceivedBlock block = ParseReceivedBlock({content.data(), content.size()});
  if (block.kind == ReceivedBlock::Kind::None) return false;
  EditBuffers& buffers = context.buffers;
  buffers.Save_Undo();
  if (block.kind == ReceivedBlock::Kind::Points) {
    const std::span<std::int16_t> work = W_Lock(buffers.Work());
    const std::size_t count =
        std::min(block.codes.size(), static_cast<std::size_t>(std::max(context.settings.MemorySize, 0)));
    std::copy_n(block.codes.begin(), count, work.begin());
    if (W_CopyMemory(buffers.Work(), buffers.Current(), 0, 0, static_cast<double>(count)) != W_SUCCESS) return false;
    setup.ForgetControlPoints();
  } else {
    JoinControlPoints(context, block);
    setup.RefreshControlPoints();
  }
  return true;
}

} // namespace calder
