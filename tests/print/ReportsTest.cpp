// The reports, line by line.
#include "print/Reports.h"
#include "RecordingPaper.h"
#include "app/InterfaceKind.h"

#include <gmock/gmock.h>

namespace calder {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// The texts of a report on endless paper without the places: "label: value".
template <typename Print>
std::vector<std::string> Lines(Print print) {
  RecordingPaper paper(200, 1e6);
  ReportWriter writer(paper, {});
  print(writer);
  std::vector<std::string> lines;
  std::string last;
  for (const std::string& text : paper.texts) {
    std::istringstream parts(text);
    int page = 0;
    double x = 0;
    double y = 0;
    std::string words;
    parts >> page >> x >> y;
    std::getline(parts, words);
    if (x == 5)
      lines.push_back(words.substr(1));
    else
      lines.back() += ":" + words;
  }
  return lines;
}

TEST(Reports, SystemSetupFollowsTheRecord) {
  SystemInfo settings;
  settings.MemoryName = "ARB1";
  settings.MemoryNo = 3;
  settings.Address = 7;
  settings.Frequency = 12345;
  settings.Period = 1 / 12345.0;
  settings.Amplitude = 1.5;
  settings.Offset = -0.25;
  settings.Output = 2;
  settings.XUnit = kXSeconds;
  settings.XUserName = "m";
  settings.XUserMax = 20;
  SystemReportTexts texts{"XG5530/31", "NI GPIB", kNiGpib, "123", "Array", "512K words", "CH1", "10 Vp-p", "Vp-p"};
  const auto lines = [&] {
    return Lines([&](ReportWriter& writer) { Print_System_Setup(writer, settings, texts, Language::English); });
  };
  EXPECT_THAT(lines(), ElementsAre("<System Setup>", "[Basic Setup]", "Model: XG5530/31", "Interface: NI GPIB",
                                   "GPIB Address: 7", "[Wave Memory Setup]", "Memory Name: ARB1", "Memory Number: 3",
                                   "Format: Array", "Memory Size: 512K words", "[Oscillator Setup]", "Channel: CH1",
                                   "Output ON/OFF: NO CHANGE", "Frequency: 12.345k Hz", "Period: 81.0044552450385u sec",
                                   "Range: 10 Vp-p", "Amplitude: 1.5 Vp-p", "DC Offset: -250m V", "<Unit Setup>",
                                   "[X-Axis Unit]", "X-Axis Unit: Time", "Name: m", "Min to Max: 0.000000,20",
                                   "[Y-Axis Unit]", "Y-Axis Unit: Data", "Name", "Min to Max: -1,1"));
  settings.OffsetSwitch = 1;
  EXPECT_THAT(lines(), Contains("Output ON/OFF: OFF"));
  settings.OffsetOn = 1;
  EXPECT_THAT(lines(), Contains("Output ON/OFF: ON"));
  texts.interfaceKind = kUsb488;
  EXPECT_THAT(lines(), Contains("USB ID: 7"));
  texts.interfaceKind = kUsbTmc;
  EXPECT_THAT(lines(), Contains("Serial No.: 123"));
}

TEST(Reports, CreateListHasTheValidPagesWithAllParameters) {
  SystemInfo settings;
  settings.MemorySize = 1000;
  const ConvUnit units(settings);
  PageTable pages;
  pages[1].Visited = kPageTrue; // not valid
  CreatePage& page = pages[200];
  page.Valid = kPageTrue;
  page.Function = kFunctionExpression;
  page.SetArea(100, 300);
  page.Amplitude = 2000;
  page.Period = 2.5;
  page.Constants = " a=1;b=2 ";
  page.Expression = "sin(x)\r\n*a\r\n*b";
  const auto lines =
      Lines([&](ReportWriter& writer) { Print_Create_List(writer, pages, settings, units, Language::English); });
  EXPECT_THAT(lines,
              ElementsAre("+++++++++++++++", "<Unit Setup>", "[X-Axis Unit]", "X-Axis Unit: Address", "Name: Word",
                          "Min to Max: 0.000000000,1000.000000", "[Y-Axis Unit]", "Y-Axis Unit: Data", "Name",
                          "Min to Max: -32767.0,32767.00", "+++++++++++++++", "---------------", "Page: 200",
                          "Function: Expression", "Start X: 100.0000000", "End X: 300.0000000", "Offset: 0.000000",
                          "Size: 200.0000", "Amplitude: 2000.000", "Period: 2.5", "Phase: 0.000000", "Symmetry: 50",
                          "Duty Ratio: 50", "Transition: 0.000000", "Constant: a=1;b=2", "Y=: sin(x)", ": *a", ": *b",
                          "---------------"));
}

TEST(Reports, PwfNamesTheFunctionAndItsParameters) {
  PwfFunction function;
  function.FuncName = "AM";
  function.ParamCount = 2;
  function.Params[0] = {0, 1, 0.01, 0.123456789, "Depth", 0};
  function.Params[1] = {0, 100, 1, 20, "Cycles", 0};
  RecordingPaper paper(200, 10); // so short that a report with page breaks would break
  ReportWriter writer(paper, {20, 30, 5});
  Print_Pwf(writer, function, Language::Japanese);
  EXPECT_THAT(paper.texts,
              ElementsAre("1 20 30 <PWFﾊﾟﾗﾒﾀ>", "1 20 38 [波形]", "1 20 42 AM", "1 20 50 [ﾊﾟﾗﾒﾀ設定]", "1 20 54 ﾊﾟﾗﾒﾀ1",
                          "1 80 54 Depth 0.123456789", "1 20 58 ﾊﾟﾗﾒﾀ2", "1 80 58 Cycles 20"));
}

TEST(Reports, APageEndsWhereTheNextLineDoesNotFit) {
  RecordingPaper paper(200, 22.5);
  ReportWriter writer(paper, {5, 5, 5}); // room for three lines of 4
  writer.Print_Data_Expr(5, 4, "Y=", "a\r\nb\r\nc\r\nd");
  EXPECT_THAT(paper.texts,
              ElementsAre("1 5 5 Y=", "1 65 5 a", "1 5 9 ", "1 65 9 b", "1 5 13 ", "1 65 13 c", "2 5 5 ", "2 65 5 d"));
}

TEST(Reports, TheWaveformIsTheShownRangeAndTheLanesAreTheWhole) {
  EXPECT_EQ(WavePictureSize(40000).width, 32767);
  EXPECT_EQ(WavePictureSize(40000).height, 25000);
  const WaveHandle wave = W_AllocMemory(40);
  WaveReport report{wave, 40, false, 10, 20, 0, 65534, " 1.0 ", " 0.0", "-1.0", "10", "  30"};
  RecordingPaper paper(24, 100); // 240 pixels: 190 by 150
  Print_Wave(paper, report);
  EXPECT_THAT(paper.picture->calls, Contains("rectangle 1 1 190 150"));
  EXPECT_THAT(paper.picture->calls, Contains(HasSubstr("0,75")));
  EXPECT_THAT(paper.texts,
              ElementsAre("1 0.1 0.1 1.0", "1 0.1 10.9 -1.0", "1 0.1 7.7 0.0", "1 0.1 15.1 10", "1 16.6 15.1 30"));
  report.digital = true;
  Print_Wave(paper, report);
  const std::vector<std::string> lanes = paper.picture->calls;
  EXPECT_THAT(paper.texts, Contains(HasSubstr(" 7.7 ")).Times(1)) << "no middle label";
  report.xStart = 0;
  Print_Wave(paper, report);
  EXPECT_EQ(paper.picture->calls, lanes) << "whatever the view shows";
  W_FreeMemory(wave);
}

} // namespace
} // namespace calder
