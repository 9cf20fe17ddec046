// Import plug-in for columns of numbers in text, as oscilloscopes and spreadsheets write them.
#include "common/CodeScale.h"
#include "common/Importer.h"
#include "common/MappedFile.h"
#include "csv/CsvCells.h"
#include "csv/CsvLayout.h"
#include "csv/CsvValues.h"

#include <algorithm>
#include <cstdio>
#include <optional>

namespace calder::plugin {
namespace {

constexpr std::string_view kDelimiters = ",;\t ";
constexpr std::string_view kDecimals = ".,";
constexpr int kMostHeaderLines = 1000000;
constexpr double kUneven = 0.01; // of the length: more is said

class CsvImporter final : public Importer {
public:
  CsvImporter(const Editor& editor, const std::string& path) : editor_(editor), file_(editor, path) {
    text_ = file_.Bytes();
    if (text_.starts_with("\xEF\xBB\xBF")) text_.remove_prefix(3);
    if (text_.starts_with("\xFF\xFE") || text_.starts_with("\xFE\xFF"))
      throw Refusal(
          editor_.Pick("UTF-16 のテキストです。UTF-8 で保存してください。", "This is UTF-16 text. Save it as UTF-8."));
    if (text_.substr(0, kSampleBytes).find('\0') != std::string_view::npos)
      throw Refusal(editor_.Pick("テキストファイルではありません。", "This is not a text file."));
    guess_ = GuessLayout(text_, choice_);
  }

  void Describe(std::vector<Option>& options, std::string& preview) override;
  void Set(std::string_view key, int value) override;
  std::int64_t Start(std::int64_t& startOffset) override;
  std::size_t Read(std::span<std::int16_t> codes) override;
  std::string Report() override;

private:
  [[nodiscard]] std::string ColumnTexts() const;
  [[nodiscard]] std::string Preview() const;
  [[nodiscard]] std::string RejectText(const CsvReject& reject) const;

