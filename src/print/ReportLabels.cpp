#include "print/ReportLabels.h"

#include <cstddef>

namespace calder {
namespace {

struct LabelTexts {
  const char* english;
  const char* japanese;
};

// In the order of the enumeration.
constexpr LabelTexts kLabels[] = {
    {"<System Setup>", "<ｼｽﾃﾑ設定>"},
    {"[Basic Setup]", "[機種設定]"},
    {"Model", "機種"},
    {"GPIB Address", "GPIBｱﾄﾞﾚｽ"},
    {"[Wave Memory Setup]", "[波形ﾒﾓﾘ設定]"},
    {"Memory Size", "波形ﾒﾓﾘｻｲｽﾞ"},
    {"Memory Name", "波形ﾒﾓﾘ名"},
    {"Memory Number", "波形ﾒﾓﾘ番号"},
    {"[Oscillator Setup]", "[発振器設定]"},
    {"Channel", "ﾁｬﾈﾙ"},
    {"Output ON/OFF", "出力ON/OFF"},
    {"Frequency", "周波数"},
    {"Period", "周期"},
    {"Range", "電圧ﾚﾝｼﾞ"},
    {"Amplitude", "振幅"},
    {"DC Offset", "ｵﾌｾｯﾄ"},
    {"Output ON/OFF", "ｵﾌｾｯﾄON/OFF"},
    {"<Unit Setup>", "<単位設定>"},
    {"[X-Axis Unit]", "[X軸単位]"},
    {"X-Axis Unit", "単位"},
    {"Name", "ﾕｰｻﾞ単位名称"},
    {"Min to Max", "最小値～最大値"},
    {"[Y-Axis Unit]", "[Y軸単位]"},
    {"Y-Axis Unit", "単位"},
    {"Name", "ﾕｰｻﾞ単位名称"},
    {"Min to Max", "最小値～最大値"},
    {"Interface", "ｲﾝﾀﾌｪｰｽ"},
    {"USB ID", "USB ID"},
    {"Serial No.", "ｼﾘｱﾙ"},
    {"Format", "転送方式"},
    {"Page", "ﾍﾟｰｼﾞ"},
    {"Function", "波形"},
    {"Start X", "開始点"},
    {"End X", "終了点"},
    {"Offset", "ｵﾌｾｯﾄ"},
    {"Size", "ｻｲｽﾞ"},
    {"Amplitude", "振幅"},
    {"Period", "周期"},
    {"Phase", "位相"},
    {"Symmetry", "傾斜"},
    {"Duty Ratio", "ﾃﾞｭｰﾃｨ"},
    {"Constant", "定数"},
    {"Y=", "Y="},
    {"Transition", "遷移"},
    {"<PWF Parameter>", "<PWFﾊﾟﾗﾒﾀ>"},
    {"[Function]", "[波形]"},
    {"[Parameter Setting]", "[ﾊﾟﾗﾒﾀ設定]"},
    {"Parameter1", "ﾊﾟﾗﾒﾀ1"},
    {"Parameter2", "ﾊﾟﾗﾒﾀ2"},
    {"Parameter3", "ﾊﾟﾗﾒﾀ3"},
    {"Parameter4", "ﾊﾟﾗﾒﾀ4"},
    {"Parameter5", "ﾊﾟﾗﾒﾀ5"},
};
static_assert(std::size(kLabels) == static_cast<std::size_t>(ReportLabel::Parameter5) + 1);

} // namespace

const char* ReportText(ReportLabel label, Language language) {
  const LabelTexts& texts = kLabels[static_cast<std::size_t>(label)];
  return language == Language::English ? texts.english : texts.japanese;
}

} // namespace calder
