#include "tools/create/CreateCaptions.h"

#include "platform/qt/Captions.h"

#include <QDialog>

namespace calder {
namespace {

constexpr Caption kLabels[] = {
    {"Label_Param_0", "ｵﾌｾｯﾄ(&O)", "DC &Offset"},
    {"Label_Param_1", "ｻｲｽﾞ(&Z)", "Si&ze"},
    {"Label_Param_2", "振幅(&A)", "&Amplitude"},
    {"Label_Param_3", "周期(&P)", "&Period"},
    {"Label_Param_4", "位相(&H)", "P&hase"},
    {"Label_Param_5", "傾斜(&M)", "Sym&metry"},
    {"Label_Param_6", "ﾃﾞｭｰﾃｨ(&R)", "Duty&Ratio"},
    {"Label_Param_7", "遷移(&N)", "Tra&nsition"},
    {"Label_ParamUnit_4", "度", "deg"},
    {"Label_ParamUnit_5", "%", "%"},
    {"Label_ParamUnit_6", "%", "%"},
    {"Label_ParamUnit_7", "%", "%"},
    {"Label_Wave", "波形(&T)", "Func&tion"},
    {"Label_Const", "定数(&C)", "&Constant"},
    {"Label_Expr", "波形関数(&S)", "Expre&ssion"},
    {"Label_Area", "範囲(&X)", "Area(&X)"},
    {"Label_To", "～", "to"},
};

constexpr Caption kFrames[] = {
    {"Frame_Expr", "数式設定", "Compute"},
    {"Frame_Std", "標準波形", "Standard"},
};

constexpr Caption kButtons[] = {
    {"Btn_Comp", "計算実行(&M)", "Co&mpute"},
    {"Opt_effect_0", "有効", "Effect"},
    {"Opt_effect_1", "無効", "No Effect"},
    {"Btn_Confirm", "全ﾍﾟｰｼﾞOK(&K)", "All Page O&K"},
    {"Btn_OK", "ﾍﾟｰｼﾞOK(&G)", "Pa&ge OK"},
    {"Btn_Cancel", "ｷｬﾝｾﾙ", "Cancel"},
    {"Btn_Functions", "関数(&U)", "F&unctions"},
    {"Cmd_Page_0", "|<", "|<"},
    {"Cmd_Page_1", "<", "<"},
    {"Cmd_Page_2", ">", ">"},
    {"Cmd_Page_3", ">|", ">|"},
};

constexpr Caption kActions[] = {
    {"Menu_FileOpen", "開く(&O)...", "&Open..."},
    {"Menu_FileSave", "保存(&S)...", "&Save..."},
    {"Menu_Print", "印刷(&P)...", "&Print..."},
    {"Menu_Clear", "ｸﾘｱ(&P)", "&Page Clear"},
    {"Menu_AllClear", "全ﾍﾟｰｼﾞｸﾘｱ(&A)", "&All Page Clear"},
};

constexpr Caption kTips[] = {
    {"Btn_Confirm", "[有効]に設定した全ページの波形を作成します。",
     "Creates waveforms of all the pages for which [Valid] is set."},
    {"Btn_OK", "このページの波形のみ、作成します。", "Creates the waveform of this page only."},
    {"Text_X_0", "入力した設定範囲に波形を作成します。", "Creates a waveform in the input set range."},
    {"Text_X_1", "入力した設定範囲に波形を作成します。", "Creates a waveform in the input set range."},
    {"Cmd_Page_0", "最初の有効ﾍﾟｰｼﾞ", "First valid page"},
    {"Cmd_Page_1", "前のﾍﾟｰｼﾞ", "Previous page"},
    {"Cmd_Page_2", "次のﾍﾟｰｼﾞ", "Next page"},
    {"Cmd_Page_3", "最後の有効ﾍﾟｰｼﾞ", "Last valid page"},
};

constexpr Caption kNames[] = {
    {"Txt_Page", "ページ番号", "Page number"},
    {"Text_X_1", "範囲の終了", "End of the area"},
    {"PictWave", "プレビュー", "Preview"},
    {"List_Functions", "関数と定数", "Functions and constants"},
};

} // namespace

void SetCreateCaptions(QDialog& dialog, const ErrMsg& language) {
  const Captions captions(dialog, language.GetLanguage() == Language::English);
  captions.Title("Orvo Calder - 波形生成", "Orvo Calder - Waveform Create");
  captions.Texts(kLabels);
  captions.Texts(kFrames);
  captions.Texts(kButtons);
  captions.Texts(kActions);
  captions.Tips(kTips);
  captions.Names(kNames);
}

} // namespace calder
