#include "print/Reports.h"

#include "app/EngValB.h"
#include "app/InterfaceKind.h"
#include "app/UnitLists.h"
#include "print/ReportLabels.h"

#include <cstddef>
#include <string_view>

namespace calder {
namespace {

constexpr const char* kTimeMask = ".#############"; // frequency and period
constexpr const char* kValueMask = ".######";

std::string Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string Masked(double value) {
  return Trimmed(FormatEngMask(value, kValueMask));
}

std::string Pair(const std::string& low, const std::string& high) {
  return low + "," + high;
}

// Lines of one report in one language.
class Lines {
public:
  Lines(ReportWriter& writer, Language language) : writer_(writer), language_(language) {}

  void Heading(ReportLabel label) { Separator(ReportText(label, language_)); }
  void Separator(const char* text) { writer_.Print_Heading(writer_.LeftMargin(), writer_.LineHeight(), text); }
  void Data(ReportLabel label, const std::string& value) {
    writer_.Print_Data(writer_.LeftMargin(), writer_.LineHeight(), ReportText(label, language_), value);
  }
  void Constants(ReportLabel label, const std::string& text) {
    writer_.Print_Data_Const(writer_.LeftMargin(), writer_.LineHeight(), ReportText(label, language_), text);
  }
  void Expression(ReportLabel label, const std::string& text) {
    writer_.Print_Data_Expr(writer_.LeftMargin(), writer_.LineHeight(), ReportText(label, language_), text);
  }

private:
  ReportWriter& writer_;
  const Language language_;
};

const char* SwitchText(int output) {
  switch (output) {
  case 0: return "ON";
  case 1: return "OFF";
  default: return "NO CHANGE";
  }
}

void PrintConnection(Lines& lines, const SystemInfo& settings, const SystemReportTexts& texts) {
  lines.Data(ReportLabel::Interface, texts.interface);
  switch (texts.interfaceKind) {
  case kUsb488: lines.Data(ReportLabel::UsbId, std::to_string(settings.Address)); break;
  case kUsbTmc: lines.Data(ReportLabel::SerialNo, texts.serialNumber); break;
  default: lines.Data(ReportLabel::GpibAddress, std::to_string(settings.Address)); break;
  }
}

void PrintOscillator(Lines& lines, const SystemInfo& settings, const SystemReportTexts& texts) {
  lines.Heading(ReportLabel::Oscillator);
  lines.Data(ReportLabel::Channel, texts.channel);
  lines.Data(ReportLabel::Output, SwitchText(settings.Output));
  lines.Data(ReportLabel::Frequency, FormatEngMask(settings.Frequency, kTimeMask) + " Hz");
  lines.Data(ReportLabel::Period, FormatEngMask(settings.Period, kTimeMask) + " sec");
  lines.Data(ReportLabel::Range, texts.range);
  lines.Data(ReportLabel::Amplitude, FormatEngMask(settings.Amplitude, kValueMask) + " " + texts.amplitudeUnit);
  lines.Data(ReportLabel::DcOffset, FormatEngMask(settings.Offset, kValueMask) + " V");
  if (settings.OffsetSwitch != 0) lines.Data(ReportLabel::OffsetOutput, settings.OffsetOn != 0 ? "ON" : "OFF");
}

// An axis as the report names it: the entry of the unit list, the unit's name, its ends.
struct AxisText {
  const char* unit;
  std::string name;
  std::string ends;
};

void PrintUnits(Lines& lines, const AxisText& x, const AxisText& y) {
  lines.Heading(ReportLabel::Unit);
  lines.Heading(ReportLabel::XAxis);
  lines.Data(ReportLabel::XUnit, x.unit);
  lines.Data(ReportLabel::XName, x.name);
  lines.Data(ReportLabel::XMinToMax, x.ends);
  lines.Heading(ReportLabel::YAxis);
  lines.Data(ReportLabel::YUnit, y.unit);
  lines.Data(ReportLabel::YName, y.name);
  lines.Data(ReportLabel::YMinToMax, y.ends);
}

void PrintPage(Lines& lines, int number, const CreatePage& page, const ConvUnit& units, Language language) {
  lines.Data(ReportLabel::Page, std::to_string(number));
  lines.Data(ReportLabel::Function, PageFunctionName(page.Function, language));
  lines.Data(ReportLabel::StartX, Trimmed(units.PointToXTextWide(page.StartX)));
  lines.Data(ReportLabel::EndX, Trimmed(units.PointToXTextWide(page.EndX)));
  lines.Data(ReportLabel::Offset, Trimmed(units.CodeToYText(page.Offset)));
  lines.Data(ReportLabel::Size, Trimmed(units.PointToXText(page.Size)));
  lines.Data(ReportLabel::PageAmplitude, Trimmed(units.CodeSpanToYText(page.Amplitude)));
  lines.Data(ReportLabel::PagePeriod, Masked(page.Period));
  lines.Data(ReportLabel::Phase, Masked(page.Phase));
  lines.Data(ReportLabel::Symmetry, Masked(page.Symmetry));
  lines.Data(ReportLabel::Duty, Masked(page.Duty));
  lines.Data(ReportLabel::Transition, Masked(page.Transition));
  lines.Constants(ReportLabel::Constant, Trimmed(page.Constants));
  lines.Expression(ReportLabel::Expression, Trimmed(page.Expression));
}

} // namespace

void Print_System_Setup(ReportWriter& writer, const SystemInfo& settings, const SystemReportTexts& texts,
                        Language language) {
  Lines lines(writer, language);
  lines.Heading(ReportLabel::System);
  lines.Heading(ReportLabel::Basic);
  lines.Data(ReportLabel::Model, texts.model);
  PrintConnection(lines, settings, texts);
  lines.Heading(ReportLabel::WaveMemory);
  lines.Data(ReportLabel::MemoryName, settings.MemoryName);
  lines.Data(ReportLabel::MemoryNumber, std::to_string(settings.MemoryNo));
  lines.Data(ReportLabel::Format, texts.transferFormat);
  lines.Data(ReportLabel::MemorySize, texts.memorySize);
  PrintOscillator(lines, settings, texts);
  PrintUnits(lines,
             {XUnitListText(settings.XUnit, language), settings.XUserName,
              Pair(FormatEngMask(settings.XUserMin, kValueMask), FormatEngMask(settings.XUserMax, kValueMask))},
             {YUnitListText(settings.YUnit, language), settings.YUserName,
              Pair(FormatEngMask(settings.YUserMin, kValueMask), FormatEngMask(settings.YUserMax, kValueMask))});
}

void Print_Create_List(ReportWriter& writer, const PageTable& pages, const SystemInfo& settings, const ConvUnit& units,
                       Language language) {
  Lines lines(writer, language);
  constexpr const char* kUnitSeparator = "+++++++++++++++";
  constexpr const char* kPageSeparator = "---------------";
  lines.Separator(kUnitSeparator);
  PrintUnits(lines,
             {XUnitListText(settings.XUnit, language), units.XUnitName(),
              Pair(Trimmed(units.PointToXTextWide(0)), Trimmed(units.PointToXTextWide(settings.MemorySize)))},
             {YUnitListText(settings.YUnit, language), units.YUnitName(),
              Pair(Trimmed(units.CodeToYText(-W_CODE_MAX)), Trimmed(units.CodeToYText(W_CODE_MAX)))});
  lines.Separator(kUnitSeparator);
  for (int number = PageTable::kFirst; number <= PageTable::kLast; ++number) {
    if (pages[number].Valid == 0) continue;
    lines.Separator(kPageSeparator);
    PrintPage(lines, number, pages[number], units, language);
  }
  lines.Separator(kPageSeparator);
}

void Print_Pwf(ReportWriter& writer, const PwfFunction& function, Language language) {
  writer.Print_Line(ReportText(ReportLabel::PwfParameter, language));
  writer.Print_Line({});
  writer.Print_Line(ReportText(ReportLabel::PwfFunction, language));
  writer.Print_Line(function.FuncName);
  writer.Print_Line({});
  writer.Print_Line(ReportText(ReportLabel::PwfSetting, language));
  int label = static_cast<int>(ReportLabel::Parameter1);
  for (const PwfParam& parameter : function.Parameters()) {
    writer.Print_Line(ReportText(static_cast<ReportLabel>(label++), language),
                      parameter.ParamName + " " + NumberText(parameter.Value));
  }
}

} // namespace calder
