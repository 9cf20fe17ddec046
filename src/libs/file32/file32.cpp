#include "libs/file32/file32.h"

#include "libs/file32/IntegerText.h"
#include "libs/file32/LittleEndian.h"
#include "libs/file32/RealText.h"
#include "libs/file32/WaveClip.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>

namespace calder {

namespace {

// Points `first` to `first + count` of the buffer; none when they are not all there.
std::optional<std::span<std::int16_t>> PointsOf(WaveHandle buffer, std::int32_t first, std::int32_t count) {
  const std::span<std::int16_t> points = W_Lock(buffer);
  if (points.empty() || first < 0 || count < 0) return std::nullopt;
  if (static_cast<std::size_t>(first) + static_cast<std::size_t>(count) > points.size()) return std::nullopt;
  return points.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(count));
}

} // namespace

// Memory that was written before is a hundred times cheaper than fresh memory: everything here is kept.
struct File32::Impl {
  std::vector<char> bytes; // of a file, read or about to be written
  std::vector<std::int16_t> codes;
  RealValues reals;
  TextFault fault;
  // Two, because the clipboard still holds the last one while the next one is filled.
  std::array<std::shared_ptr<WaveClip>, 2> clips;

  std::int32_t Refuse(TextReason reason) {
    fault = {0, reason};
    return FILE_READ_FAILED;
  }
  std::shared_ptr<WaveClip> FreeClip();
};

// A source that only this object holds. The clipboard lets go of a source on this thread only, so the count is exact.
std::shared_ptr<WaveClip> File32::Impl::FreeClip() {
  for (std::shared_ptr<WaveClip>& clip : clips) {
    if (!clip) clip = std::make_shared<WaveClip>();
    if (clip.use_count() == 1) return clip;
  }
  std::swap(clips[0], clips[1]);
  clips[1] = std::make_shared<WaveClip>();
  return clips[1];
}

File32::File32() : impl_(std::make_unique<Impl>()) {}
File32::~File32() = default;

std::int32_t File32::Save4410File(const std::string& path, std::span<const std::byte> settingsBlock, WaveHandle buffer,
                                  std::span<const std::byte> controlPointTable) {
  const std::span<const std::int16_t> codes = W_Lock(buffer);
  if (codes.empty()) return FILE_WRITE_FAILED;
  return WriteWdb(path, settingsBlock, codes, controlPointTable, impl_->bytes);
}

std::int32_t File32::Read4410File(const std::string& path, std::span<std::byte> settingsBlock, WaveHandle buffer) {
  const std::span<const std::byte> file = LoadWdb(path);
  if (settingsBlock.size() < WDB_SETTINGS_BYTES || TakeWdb(file, buffer) != 0) return FILE_READ_FAILED;
  std::ranges::copy(WdbSettings(file), settingsBlock.begin());
  return 0;
}

std::span<const std::byte> File32::LoadWdb(const std::string& path) {
  if (ReadFileStart(path, WDB_MOST_BYTES, impl_->bytes) != 0) return {};
  return std::as_bytes(std::span(impl_->bytes));
}

std::int32_t File32::TakeWdb(std::span<const std::byte> file, WaveHandle buffer) {
  const std::span<std::int16_t> codes = W_Lock(buffer);
  return codes.empty() ? FILE_READ_FAILED : WdbCodes(file, codes);
}

std::int32_t File32::SaveSystemFile(const std::string& path, std::span<const std::byte> settingsBlock) {
  if (settingsBlock.size() < WDB_SETTINGS_BYTES) return FILE_WRITE_FAILED;
  const std::array pieces = {settingsBlock.first(WDB_SETTINGS_BYTES)};
  return ReplaceFile(path, pieces);
}

std::int32_t File32::ReadSystemFile(const std::string& path, std::span<std::byte> settingsBlock) {
  if (settingsBlock.size() < WDB_SETTINGS_BYTES) return FILE_READ_FAILED;
  std::vector<char>& bytes = impl_->bytes;
  if (ReadFileStart(path, WDB_SETTINGS_BYTES, bytes) != 0 || bytes.size() < WDB_SETTINGS_BYTES) return FILE_READ_FAILED;
  std::ranges::copy(std::as_bytes(std::span(bytes)), settingsBlock.begin());
  return 0;
}

std::int32_t File32::SaveWaveData(const std::string& path, WaveHandle buffer, std::int32_t first, std::int32_t count) {
  const std::optional<std::span<std::int16_t>> points = PointsOf(buffer, first, count);
  if (!points || points->empty()) return FILE_WRITE_FAILED;
  std::vector<char>& text = impl_->bytes;
  try {
    text.resize(std::max(text.size(), points->size() * CODE_LINE_BYTES));
  } catch (const std::bad_alloc&) {
    return FILE_WRITE_FAILED;
  }
  const std::size_t length = FormatCodes(*points, LineEnd::CrLf, text.data());
  const std::array pieces = {std::as_bytes(std::span(text).first(length))};
  return ReplaceFile(path, pieces);
}

