#include "setup/SystemCaptions.h"

#include "app/Messages.h"
#include "platform/qt/Captions.h"

#include <QDialog>

namespace calder {
namespace {

constexpr Caption kLabels[] = {
    {"Label_System", "機種(&M)", "&Model"},
    {"Label_Intfc", "ｲﾝﾀﾌｪｰｽ(&I)", "&Interface"},
    {"Label_GPIB_0", "GPIBｱﾄﾞﾚｽ(&G)", "&GPIB Address"},
    {"Label_SerialNo", "ｼﾘｱﾙ番号(&R)", "Se&rial Number"},
    {"Label_MSize", "波形ﾒﾓﾘｻｲｽﾞ(&Z)", "Memory Si&ze"},
    {"Label_GPIB_1", "波形ﾒﾓﾘ番号(&B)", "Memory Num&ber"},
    {"Label_MName", "波形ﾒﾓﾘ名(&N)", "Memory &Name"},
    {"Label_Trns", "転送方式", "Format"},
    {"Label_Output", "出力 ON/OFF", "Output ON/OFF"},
    {"Label_Range", "出力ﾚﾝｼﾞ(&R)", "&Range"},
    {"Label_AmplLim", "振幅範囲", "Amptd range"},
    {"Label_Oscil_0", "周波数(&Q)", "Fre&quency"},
    {"Label_Oscil_1", "周期(&P)", "&Period"},
    {"Label_Oscil_2", "振幅(&A)", "&Amplitude"},
    {"Label_Oscil_3", "DCｵﾌｾｯﾄ(&O)", "DC &Offset"},
    {"Label_OscilUnit_0", "Hz", "Hz"},
    {"Label_OscilUnit_1", "s", "s"},
    {"Label_OscilUnit_3", "V", "V"},
    {"Label_Offs", "DCｵﾌｾｯﾄ ON/OFF(&S)", "DC Off&set ON/OFF"},
    {"Label_Unit_0", "単位(&X)", "&X-Axis Unit"},
    {"Label_Unit_1", "単位(&Y)", "&Y-Axis Unit"},
    {"Label_Unit_Name_0", "名称", "Name"},
    {"Label_Unit_Name_1", "名称", "Name"},
    {"Label_Unit_Range_0", "最小値～最大値", "Min to Max"},
    {"Label_Unit_Range_1", "最小値～最大値", "Min to Max"},
    {"Label_Unit_To_0", "～", "to"},
    {"Label_Unit_To_1", "～", "to"},
};

constexpr Caption kFrames[] = {
    {"Frame_Basic", "[機種設定]", "[Basic Setup]"},
    {"Frame_Memory", "[波形ﾒﾓﾘ設定]", "[Wave Memory Setup]"},
    {"Frame_XUnit", "[X軸単位]", "[X-Axis Unit]"},
    {"Frame_YUnit", "[Y軸単位]", "[Y-Axis Unit]"},
};

constexpr Caption kPages[] = {
    {"Page_System", "ｼｽﾃﾑ設定", "&System"},
    {"Page_Unit", "単位設定", "&Unit"},
    {"Page_Waveform", "波形ﾒﾓﾘ", "&Waveform"},
    {"Page_Oscil", "発振器設定", "&Oscillator"},
};

constexpr Caption kButtons[] = {
    {"Btn_Trans_0", "発振器設定(&L)", "Oscil&lator Setup"},
    {"Btn_Trans_1", "波形ﾃﾞｰﾀ転送 (&W)", "&Transfer Data"},
    {"Btn_Trans_2", "波形ﾃﾞｰﾀ読出 (&R)", "&Read Data"},
    {"Btn_OK", "OK", "OK"},
    {"Btn_Cancel", "ｷｬﾝｾﾙ", "Cancel"},
    {"Opt_Output_0", "ON", "ON"},
    {"Opt_Output_1", "OFF", "OFF"},
    {"Opt_Output_2", "変更しない", "No change"},
    {"Opt_Offs_0", "ON", "ON"},
    {"Opt_Offs_1", "OFF", "OFF"},
};

constexpr Caption kActions[] = {
    {"Menu_FileOpen", "開く(&O)...", "&Open..."},
    {"Menu_FileSave", "保存(&S)...", "&Save..."},
    {"Menu_FilePrint", "印刷(&P)...", "&Print..."},
    {"Menu_LogTraffic", "通信を記録する(&L)", "&Log Traffic"},
    {"Menu_SaveLog", "通信記録を保存(&S)...", "&Save Log..."},
    {"Menu_LastTransfer", "前回の転送(&T)...", "Last &Transfer..."},
};

constexpr Caption kTips[] = {
    {"Btn_Trans_0", "発振器の設定を計測器に送ります。", "Sends the oscillator settings to the instrument."},
    {"Btn_Trans_1", "編集中の波形と設定を計測器に送ります。",
     "Sends the edited waveform and the settings to the instrument."},
    {"Btn_Trans_2", "計測器の波形を編集中の波形に読み出します。", "Reads the instrument's waveform into the editor."},
};

constexpr Caption kNames[] = {
    {"Txt_Unit_1", "X軸の最大値", "Largest X value"},
    {"Txt_Unit_3", "Y軸の最大値", "Largest Y value"},
    {"Txt_GPIB_1", "メモリ番号", "Memory number"},
    {"UD_GPIB_0_Up", "次のアドレス", "Next address"},
    {"UD_GPIB_0_Down", "前のアドレス", "Previous address"},
    {"UD_GPIB_1_Up", "次のメモリ番号", "Next memory number"},
    {"UD_GPIB_1_Down", "前のメモリ番号", "Previous memory number"},
};

// What the kind of the instrument decides.
constexpr Caption kGenerator[] = {
    {"Label_Channel", "ﾁｬﾈﾙ(&C)", "&Channel"},
    {"Frame_Oscil", "[発振器設定]", "[Oscillator Setup]"},
};

constexpr Caption kPowerSource[] = {
    {"Label_Channel", "モード(&M)", "&Mode"},
    {"Frame_Oscil", "[電源設定]", "[Power Setup]"},
};

} // namespace

void SetSystemCaptions(QDialog& dialog, const ErrMsg& language) {
  const Captions captions(dialog, language.GetLanguage() == Language::English);
  captions.Title("Orvo Calder - ｼｽﾃﾑ設定", "Orvo Calder - System Setup");
  captions.Texts(kLabels);
  captions.Texts(kFrames);
  captions.Texts(kButtons);
  captions.Texts(kActions);
  captions.Texts(kPages);
  captions.Tips(kTips);
  captions.Names(kNames);
}

void SetPowerSourceCaptions(QDialog& dialog, const ErrMsg& language, bool powerSource) {
  const Captions captions(dialog, language.GetLanguage() == Language::English);
  captions.Texts(powerSource ? kPowerSource : kGenerator);
}

} // namespace calder
