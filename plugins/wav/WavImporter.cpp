// Import plug-in for sound files: all that libsndfile reads.
#include "common/CodeScale.h"
#include "common/Importer.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace calder::plugin {
namespace {

constexpr double kCodeMost = 32767;

class WavImporter final : public Importer {
public:
  WavImporter(const Editor& editor, const std::string& path);

  void Describe(std::vector<Option>& options, std::string& preview) override;
  void Set(std::string_view key, int value) override;
  std::int64_t Start(std::int64_t& startOffset) override;
  std::size_t Read(std::span<std::int16_t> codes) override;
  std::string Report() override { return LimitedText(editor_, limited_); }

private:
  enum class Level { File, Peak };

  // The next values of the chosen channel, at most the room; full scale of the file is 1.
  [[nodiscard]] std::size_t ReadChannel(std::span<double> values);
  [[nodiscard]] bool WholeNumbers() const;

  Editor editor_;
  SF_INFO info_{};
  std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file_;
  std::vector<double> frames_; // all channels
  std::size_t channel_ = 0;
  Level level_ = Level::File;
  double factor_ = kCodeMost;
  std::int64_t limited_ = 0;
};

WavImporter::WavImporter(const Editor& editor, const std::string& path)
    : editor_(editor), file_(sf_open(path.c_str(), SFM_READ, &info_), sf_close) {
  if (file_ == nullptr) throw Refusal(sf_strerror(nullptr));
  if (info_.channels < 1 || info_.frames < 0)
    throw Refusal(editor_.Pick("音声データがありません。", "It holds no sound."));
}

// Formats whose samples are whole numbers, of which full scale is one more than the largest.
bool WavImporter::WholeNumbers() const {
  switch (info_.format & SF_FORMAT_SUBMASK) {
  case SF_FORMAT_PCM_S8:
  case SF_FORMAT_PCM_U8:
  case SF_FORMAT_PCM_16:
  case SF_FORMAT_PCM_24:
  case SF_FORMAT_PCM_32: return true;
  default: return false;
  }
}

void WavImporter::Describe(std::vector<Option>& options, std::string& preview) {
  if (info_.channels > 1) {
    std::string channels = "1";
    constexpr int kMostNamed = 512;
    for (int i = 2; i <= std::min(info_.channels, kMostNamed); ++i) channels += "\n" + std::to_string(i);
    options.push_back({CALDER_OPTION_CHOICE, "channel", editor_.Pick("チャネル", "Channel"), channels, 0, 0,
                       static_cast<double>(channel_)});
  }
  options.push_back({CALDER_OPTION_CHOICE, "scale", editor_.Pick("換算", "Scale"),
                     editor_.Pick("ファイルのフルスケールをフルスケールに\n最大値をフルスケールに",
                                  "The file's full scale is full scale\nThe peak becomes full scale"),
                     0, 0, level_ == Level::Peak ? 1.0 : 0.0});
  SF_FORMAT_INFO major{info_.format & SF_FORMAT_TYPEMASK, nullptr, nullptr};
  SF_FORMAT_INFO minor{info_.format & SF_FORMAT_SUBMASK, nullptr, nullptr};
  for (SF_FORMAT_INFO* format : {&major, &minor})
    if (sf_command(nullptr, SFC_GET_FORMAT_INFO, format, sizeof *format) == 0 && format->name != nullptr)
      preview += std::string(format->name) + "\n";
  preview += std::to_string(info_.channels) + editor_.Pick(" チャネル、", " channels, ") +
             std::to_string(info_.samplerate) + editor_.Pick(" Hz、", " Hz, ") + std::to_string(info_.frames) +
             editor_.Pick(" 点\n", " points\n");
}

void WavImporter::Set(std::string_view key, int value) {
  if (key == "channel") channel_ = static_cast<std::size_t>(std::clamp(value, 0, info_.channels - 1));
  if (key == "scale") level_ = value == 1 ? Level::Peak : Level::File;
}

std::size_t WavImporter::ReadChannel(std::span<double> values) {
  const auto channels = static_cast<std::size_t>(info_.channels);
  frames_.resize(values.size() * channels);
  const sf_count_t got = sf_readf_double(file_.get(), frames_.data(), static_cast<sf_count_t>(values.size()));
  const auto count = static_cast<std::size_t>(std::max<sf_count_t>(got, 0));
  for (std::size_t i = 0; i < count; ++i) {
    const double value = frames_[i * channels + channel_];
    values[i] = std::isfinite(value) ? value : 0;
  }
  return count;
}

// Every sample is looked at, for the peak and because a damaged file has fewer than it says.
std::int64_t WavImporter::Start(std::int64_t& /*startOffset*/) {
  constexpr std::size_t kChunk = 4096;
  std::vector<double> values(kChunk);
  double peak = 0;
  std::int64_t points = 0;
  for (std::size_t got = 0; (got = ReadChannel(values)) > 0;) {
    for (std::size_t i = 0; i < got; ++i) peak = std::max(peak, std::abs(values[i]));
    points += static_cast<std::int64_t>(got);
    editor_.Progress(static_cast<double>(points) / static_cast<double>(std::max<sf_count_t>(info_.frames, 1)));
  }
  if (sf_error(file_.get()) != SF_ERR_NO_ERROR) throw Refusal(sf_strerror(file_.get()));
  if (sf_seek(file_.get(), 0, SEEK_SET) < 0) throw Refusal(sf_strerror(file_.get()));
  factor_ = WholeNumbers() ? kCodeMost + 1 : kCodeMost;
  if (level_ == Level::Peak) factor_ = peak > 0 ? kCodeMost / peak : 0;
  return points;
}

std::size_t WavImporter::Read(std::span<std::int16_t> codes) {
  std::vector<double> values(codes.size());
  const std::size_t count = ReadChannel(values);
  for (std::size_t i = 0; i < count; ++i) {
    const double code = std::rint(values[i] * factor_);
    limited_ += code > kCodeMost || code < -kCodeMost - 1 ? 1 : 0;
    codes[i] = static_cast<std::int16_t>(std::clamp(code, -kCodeMost - 1, kCodeMost));
  }
  return count;
}

} // namespace
} // namespace calder::plugin

CALDER_EXPORT_IMPORTER(calder::plugin::WavImporter, "音声 WAV", "Sound WAV", "wav")
