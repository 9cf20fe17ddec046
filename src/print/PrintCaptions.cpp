#include "print/PrintCaptions.h"

#include "app/Messages.h"
#include "platform/qt/Captions.h"

#include <QDialog>

namespace calder {
namespace {

constexpr Caption kTexts[] = {
    {"Label_0", "左ﾏｰｼﾞﾝ(&L)", "&Left Margin"},
    {"Label_1", "上ﾏｰｼﾞﾝ(&T)", "&Top Margin"},
    {"Label_2", "下ﾏｰｼﾞﾝ(&B)", "&Bottom Margin"},
    {"Label_3", "mm", "mm"},
    {"Label_4", "mm", "mm"},
    {"Label_5", "mm", "mm"},
    {"Label_Note", "図は用紙の幅いっぱいに印刷されます。", "The picture fills the page's width."},
    {"Btn_Prt_0", "ﾌﾟﾘﾝﾀの設定(&P)...", "&Printer Setup..."},
    {"Btn_Prt_1", "ﾌｫﾝﾄの指定(&F)...", "Select &Font..."},
    {"Btn_Preview", "ﾌﾟﾚﾋﾞｭｰ(&V)...", "Pre&view..."},
    {"Btn_Pdf", "PDF で保存(&D)...", "Save as P&DF..."},
    {"Btn_OK", "OK", "OK"},
    {"Btn_Cancel", "ｷｬﾝｾﾙ", "Cancel"},
};

constexpr Caption kNames[] = {
    {"UD_Margin_0_Up", "左マージンを増やす", "Left margin larger"},
    {"UD_Margin_0_Down", "左マージンを減らす", "Left margin smaller"},
    {"UD_Margin_1_Up", "上マージンを増やす", "Top margin larger"},
    {"UD_Margin_1_Down", "上マージンを減らす", "Top margin smaller"},
    {"UD_Margin_2_Up", "下マージンを増やす", "Bottom margin larger"},
    {"UD_Margin_2_Down", "下マージンを減らす", "Bottom margin smaller"},
    {"Btn_Page_Back", "前のページ", "Previous page"},
    {"Btn_Page_Next", "次のページ", "Next page"},
    {"Preview_Page", "印刷されるページ", "The page that will be printed"},
};

} // namespace

void SetPrintCaptions(QDialog& dialog, const ErrMsg& language) {
  const Captions captions(dialog, language.GetLanguage() == Language::English);
  captions.Title("Orvo Calder - 印刷", "Orvo Calder - Print");
  captions.Texts(kTexts);
  captions.Names(kNames);
}

} // namespace calder
