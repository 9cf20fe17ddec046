#include "tools/pwf/PwfDefinitions.h"

#include "files/SettingsBlock.h"
#include "libs/file32/TextLines.h"
#include "platform/WholeText.h"
#include "tools/pwf/PwfScroll.h"

#include <optional>
#include <utility>

namespace calder {
namespace {

constexpr int kHeaderItems = 3;
constexpr std::size_t kFields = 5;
constexpr std::size_t kParamItems = 5;

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (std::size_t end = 0; end != std::string_view::npos;) {
    end = text.find(separator);
    parts.push_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return parts;
}

// One definition line; the reason and the word of the fault when it is none.
class DefinitionLine {
public:
  DefinitionLine(std::string_view line, CodePage page) : line_(line), page_(page) {}

  [[nodiscard]] std::optional<PwfFunction> Read() {
    const std::vector<std::string_view> fields = Split(line_, '"');
    if (fields.size() != kFields) return Refuse(PwfFaultReason::FieldCount);
    PwfFunction function;
    function.FuncName = FromCodePage(fields[0], page_);
    function.FixedConstants = FromCodePage(fields[2], page_);
    function.Formula = FromCodePage(fields[3], page_);
    const auto number = ToNumber<std::int16_t>(Trimmed(fields[4]));
    if (!number) return Refuse(PwfFaultReason::NoNumber, fields[4]);
    function.FuncNo = *number;
    const std::vector<std::string_view> items = Split(fields[1], '|');
    if (items.size() % kParamItems != 0 || items.size() > kParamItems * PwfTable::kMaxParams)
      return Refuse(PwfFaultReason::ParamItems);
    function.ParamCount = static_cast<std::int16_t>(items.size() / kParamItems);
    for (std::size_t j = 0; j < items.size() / kParamItems; ++j) {
      if (!ReadParam(std::span(items).subspan(j * kParamItems, kParamItems), function.Params[j])) return std::nullopt;
    }
    return function;
  }

  PwfFaultReason reason = PwfFaultReason::FieldCount;
  std::string word;

private:
  std::optional<PwfFunction> Refuse(PwfFaultReason why, std::string_view about = {}) {
    reason = why;
    word = FromCodePage(about, page_);
    return std::nullopt;
  }

  bool ReadParam(std::span<const std::string_view> items, PwfParam& param) {
    double* const numbers[] = {&param.MinValue, &param.MaxValue, &param.Resolution, &param.Value};
    for (std::size_t i = 0; i < std::size(numbers); ++i) {
      if (!ParseReal(Trimmed(items[i + 1]), *numbers[i]))
        return Refuse(PwfFaultReason::NoNumber, items[i + 1]).has_value();
    }
    param.ParamName = FromCodePage(items[0], page_);
    param.FileValue = param.Value;
    std::optional<PwfFaultReason> why;
    if (!(param.Resolution > 0)) {
      why = PwfFaultReason::NoStep;
    } else if (!(param.MinValue < param.MaxValue)) {
      why = PwfFaultReason::EmptyRange;
    } else if (param.Value < param.MinValue || param.Value > param.MaxValue) {
      why = PwfFaultReason::ValueOutside;
    } else if (!ScrollRangeOf(param).IsUsable()) {
      why = PwfFaultReason::StepsOutside;
    }
    if (why) Refuse(*why, items[0]);
    return !why;
  }

  std::string_view line_;
  CodePage page_;
};

} // namespace

PwfReading Read_Fnc(std::string_view text, Language language, PwfTable& table) {
  PwfReading reading;
  bool isHeader = true;
  int headerItems = 0;
  int next = 0;
  int number = 0;
  std::string_view comment;
  text = WithoutByteOrderMark(text);
  while (!text.empty()) {
    const std::string_view line = text.substr(0, LineLength(text));
    text.remove_prefix(line.size());
    text.remove_prefix(LineEndLength(text));
    ++number;
    if (line.starts_with('\'')) comment = line.substr(1);
    if (line.empty() || line.starts_with('\'')) continue;
    if (isHeader) {
      if (line.starts_with("PWF ") || line.starts_with("VER=") || line.starts_with("NUM=")) ++headerItems;
      if (line != "[definition]") continue;
      isHeader = false;
      comment = {};
      if (headerItems >= kHeaderItems) continue;
      reading.faults.push_back({number, PwfFaultReason::ShortHeader, {}});
      return reading;
    }
    if (next == PwfTable::kFunctions) {
      reading.faults.push_back({number, PwfFaultReason::TooManyFunctions, {}});
      break;
    }
    DefinitionLine definition(line, PageOf(language));
    const std::optional<PwfFunction> function = definition.Read();
    if (!function) reading.faults.push_back({number, definition.reason, definition.word});
    table[next] = function.value_or(PwfFunction{});
    reading.lines[static_cast<std::size_t>(next)] = number;
    reading.remarks[static_cast<std::size_t>(next)] = FromCodePage(std::exchange(comment, {}), PageOf(language));
    ++next;
  }
  if (isHeader) reading.faults.push_back({0, PwfFaultReason::NoDefinitionLine, {}});
  return reading;
}

std::string PwfFaultText(const PwfFault& fault, const ErrMsg& messages) {
  struct Row {
    PwfFaultReason reason;
    const char* japanese; // % stands for the word
    const char* english;
  };
  using Reason = PwfFaultReason;
  static constexpr Row kSentences[] = {
      {Reason::NoDefinitionLine, "[definition] の行がありません。", "The line [definition] is missing."},
      {Reason::ShortHeader, "この行の前に PWF、VER=、NUM= の 3 行が必要です。",
       "Before this line there have to be the lines PWF, VER= and NUM=."},
      {Reason::TooManyFunctions, "関数は 25 個までです。", "There are at most 25 functions."},
      {Reason::FieldCount, "関数の行には \" が 4 個必要です。", "A function's line has four double quotes."},
      {Reason::ParamItems, "ﾊﾟﾗﾒﾀは 1 ～ 5 個で、それぞれ 名前|最小|最大|分解能|値 です。",
       "There are 1 to 5 parameters, each name|minimum|maximum|resolution|value."},
      {Reason::NoNumber, "\"%\" は数値ではありません。", "\"%\" is no number."},
      {Reason::NoStep, "% の分解能は 0 より大きくしてください。", "The resolution of % is not above 0."},
      {Reason::EmptyRange, "% の最小値は最大値より小さくしてください。", "The minimum of % is not below its maximum."},
      {Reason::ValueOutside, "% の値が範囲外です。", "The value of % is outside its limits."},
      {Reason::StepsOutside, "% の分解能が範囲に合いません。", "The resolution of % does not fit its limits."},
      {Reason::Formula, "%", "%"},
  };
  std::string sentence;
  for (const Row& row : kSentences) {
    if (row.reason == fault.reason) sentence = messages.Pick(row.japanese, row.english);
  }
  if (const std::size_t at = sentence.find('%'); at != std::string::npos) sentence.replace(at, 1, fault.word);
  const std::string file = kPwfDefinitions;
  if (fault.line == 0) return file + ": " + sentence;
  return file + messages.Pick(" の ", ", line ") + std::to_string(fault.line) + messages.Pick(" 行目: ", ": ") +
         sentence;
}

} // namespace calder
