#include "tools/expression/PreparedText.h"

#include "app/EngValB.h"
#include "platform/AsciiText.h"
#include "platform/WaveLimits.h"

#include <algorithm>

namespace calder {
namespace {

// A text that remembers which byte of the user's text each of its bytes comes from.
class Traced {
public:
  Traced() = default;
  explicit Traced(std::string_view text) : text_(text) {
    for (std::size_t i = 0; i <= text.size(); ++i) origins_.push_back(i);
  }

  [[nodiscard]] const std::string& Text() const { return text_; }
  [[nodiscard]] std::size_t Size() const { return text_.size(); }
  [[nodiscard]] char At(std::size_t i) const { return text_[i]; }
  // With one more entry for the end.
  [[nodiscard]] std::vector<std::size_t> TakeOrigins() { return std::move(origins_); }

  void Add(std::string_view text, std::size_t origin) {
    text_ += text;
    origins_.resize(origins_.size() + text.size(), origin);
  }
  void Add(const Traced& other, std::size_t from, std::size_t to) {
    text_.append(other.text_, from, to - from);
    origins_.insert(origins_.end(), other.origins_.begin() + static_cast<std::ptrdiff_t>(from),
                    other.origins_.begin() + static_cast<std::ptrdiff_t>(to));
  }
  // The end of what was added to an empty text stands for that byte.
  void Close(std::size_t origin) { origins_.push_back(origin); }
  [[nodiscard]] std::size_t Origin(std::size_t i) const { return origins_[i]; }
  [[nodiscard]] std::size_t End() const { return origins_.back(); }

private:
  std::string text_;
  std::vector<std::size_t> origins_;
};

bool IsWordCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

Traced InsertX(const Traced& text) {
  const std::string& all = text.Text();
  const std::size_t name = all.find("rnd");
  if (name == std::string::npos) return text;
  const std::size_t open = all.find_first_not_of(' ', name + 3);
  if (open == std::string::npos || all[open] != '(') return text;
  // Nothing after the parenthesis is the evaluator's to complain about.
  const std::size_t at = std::min(all.find_first_not_of(' ', open + 1), all.size());
  Traced result;
  result.Add(text, 0, at);
  result.Add(at < all.size() && all[at] == ')' ? "x" : "x,", text.Origin(at));
  result.Add(text, at, all.size());
  result.Close(text.End());
  return result;
}

std::string XReplacement(const ConvUnit& units, const SystemInfo& settings, std::int32_t axisPoints) {
  const std::string points = std::to_string(axisPoints > 0 ? axisPoints : settings.MemorySize);
  switch (settings.XUnit) {
  case kXSeconds: return "(x*(" + NumberText(settings.Period) + "/" + points + "))";
  case kXUser:
    return "(x*((" + NumberText(units.PointToX(settings.MemorySize)) + "-" + NumberText(units.PointToX(0)) + ")/" +
           points + ")+(" + NumberText(settings.XUserMin) + "))";
  default: return "x";
  }
}

Traced ScaleX(const Traced& text, const ConvUnit& units, const SystemInfo& settings, std::int32_t axisPoints) {
  const std::string replacement = XReplacement(units, settings, axisPoints);
  const std::string& all = text.Text();
  const std::size_t first = std::min(all.find_first_not_of(' '), all.size());
  const std::size_t end = std::max(first, all.find_last_not_of(' ') + 1);
  Traced result;
  for (std::size_t i = first; i < end; ++i) {
    const bool alone = (i == first || !IsWordCharacter(all[i - 1])) && (i + 1 == end || !IsWordCharacter(all[i + 1]));
    if (all[i] == 'x' && alone)
      result.Add(replacement, text.Origin(i));
    else
      result.Add(text, i, i + 1);
  }
  result.Close(text.Origin(end));
  return result;
}

Traced ScaleY(const Traced& text, const ConvUnit& units) {
  const std::string high = NumberText(units.CodeToY(W_CODE_MAX));
  const std::string low = NumberText(units.CodeToY(-W_CODE_MAX));
  Traced result;
  result.Add("((", text.Origin(0));
  result.Add(text, 0, text.Size());
  result.Add(")-((" + high + "+" + low + ")/2))*(65534/(" + high + "-" + low + "))", text.End());
  result.Close(text.End());
  return result;
}

} // namespace

std::string Insert_x(std::string_view text) {
  return InsertX(Traced(text)).Text();
}

std::string ScaleXText(std::string_view text, const ConvUnit& units, const SystemInfo& settings,
                       std::int32_t axisPoints) {
  return ScaleX(Traced(text), units, settings, axisPoints).Text();
}

std::string ScaleYText(std::string_view text, const ConvUnit& units) {
  return ScaleY(Traced(text), units).Text();
}

PreparedText::PreparedText(std::string_view constants, std::string_view expression, const ConvUnit& units,
                           const SystemInfo& settings, std::int32_t axisPoints) {
  AddConstants(constants);
  Traced text{expression};
  if (settings.YUnit != kYCodes) text = ScaleY(text, units);
  text = InsertX(text);
  // The rewrite of x looks at a text in lower case, so that X is the variable too; bytes stay where they are.
  Traced lower{LowerText(text.Text())};
  lower = ScaleX(lower, units, settings, axisPoints);
  text_ += LowerText(lower.Text());
  for (const std::size_t position : lower.TakeOrigins()) origins_.push_back(text.Origin(position));
}

PreparedText::PreparedText(std::string_view constants, long long number) {
  AddConstants(constants);
  text_ += std::to_string(number);
}

void PreparedText::AddConstants(std::string_view constants) {
  constantsLength_ = constants.size();
  text_ = "[" + LowerText(std::string(constants)) + "]";
  constantsEnd_ = text_.size();
}

TextPlace PreparedText::PlaceOf(std::size_t position) const {
  if (position < constantsEnd_ || origins_.empty())
    return {TextBox::Constants, std::min(position > 0 ? position - 1 : 0, constantsLength_)};
  return {TextBox::Expression, origins_[std::min(position - constantsEnd_, origins_.size() - 1)]};
}

} // namespace calder
