#include "tools/pwf/PwfCaptions.h"

#include "platform/qt/Captions.h"

#include <QDialog>
#include <QLineEdit>

namespace calder {
namespace {

constexpr Caption kTexts[] = {
    {"Label_Wave", "波形(&T)", "Func&tion"},
    {"Frame_Param", "[ﾊﾟﾗﾒﾀ設定]", "[Parameter Setting]"},
    {"Label_PrmSel", "可変ﾊﾟﾗﾒﾀ", "Var Prmtr"},
    {"Btn_Formula", "数式(&U)", "Form&ula"},
    {"Label_Formula", "y =", "y ="},
    {"Label_Fixed", "定数", "Constants"},
    {"Label_XMin", "0", "0"},
    {"Label_XMiddle", "X  0.5", "X  0.5"},
    {"Label_XMax", "1", "1"},
    {"Btn_OK", "OK", "OK"},
    {"Btn_Cancel", "ｷｬﾝｾﾙ", "Cancel"},
    {"Menu_FileOpen", "開く(&O)...", "&Open..."},
    {"Menu_FileSave", "保存(&S)...", "&Save..."},
    {"Menu_Print", "印刷(&P)...", "&Print..."},
    {"Menu_Restore", "ﾊﾟﾗﾒﾀを元の値に戻す(&R)", "&Restore Parameter"},
};

constexpr Caption kNames[] = {
    {"Txt_Search", "関数の検索", "Search for a function"},
    {"Comb_Wave", "関数の一覧", "Functions"},
    {"PictWave", "プレビュー", "Preview"},
    {"HScroll1", "可変ﾊﾟﾗﾒﾀの値", "Value of the variable parameter"},
};

constexpr Caption kSearch = {"Txt_Search", "検索", "Search"};

} // namespace

void SetPwfCaptions(QDialog& dialog, const ErrMsg& language) {
  const Captions captions(dialog, language.GetLanguage() == Language::English);
  captions.Title("Orvo Calder - ﾊﾟﾗﾒﾀ可変波形生成", "Orvo Calder - Parameter-variable Waveforms");
  captions.Texts(kTexts);
  captions.Names(kNames);
  captions.Find<QLineEdit>(kSearch.control)->setPlaceholderText(captions.Pick(kSearch));
}

} // namespace calder
