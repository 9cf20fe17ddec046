#include "tools/operate/CalcCaptions.h"

#include "platform/qt/Captions.h"

#include <QDialog>

namespace calder {
namespace {

constexpr Caption kCalcTexts[] = {
    {"Label_Src", "選択領域", "Selected Area"},
    {"Label_Dest", "ｸﾘｯﾌﾟﾎﾞｰﾄﾞ/生成波形", "Clip Board/Created Waveform"},
    {"Label_Result", "演算結果", "Operation Result"},
    {"Label_Comp", "演算子(&P)", "O&perator"},
    {"Btn_Create", "生成波形(&W)", "Created &Waveform"},
    {"Btn_Cut", "ｸﾘｯﾌﾟﾎﾞｰﾄﾞ(&B)", "Clip &Board"},
    {"Btn_Result", "&=", "&="},
    {"Btn_OK", "OK", "OK"},
    {"Btn_Cancel", "ｷｬﾝｾﾙ", "Cancel"},
};

constexpr Caption kCalcTips[] = {
    {"Btn_Result", "演算結果を確定します。", "Takes the new result over."},
    {"Btn_Create", "波形生成で第2の波形を作成します。", "Makes the second waveform with Wave Create."},
    {"Btn_Cut", "クリップボードの波形を第2の波形にします。", "Takes the second waveform from the clipboard."},
};

constexpr Caption kCalcNames[] = {
    {"Picture_Src", "選択領域の波形", "Waveform of the selected area"},
    {"Picture_Dest", "第2の波形", "Second waveform"},
    {"Picture_Result", "演算結果の波形", "Waveform of the result"},
    {"Comb_Comp", "演算子", "Operator"},
    {"Btn_Result", "演算結果", "Operation Result"},
};

} // namespace

void SetCalcCaptions(QDialog& dialog, const ErrMsg& language) {
  const Captions captions(dialog, language.GetLanguage() == Language::English);
  captions.Title("Orvo Calder - 波形間演算", "Orvo Calder - Operate");
  captions.Texts(kCalcTexts);
  captions.Tips(kCalcTips);
  captions.Names(kCalcNames);
}

} // namespace calder