std::int32_t File32::LoadWaveData(const std::string& path, WaveHandle buffer, std::int32_t first, std::int32_t most,
                                  std::int32_t& read) {
  impl_->fault = {};
  const std::optional<std::span<std::int16_t>> points = PointsOf(buffer, first, most);
  if (!points || points->empty()) return impl_->Refuse(TextReason::NoRoom);
  if (ReadWholeFile(path, impl_->bytes) != 0) return impl_->Refuse(TextReason::Unreadable);
  std::vector<std::int16_t>& codes = impl_->codes;
  std::size_t count = 0;
  try {
    codes.resize(std::max(codes.size(), points->size()));
    const std::string_view text(impl_->bytes.data(), impl_->bytes.size());
    if (!ParseCodes(text, std::span(codes).first(points->size()), count, impl_->fault)) return FILE_READ_FAILED;
  } catch (const std::bad_alloc&) {
    return impl_->Refuse(TextReason::NoMemory);
  }
  std::copy_n(codes.begin(), count, points->begin());
  read = static_cast<std::int32_t>(count);
  return 0;
}

std::int32_t File32::LoadRealData(const std::string& path, std::int32_t most, std::vector<std::int16_t>& codes) {
  impl_->fault = {};
  if (most < 1) return impl_->Refuse(TextReason::NoRoom);
  if (ReadWholeFile(path, impl_->bytes) != 0) return impl_->Refuse(TextReason::Unreadable);
  RealValues& reals = impl_->reals;
  std::vector<std::int16_t>& scaled = impl_->codes;
  try {
    const std::string_view text(impl_->bytes.data(), impl_->bytes.size());
    if (!ParseReals(text, static_cast<std::size_t>(most), reals, impl_->fault)) return FILE_READ_FAILED;
    scaled.resize(std::max(scaled.size(), reals.values.size()));
    if (!ScaleReals(reals, scaled, impl_->fault)) return FILE_READ_FAILED;
    codes.assign(scaled.begin(), scaled.begin() + static_cast<std::ptrdiff_t>(reals.values.size()));
  } catch (const std::bad_alloc&) {
    return impl_->Refuse(TextReason::NoMemory);
  }
  return 0;
}

const TextFault& File32::LastFault() const {
  return impl_->fault;
}

std::int32_t File32::SetClipBoard(Clipboard& clipboard, WaveHandle buffer, std::int32_t start, std::int32_t count) {
  const std::optional<std::span<std::int16_t>> points = PointsOf(buffer, start, count);
  if (!points) return CLIP_ERROR;
  if (points->empty()) return 0;
  if (!clipboard.Available()) return CLIP_OPEN_FAILED;
  try {
    const std::shared_ptr<WaveClip> clip = impl_->FreeClip();
    clip->Assign(*points);
    return clipboard.Offer(clip) ? 0 : CLIP_WRITE_FAILED;
  } catch (const std::bad_alloc&) {
    return CLIP_WRITE_FAILED;
  }
}

std::int32_t File32::GetClipBoard(Clipboard& clipboard, WaveHandle buffer, std::int32_t start, std::int32_t count,
                                  std::int32_t bufferPoints, std::int32_t& placed) {
  if (start < 0 || count < 0 || bufferPoints < start) return CLIP_ERROR;
  const std::optional<std::span<std::int16_t>> room = PointsOf(buffer, start, bufferPoints - start);
  if (!room) return CLIP_ERROR;
  if (!clipboard.Available()) return CLIP_OPEN_FAILED;

  if (clipboard.Has(CLIP_EXACT_FORMAT)) {
    const std::optional<std::span<const std::byte>> bytes = clipboard.Read(CLIP_EXACT_FORMAT);
    const std::optional<std::span<const std::byte>> codes = bytes ? ExactClipCodes(*bytes) : std::nullopt;
    if (codes) {
      const std::size_t points = std::min(codes->size() / 2, room->size());
      LoadCodes(codes->data(), room->first(points));
      placed = static_cast<std::int32_t>(points);
      return 0;
    }
  }
  // Also when the exact form is a later version's, beside which there is always a text.
  for (const char* format : {CLIP_TEXT_FORMAT, CLIP_PLAIN_TEXT_FORMAT}) {
    if (!clipboard.Has(format)) continue;
    const std::optional<std::span<const std::byte>> bytes = clipboard.Read(format);
    if (!bytes) continue;
    try {
      const std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
      if (!ParseClipText(text, W_MAX_POINTS, impl_->codes, impl_->reals)) return CLIP_READ_FAILED;
    } catch (const std::bad_alloc&) {
      return CLIP_READ_FAILED;
    }
    const std::size_t points = std::min(impl_->codes.size(), room->size());
    std::copy_n(impl_->codes.begin(), points, room->begin());
    placed = static_cast<std::int32_t>(points);
    return 0;
  }
  return CLIP_READ_FAILED;
}

} // namespace calder
