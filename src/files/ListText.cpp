#include "files/ListText.h"

#include "app/EngValB.h"
#include "app/UnitLists.h"
#include "libs/file32/WaveList.h"
#include "platform/AsciiText.h"
#include "platform/WaveLimits.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace calder {
namespace {

constexpr const char* kLineEnd = "\r\n";
constexpr const char* kRule = "'+++++++++++++++";
constexpr const char* kPageRule = "'----------------";
constexpr double kCodeMax = W_CODE_MAX;
constexpr double kCodeSpan = W_CODE_SPAN;

// How values of a file stand for points or codes of the program.
class Scale {
public:
  // low and high are the file's values at 0 and at `steps`.
  Scale(double low, double high, double steps) : low_(low), span_(high - low), steps_(steps) {
    // The file has 15 digits of each value; what lies so near to a whole number was one.
    constexpr double digits = 1e-14;
    constexpr double mostTolerance = 0.25;
    tolerance_ = std::min(mostTolerance, digits * std::max(std::fabs(low), std::fabs(high)) / span_ * steps);
  }

  [[nodiscard]] double Position(double value) const { return Whole((value - low_) / span_ * steps_); }
  [[nodiscard]] double Difference(double value) const { return Whole(value / span_ * steps_); }

private:
  [[nodiscard]] double Whole(double steps) const {
    constexpr double relative = 1e-12;
    const double whole = std::nearbyint(steps);
    return std::fabs(steps - whole) <= tolerance_ + relative * std::fabs(whole) ? whole : steps;
  }

  double low_;
  double span_;
  double steps_;
  double tolerance_ = 0;
};

std::string TextLine(const std::string& text) {
  if (text.empty()) return std::string(kNoListText);
  // An expression that reads "None" would come back empty; names mean the same in small letters.
  return text == kNoListText ? "none" : text;
}

// Cut before it is decoded: a file may have any length. No character takes more than two bytes.
std::string DecodeText(const std::string& bytes, std::size_t limit, CodePage codePage) {
  return TrimBlanks(PageText(FromCodePage(std::string_view(bytes).substr(0, 2 * limit), codePage), limit));
}

// A record as a page of the program: what lies outside a box's range is brought into it.
CreatePage ToPage(const WaveListRecord& record, const Scale& x, const Scale& y, bool yIsRange, double size,
                  CodePage codePage) {
  CreatePage page;
  const auto& [offset, length, amplitude, period, phase, symmetry, duty, transition] = record.Values;
  static_cast<void>(length); // the area says it
  page.PageNo = record.PageNo;
  page.Visited = kPageTrue;
  page.Valid = kPageTrue;
  page.Function = record.Function;
  const double start = std::clamp(x.Position(record.StartX), 0.0, size);
  page.SetArea(start, std::clamp(x.Position(record.EndX), start, size));
  page.Offset = offset;
  // Without a Y range (0 volts) the file has lost the amplitude.
  if (yIsRange) page.Amplitude = y.Difference(amplitude);
  page.Period = std::max(0.0, period);
  page.Phase = std::fabs(phase) <= 360 ? phase : std::fmod(phase, 360);
  page.Symmetry = std::clamp(symmetry, 0.0, 100.0);
  page.Duty = std::clamp(duty, 0.0, 100.0);
  page.Transition = std::clamp(transition, 0.0, 100.0);
  page.Constants = DecodeText(record.Constants, CreatePage::kConstantsLimit, codePage);
  page.Expression = DecodeText(record.Expression, CreatePage::kExpressionLimit, codePage);
  return page;
}

} // namespace

