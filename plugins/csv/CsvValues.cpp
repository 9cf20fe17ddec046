#include "csv/CsvValues.h"

#include "csv/CsvCells.h"

#include <algorithm>
#include <cmath>

namespace calder::plugin {
namespace {

constexpr std::size_t kMostCellBytes = 40;
constexpr std::int64_t kProgressLines = 1 << 16;

// How far the times are from a straight line between the first and the last, of the whole.
double Unevenness(const std::vector<double>& times) {
  if (times.size() < 3) return 0;
  const double span = times.back() - times.front();
  const double step = span / static_cast<double>(times.size() - 1);
  double farthest = 0;
  for (std::size_t i = 0; i < times.size(); ++i)
    farthest = std::max(farthest, std::abs(times[i] - (times.front() + static_cast<double>(i) * step)));
  return span == 0 ? 0 : farthest / std::abs(span);
}

class Reader {
public:
  Reader(const CsvLayout& layout, RejectedCell rejected) : layout_(layout), rejected_(rejected) {}

  // False: the reading ends here.
  [[nodiscard]] bool Take(std::string_view line, std::int64_t number) {
    std::string_view cell;
    std::string_view time;
    FindCells(line, cell, time);
    double value = 0;
    if (!ParseCell(cell, layout_.decimal, value)) return Reject(cell, number);
    Settle();
    values_.values.push_back(value);
    // One cell that is no time makes the others worthless.
    double at = 0;
    if (!hasTimes_) return true;
    hasTimes_ = ParseCell(time, layout_.decimal, at);
    if (hasTimes_) times_.push_back(at);
    return true;
  }

  [[nodiscard]] CsvValues Result() && {
    // Empty cells at the end are where a shorter column ends.
    while (!pending_.empty() && pending_.back().cell.empty()) pending_.pop_back();
    missing_ = 0;
    Settle();
    if (hasTimes_ && times_.size() == values_.values.size()) values_.unevenness = Unevenness(times_);
    return std::move(values_);
  }

private:
  void FindCells(std::string_view line, std::string_view& cell, std::string_view& time) const {
    const std::size_t timeColumn = layout_.timeColumn.value_or(layout_.valueColumn);
    const std::size_t last = std::max(layout_.valueColumn, timeColumn);
    bool first = true;
    std::string_view taken;
    for (std::size_t i = 0; i <= last && TakeCell(line, layout_.delimiter, first, taken); ++i) {
      if (i == layout_.valueColumn) cell = taken;
      if (i == timeColumn) time = taken;
    }
  }

  [[nodiscard]] bool Reject(std::string_view cell, std::int64_t number) {
    ++missing_;
    if (values_.rejects.size() + pending_.size() < kMostRejects) {
      std::size_t length = std::min(cell.size(), kMostCellBytes);
      while (length > 0 && length < cell.size() && (static_cast<unsigned char>(cell[length]) & 0xC0U) == 0x80U)
        --length;
      pending_.push_back({number, std::string(cell.substr(0, length))});
    } else {
      ++uncounted_;
    }
    return rejected_ != RejectedCell::Refuse || cell.empty();
  }

  // The rejected cells before a number get their value.
  void Settle() {
    if (rejected_ == RejectedCell::Repeat && !values_.values.empty())
      values_.values.insert(values_.values.end(), missing_, double{values_.values.back()});
    if (missing_ > 0) hasTimes_ = false;
    missing_ = 0;
    values_.rejectCount += static_cast<std::int64_t>(pending_.size()) + uncounted_;
    uncounted_ = 0;
    std::ranges::move(pending_, std::back_inserter(values_.rejects));
    pending_.clear();
  }

  const CsvLayout& layout_;
  const RejectedCell rejected_;
  CsvValues values_;
  std::vector<double> times_;
  bool hasTimes_ = layout_.timeColumn.has_value();
  std::vector<CsvReject> pending_; // since the last number
  std::size_t missing_ = 0;        // rows since the last number
  std::int64_t uncounted_ = 0;     // of them, beyond those that are kept
};

} // namespace

CsvValues ReadValues(std::string_view text, const CsvLayout& layout, RejectedCell rejected,
                     const std::function<void(double)>& progress) {
  const char lineEnd = LineEndOf(text.substr(0, kSampleBytes));
  const double whole = static_cast<double>(std::max<std::size_t>(text.size(), 1));
  Reader reader(layout, rejected);
  std::string_view line;
  for (std::int64_t number = 1; TakeLine(text, lineEnd, line); ++number) {
    if (number % kProgressLines == 0) progress(1 - static_cast<double>(text.size()) / whole);
    if (static_cast<std::size_t>(number) <= layout.headerLines || IsBlank(line)) continue;
    if (!reader.Take(line, number)) break;
  }
  return std::move(reader).Result();
}

} // namespace calder::plugin
