// Import plug-in for NumPy arrays of one or two dimensions.
#include "common/CodeScale.h"
#include "common/Importer.h"
#include "common/MappedFile.h"
#include "npy/NpyHeader.h"

#include <algorithm>
#include <cmath>

namespace calder::plugin {
namespace {

class NpyImporter final : public Importer {
public:
  NpyImporter(const Editor& editor, const std::string& path);

  void Describe(std::vector<Option>& options, std::string& preview) override;
  void Set(std::string_view key, int value) override;
  std::int64_t Start(std::int64_t& startOffset) override;
  void Seek(std::int32_t startOffset) override { header_.dataOffset = static_cast<std::size_t>(startOffset); }
  std::size_t Read(std::span<std::int16_t> codes) override;
  std::string Report() override;

private:
  [[nodiscard]] bool TwoDimensions() const { return header_.shape.size() == 2; }
  [[nodiscard]] std::uint64_t Lines() const { return header_.shape[byRow_ ? 0 : 1]; }
  // Of the chosen line; a value that is not finite becomes the one before it, 0 at the beginning.
  [[nodiscard]] double Value(std::uint64_t i);

  Editor editor_;
  MappedFile file_;
  NpyHeader header_;
  bool byRow_ = false;     // a row of the array is the waveform; otherwise a column
  std::uint64_t line_ = 0; // which one
  Scaling scaling_ = Scaling::Automatic;
  CodeScale scale_;
  std::uint64_t points_ = 0;
  std::uint64_t read_ = 0;
  double before_ = 0;
  std::vector<std::uint64_t> rejects_; // places of values that are not finite, the first few
  std::uint64_t rejectCount_ = 0;
};

NpyImporter::NpyImporter(const Editor& editor, const std::string& path) : editor_(editor), file_(editor, path) {
  switch (ParseNpyHeader(file_.Bytes(), header_)) {
  case NpyFault::None: break;
  case NpyFault::NotNpy:
    throw Refusal(editor_.Pick("NumPy の配列ファイルではありません。", "This is not a file of a NumPy array."));
  case NpyFault::Version:
    throw Refusal(editor_.Pick("この版の NumPy ファイルは読めません（1 から 3 まで）。",
                               "This version of NumPy files cannot be read (only 1 to 3)."));
  case NpyFault::Header: throw Refusal(editor_.Pick("ヘッダーが壊れています。", "The header is damaged."));
  case NpyFault::Type:
    throw Refusal(editor_.Pick("整数または実数（64 bit まで）の配列だけを読めます。",
                               "Only arrays of whole or real numbers of up to 64 bits can be read."));
  case NpyFault::TooShort:
    throw Refusal(editor_.Pick("ファイルが配列より短いです。", "The file is shorter than its array."));
  }
  if (header_.shape.size() > 2)
    throw Refusal(editor_.Pick("3 次元以上の配列は読めません。", "Arrays of more than two dimensions cannot be read."));
  byRow_ = TwoDimensions() && header_.shape[0] < header_.shape[1];
}

void NpyImporter::Describe(std::vector<Option>& options, std::string& preview) {
  if (TwoDimensions() && header_.count > 0) {
    options.push_back({CALDER_OPTION_CHOICE, "direction", editor_.Pick("波形は", "The waveform is"),
                       editor_.Pick("配列の列\n配列の行", "A column of the array\nA row of the array"), 0, 0,
                       byRow_ ? 1.0 : 0.0});
    constexpr std::uint64_t most = 1000000;
    options.push_back({CALDER_OPTION_NUMBER, "line", editor_.Pick("番号", "Number"), "", 1,
                       static_cast<double>(std::min(Lines(), most)), static_cast<double>(line_ + 1)});
  }
  options.push_back(ScalingOption(editor_, scaling_));
  preview = editor_.Pick("型 ", "type ") + header_.kind + std::to_string(8 * header_.size) +
            editor_.Pick("、形 (", ", shape (");
  for (std::size_t i = 0; i < header_.shape.size(); ++i)
    preview += (i == 0 ? "" : ", ") + std::to_string(header_.shape[i]);
  preview += header_.fortran ? ") Fortran\n" : ")\n";
}

void NpyImporter::Set(std::string_view key, int value) {
  if (key == "direction" && TwoDimensions()) byRow_ = value == 1;
  if (key == "line") line_ = static_cast<std::uint64_t>(std::max(value, 1) - 1);
  if (key == "scale") scaling_ = static_cast<Scaling>(std::clamp(value, 0, 2));
  if (TwoDimensions() && header_.count > 0) line_ = std::min(line_, Lines() - 1);
}

double NpyImporter::Value(std::uint64_t i) {
  std::uint64_t place = i;
  if (TwoDimensions()) {
    const std::uint64_t row = byRow_ ? line_ : i;
    const std::uint64_t column = byRow_ ? i : line_;
    place = header_.fortran ? column * header_.shape[0] + row : row * header_.shape[1] + column;
  }
  const double value = NpyValue(file_.Bytes(), header_, place);
  if (std::isfinite(value)) before_ = value;
  return value;
}

std::int64_t NpyImporter::Start(std::int64_t& startOffset) {
  constexpr std::uint64_t kProgressPoints = 1 << 20;
  constexpr std::size_t kMostRejects = 20000;
  points_ = header_.count == 0 || !TwoDimensions() ? header_.count : header_.shape[byRow_ ? 1 : 0];
  for (std::uint64_t i = 0; i < points_; ++i) {
    if (i % kProgressPoints == 0) editor_.Progress(static_cast<double>(i) / static_cast<double>(points_));
    const double value = Value(i);
    scale_.Note(before_);
    if (std::isfinite(value)) continue;
    ++rejectCount_;
    if (rejects_.size() < kMostRejects) rejects_.push_back(i);
  }
  if (points_ > 0 && rejectCount_ == points_)
    throw Refusal(editor_.Pick("有限な値がありません。", "None of the values is finite."));
  scale_.Choose(scaling_);
  before_ = 0;
  startOffset = static_cast<std::int64_t>(header_.dataOffset);
  return static_cast<std::int64_t>(points_);
}

std::size_t NpyImporter::Read(std::span<std::int16_t> codes) {
  std::size_t count = 0;
  for (; count < codes.size() && read_ < points_; ++count, ++read_) {
    static_cast<void>(Value(read_));
    codes[count] = scale_.Code(before_);
  }
  return count;
}

std::string NpyImporter::Report() {
  std::string report;
  if (rejectCount_ > 0) {
    report = editor_.Pick("有限でない値（直前の値に置き換え）: ",
                          "Values that are not finite, replaced by the one before: ") +
             std::to_string(rejectCount_) + "\n";
    for (const std::uint64_t place : rejects_) report += editor_.Pick("点 ", "point ") + std::to_string(place) + "\n";
  }
  return report + LimitedText(editor_, scale_.Limited());
}

} // namespace
} // namespace calder::plugin

CALDER_EXPORT_IMPORTER(calder::plugin::NpyImporter, "NumPy 配列", "NumPy array", "npy")