std::string ListText::ComposeHead() const {
  const auto label = [this](const char* japanese, const char* english) {
    return std::string("'") + (language_ == Language::English ? english : japanese);
  };
  const std::array<std::string, 13> lines{
      kRule,
      label("<単位設定>", "<Unit Setup>"),
      label("[X軸単位]", "[X-Axis Unit]"),
      label("単位", "X-Axis Unit") + "\t" + XUnitListText(settings_.XUnit, language_),
      label("ﾕｰｻﾞ単位名称", "Name") + "\t" + PageText(units_.XUnitName(), settings_.XUserName.size() + 8),
      label("最小値～最大値", "Min to Max") + "\t",
      "'XX\t" + NumberText(units_.PointToX(0)) + "," + NumberText(units_.PointToX(settings_.MemorySize)),
      label("[Y軸単位]", "[Y-Axis Unit]"),
      label("単位", "Y-Axis Unit") + "\t" + YUnitListText(settings_.YUnit, language_),
      label("ﾕｰｻﾞ単位名称", "Name") + "\t" + PageText(units_.YUnitName(), settings_.YUserName.size() + 8),
      label("最小値～最大値", "Min to Max") + "\t",
      "'YY\t" + NumberText(units_.CodeToY(-kCodeMax)) + "," + NumberText(units_.CodeToY(kCodeMax)),
      kRule,
  };
  std::string text;
  for (const std::string& line : lines) text += line + kLineEnd;
  return text;
}

std::string ListText::ComposePage(int number, CreatePage page) const {
  // The memory may have become smaller since the page was made.
  const double size = settings_.MemorySize;
  page.SetArea(std::min(page.StartX, size), std::min(page.EndX, size));
  std::string text;
  const auto line = [&text](const std::string& content) { text += content + kLineEnd; };
  const auto value = [&line](const std::string& content, const std::string& comment) {
    line(content + "\t\t'" + comment);
  };
  line("StartPage");
  value(std::to_string(number), "Page");
  value(std::to_string(page.Function), std::string("Type  ") + PageFunctionName(page.Function, language_));
  value(NumberText(units_.PointToX(page.StartX)), "Start");
  value(NumberText(units_.PointToX(page.EndX)), "End");
  value(NumberText(page.Offset), "Offset");
  value(NumberText(units_.PointToX(page.Size)), "Size");
  value(NumberText(units_.CodeSpanToY(page.Amplitude)), "Ampl");
  value(NumberText(page.Period), "Cycle");
  value(NumberText(page.Phase), "Phase");
  value(NumberText(page.Symmetry), "Symm");
  value(NumberText(page.Duty), "Duty");
  value(NumberText(page.Transition), "Transition");
  value("", "Y=");
  line(TextLine(TrimBlanks(page.Expression)));
  value("", "Const");
  line(TextLine(TrimBlanks(page.Constants)));
  line("EndPage");
  line(kPageRule);
  return text;
}

std::string ListText::Compose(const PageTable& pages) const {
  std::string text = ComposeHead();
  for (int number = PageTable::kFirst; number <= PageTable::kLast; ++number) {
    const CreatePage& page = pages[number];
    if (page.Valid != 0) text += ComposePage(number, page);
  }
  return ToCodePage(text, codePage_);
}

bool ListText::Parse(std::string_view text, PageTable& pages) const {
  const double size = settings_.MemorySize;
  double xMinimum = units_.PointToX(0);
  double xMaximum = units_.PointToX(size);
  double yMinimum = units_.CodeToY(-kCodeMax);
  double yMaximum = units_.CodeToY(kCodeMax);
  WaveListReader reader(text);
  if (reader.ReadWaveListHeader(xMinimum, xMaximum, yMinimum, yMaximum) < 0) return false;
  const bool yIsRange = yMinimum < yMaximum;
  const Scale x(xMinimum, xMaximum, size);
  const Scale y(yMinimum, yIsRange ? yMaximum : yMinimum + 1, kCodeSpan);
  PageTable read;
  WaveListRecord record;
  std::int32_t result = 0;
  bool anyPage = false;
  while ((result = reader.ReadOneWaveList(record)) == 1) {
    if (record.PageNo < 0 || record.PageNo >= PageTable::kPages) break;
    if (record.Function < 0 || record.Function >= kPageFunctions) {
      result = -1;
      break;
    }
    read[record.PageNo] = ToPage(record, x, y, yIsRange, size, codePage_);
    anyPage = true;
  }
  if (result < 0 && !anyPage) return false;
  pages = read;
  return true;
}

} // namespace calder