  Editor editor_;
  MappedFile file_;
  std::string_view text_; // without the byte order mark
  CsvChoice choice_;
  CsvGuess guess_;
  RejectedCell rejected_ = RejectedCell::Repeat;
  Scaling scaling_ = Scaling::Automatic;
  CsvValues values_;
  CodeScale scale_;
  std::size_t read_ = 0;
};

// One line a column: its number, and its title where it has one.
std::string CsvImporter::ColumnTexts() const {
  constexpr std::size_t kMostTitle = 40;
  std::string texts;
  for (std::size_t i = 0; i < guess_.titles.size(); ++i) {
    texts += (i == 0 ? "" : "\n") + std::to_string(i + 1);
    if (!guess_.titles[i].empty()) texts += ": " + guess_.titles[i].substr(0, kMostTitle);
  }
  return texts;
}

void CsvImporter::Describe(std::vector<Option>& options, std::string& preview) {
  const CsvLayout& layout = guess_.layout;
  const std::string columns = ColumnTexts();
  const auto choice = [this, &options](const char* key, const char* japanese, const char* english, std::string texts,
                                       std::size_t value) {
    options.push_back({CALDER_OPTION_CHOICE, key, editor_.Pick(japanese, english), std::move(texts), 0, 0,
                       static_cast<double>(value)});
  };
  choice("delimiter", "区切り", "Delimiter",
         editor_.Pick("コンマ\nセミコロン\nタブ\n空白", "Comma\nSemicolon\nTab\nBlanks"),
         kDelimiters.find(layout.delimiter));
  choice("decimal", "小数点", "Decimal sign", editor_.Pick("ピリオド (1.5)\nコンマ (1,5)", "Point (1.5)\nComma (1,5)"),
         kDecimals.find(layout.decimal));
  options.push_back({CALDER_OPTION_NUMBER, "header", editor_.Pick("ヘッダー行数", "Header lines"), "", 0,
                     kMostHeaderLines, static_cast<double>(layout.headerLines)});
  choice("column", "値の列", "Value column", columns, layout.valueColumn);
  choice("time", "時間の列", "Time column", editor_.Pick("なし", "None") + "\n" + columns,
         layout.timeColumn ? *layout.timeColumn + 1 : 0);
  options.push_back(ScalingOption(editor_, scaling_));
  choice("rejected", "数でないセル", "A cell that is no number",
         editor_.Pick("直前の値を繰り返す\n行を除く\n読み込みを中止する",
                      "Repeats the value before it\nLeaves its row out\nRefuses the file"),
         static_cast<std::size_t>(rejected_));
  preview = Preview();
}

// The end of the header and the first rows: the line's number, the value that is taken from it, the line.
std::string CsvImporter::Preview() const {
  constexpr std::size_t kHeader = 5;
  constexpr std::size_t kRows = 9;
  constexpr std::size_t kLineBytes = 160;
  const CsvLayout& layout = guess_.layout;
  const std::size_t from = layout.headerLines - std::min(layout.headerLines, kHeader);
  const char lineEnd = LineEndOf(text_.substr(0, kSampleBytes));
  std::string preview;
  std::string_view left = text_;
  std::string_view line;
  for (std::size_t number = 0; number < layout.headerLines + kRows && TakeLine(left, lineEnd, line); ++number) {
    if (number < from) continue;
    const std::string_view cell = CellAt(line, layout.delimiter, layout.valueColumn);
    double value = 0;
    std::string taken = "?";
    if (number < layout.headerLines || IsBlank(line)) {
      taken = "";
    } else if (ParseCell(cell, layout.decimal, value)) {
      char digits[32] = "";
      static_cast<void>(std::snprintf(digits, sizeof digits, "%.6g", value));
      taken = digits;
    }
    char head[64] = "";
    static_cast<void>(std::snprintf(head, sizeof head, "%4zu %12s | ", number + 1, taken.c_str()));
    preview += head;
    preview += line.substr(0, kLineBytes);
    preview += '\n';
  }
  return preview;
}

void CsvImporter::Set(std::string_view key, int value) {
  const auto place = static_cast<std::size_t>(std::max(value, 0));
  if (key == "delimiter") choice_.delimiter = kDelimiters[std::min(place, kDelimiters.size() - 1)];
  if (key == "decimal") choice_.decimal = kDecimals[std::min(place, kDecimals.size() - 1)];
  if (key == "header") choice_.headerLines = place;
  if (key == "column") choice_.valueColumn = std::min(place, kMostColumns - 1);
  if (key == "time") choice_.timeColumn = place == 0 ? std::nullopt : std::optional(std::min(place, kMostColumns) - 1);
  if (key == "scale") scaling_ = static_cast<Scaling>(std::min(value, 2));
  if (key == "rejected") rejected_ = static_cast<RejectedCell>(std::min(value, 2));
  guess_ = GuessLayout(text_, choice_);
}

std::int64_t CsvImporter::Start(std::int64_t& /*startOffset*/) {
  values_ = ReadValues(text_, guess_.layout, rejected_, [this](double fraction) { editor_.Progress(fraction); });
  if (rejected_ == RejectedCell::Refuse && values_.rejectCount > 0) throw Refusal(RejectText(values_.rejects.front()));
  if (values_.values.empty())
    throw Refusal(editor_.Pick("選ばれた列に数がありません。", "The chosen column holds no number."));
  for (const double value : values_.values) scale_.Note(value);
  scale_.Choose(scaling_);
  return static_cast<std::int64_t>(values_.values.size());
}

std::size_t CsvImporter::Read(std::span<std::int16_t> codes) {
  const std::size_t count = std::min(codes.size(), values_.values.size() - read_);
  for (std::size_t i = 0; i < count; ++i) codes[i] = scale_.Code(values_.values[read_ + i]);
  read_ += count;
  return count;
}

std::string CsvImporter::RejectText(const CsvReject& reject) const {
  const std::string line = std::to_string(reject.line);
  const std::string column = std::to_string(guess_.layout.valueColumn + 1);
  const std::string where = editor_.Pick("行 ", "line ") + line + editor_.Pick("、列 ", ", column ") + column + ": ";
  return where + (reject.cell.empty() ? editor_.Pick("空", "empty") : "\"" + reject.cell + "\"");
}

std::string CsvImporter::Report() {
  std::string report;
  if (values_.rejectCount > 0) {
    report = editor_.Pick("数でないセル: ", "Cells that are no numbers: ") + std::to_string(values_.rejectCount) + "\n";
    for (const CsvReject& reject : values_.rejects) report += RejectText(reject) + "\n";
    const std::int64_t more = values_.rejectCount - static_cast<std::int64_t>(values_.rejects.size());
    if (more > 0) report += editor_.Pick("他に ", "and more: ") + std::to_string(more) + "\n";
  }
  report += LimitedText(editor_, scale_.Limited());
  if (values_.unevenness > kUneven)
    report += editor_.Pick("時間の間隔が一定ではありません。点は等間隔に置かれます。ずれは最大で全長の % : ",
                           "The times are not evenly spaced; the points are. Largest shift in % of the length: ") +
              std::to_string(static_cast<int>(values_.unevenness * 100)) + "\n";
  return report;
}

} // namespace
} // namespace calder::plugin

CALDER_EXPORT_IMPORTER(calder::plugin::CsvImporter, "CSV 表", "CSV table", "csv")
