#include "tools/elastic/ElasticCaptions.h"

#include "platform/qt/Captions.h"

#include <QDialog>

namespace calder {
namespace {

constexpr Caption kElasticTexts[] = {
    {"Label_Whole", "波形全体", "Whole Waveform"},
    {"Frame_X", "X軸", "X"},
    {"Frame_Y", "Y軸", "Y"},
    {"Label_X_0", "開始点(&S)X=", "&Start X="},
    {"Label_X_1", "終了点(&E)X=", "&End   X="},
    {"Label_XY_0", "　　　   Y=", "        Y="},
    {"Label_XY_1", "　　　   Y=", "        Y="},
    {"Opt_Y_0", "最大/最小(&M)", "&Max/Min"},
    {"Opt_Y_1", "振幅/ｵﾌｾｯﾄ(&O)", "Amp/&Offs"},
    {"Label_Y_0", "最大(&X)", "Ma&x"},
    {"Label_Y_1", "最小(&N)", "Mi&n"},
    {"Label_Y_2", "振幅(&T)", "Ampli&tude"},
    {"Label_Y_3", "DCｵﾌｾｯﾄ(&D)", "&DC Offset"},
    {"Btn_Length", "全体に伸張", "Fit Length"},
    {"Btn_Peak", "最大振幅", "Fit Peak-Peak"},
    {"Btn_Ampl", "ｵﾌｾｯﾄ固定最大振幅", "Fit Amplitude"},
    {"Btn_OK", "OK", "OK"},
    {"Btn_Cancel", "ｷｬﾝｾﾙ", "Cancel"},
};

constexpr Caption kElasticTips[] = {
    {"Opt_Y_0", "入力した最大値,最小値を設定します。", "Sets the input maximum and minimum values."},
    {"Opt_Y_1", "入力した振幅の値,ｵﾌｾｯﾄの値を設定します。", "Sets the input amplitude and offset values."},
    {"Picture_Whole", "両端の線をドラッグできます。", "Drag the lines at both ends of the area."},
};

constexpr Caption kElasticNames[] = {
    {"Picture_Whole", "波形全体", "Whole Waveform"},
};

} // namespace

void SetElasticCaptions(QDialog& dialog, const ErrMsg& language) {
  const Captions captions(dialog, language.GetLanguage() == Language::English);
  captions.Title("Orvo Calder - 圧縮/伸張", "Orvo Calder - Compress/Decompress");
  captions.Texts(kElasticTexts);
  captions.Tips(kElasticTips);
  captions.Names(kElasticNames);
}

} // namespace calder
