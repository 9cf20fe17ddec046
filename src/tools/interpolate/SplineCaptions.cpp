#include "tools/interpolate/SplineCaptions.h"

#include "app/Messages.h"
#include "platform/qt/Captions.h"

#include <QDialog>

namespace calder {
namespace {

constexpr Caption kTexts[] = {
    {"Frame_Spline", "補間実行", "Interpolation"},
    {"Btn_Spline_0", "直線(&L)", "&Linear"},
    {"Btn_Spline_1", "ｽﾌﾟﾗｲﾝ(&S)", "&Spline"},
    {"Btn_Spline_2", "連続ｽﾌﾟﾗｲﾝ(&C)", "&Cont Spline"},
    {"Label_Point", "ﾎﾟｲﾝﾄ", "Point"},
    {"Btn_Insrt", "挿入(&I)", "&Insert"},
    {"Btn_Delete", "削除(&D)", "&Delete"},
    {"Btn_AllClear", "全削除(&E)", "Delete &All"},
    {"Btn_Exit", "終了(&T)", "Exi&t"},
    {"Menu_FileOpen", "開く(&O)...", "&Open..."},
    {"Menu_FileSave", "保存(&S)...", "&Save..."},
    {"Label_Hint", "Ctrl+ｸﾘｯｸで追加、ﾄﾞﾗｯｸﾞで移動、BackSpaceで削除します。",
     "In the picture Ctrl+click adds a point, dragging moves it, Backspace deletes it."},
};

constexpr Caption kTips[] = {
    {"Btn_Spline_0", "制御点を直線で結び、選択範囲に書き込みます。",
     "Joins the points by straight lines over the range."},
    {"Btn_Spline_1", "制御点を通る自然ｽﾌﾟﾗｲﾝを選択範囲に書き込みます。",
     "Writes the natural spline through the points over the range."},
    {"Btn_Spline_2", "両端が滑らかにつながる周期ｽﾌﾟﾗｲﾝを選択範囲に書き込みます。",
     "Writes the periodic spline, whose ends meet smoothly, over the range."},
    {"Btn_Insrt", "選択行と上の行の中間に点を挿入します。",
     "Inserts a point half-way between the selected row and the row above it."},
};

constexpr Caption kNames[] = {
    {"flxSpread", "制御点", "Control points"},
    {"txtVal", "値", "Value"},
};

} // namespace

void SetSplineCaptions(QDialog& dialog, const ErrMsg& language) {
  const Captions captions(dialog, language.GetLanguage() == Language::English);
  captions.Title("Orvo Calder - 補間編集", "Orvo Calder - Interpolate");
  captions.Texts(kTexts);
  captions.Tips(kTips);
  captions.Names(kNames);
}

} // namespace calder
