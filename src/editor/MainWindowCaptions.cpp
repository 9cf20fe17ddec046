#include "editor/MainWindowCaptions.h"

#include "editor/Commands.h"
#include "platform/qt/Captions.h"
#include "platform/qt/SvgIcon.h"
#include "tools/frame/ExpressionBox.h"

#include <QAction>
#include <QMainWindow>
#include <QToolButton>

namespace calder {
namespace {

constexpr Caption kMenus[] = {
    {"Menu_File", "ﾌｧｲﾙ(&F)", "&File"}, {"Menu_Edit", "編集(&E)", "&Edit"},  {"Menu_Tools", "ﾂｰﾙ(&T)", "&Tools"},
    {"Menu_Set", "設定(&S)", "&Setup"}, {"Menu_MHelp", "ﾍﾙﾌﾟ(&H)", "&Help"},
};

constexpr Caption kLabels[] = {
    {"Label_Mouse_Point_0", "ﾏｳｽ位置", "Mouse"},
    {"Label_Mouse_Point_1", "ﾏｳｽ位置", "Mouse"},
    {"Label_Zoom_0", "ｽﾞｰﾑ", "Zoom"},
    {"Label_Zoom_1", "ｽﾞｰﾑ", "Zoom"},
    {"Label_Zoom_X_0", "横(&H)", "&Horiz"},
    {"Label_Zoom_X_1", "横(&H)", "&Horiz"},
    {"Label_Zoom_Y", "縦(&V)", "&Vert"},
    {"Label_Scope_AB", "dX(&-)", "dX(&-)"},
    {"Label_MarkA_X", "ﾏｰｶ&A(X)", "Mrk&A(X)"},
    {"Label_MarkA_Y", "   A(Y)", "   A(Y)"},
    {"Label_MarkB_X", "ﾏｰｶ&B(X)", "Mrk&B(X)"},
    {"Label_MarkB_Y", "   B(Y)", "   B(Y)"},
    {"Label_D_Max", "MSB", "MSB"},
    {"Label_D_Min", "LSB", "LSB"},
};

constexpr Caption kButtons[] = {
    {"Opt_Scope_0", "独立(&I)", "&Indep"},
    {"Opt_Scope_1", "連動(&R)", "t&Rack"},
    {"Btn_Pattern_0", "&0", "&0"},
    {"Btn_Pattern_1", "&1", "&1"},
    {"Btn_Pattern_2", "反転(&/)", "Invert(&/)"},
    {"Btn_Pattern_3", "ﾊﾟﾀｰﾝ(&*)", "Pattern(&*)"},
    {"Btn_Parts", "書式", "Parts"},
};

// Buttons that show an icon: their text is the tip and the accessible name.
struct IconButton {
  Caption caption;
  const char* icon;
};

constexpr IconButton kIconButtons[] = {
    {{"Opt_DspSel_0", "波形表示", "Waveform view"}, "wave"},
    {{"Opt_DspSel_1", "ﾃﾞｨｼﾞﾀﾙ表示", "Digital view"}, "digital"},
    {{"Opt_DlgSel_0", "波形生成", "Wave Create"}, "create"},
    {{"Opt_DlgSel_1", "圧縮/伸張", "Compress/Decompress"}, "elastic"},
    {{"Opt_DlgSel_2", "補間編集", "Interpolate"}, "spline"},
    {{"Opt_DlgSel_3", "波形間演算", "Operate"}, "calc"},
    {{"Opt_DlgSel_4", "PWF", "PWF"}, "pwf"},
};

constexpr Caption kTips[] = {
    {"Btn_Pattern_0", "選択ビットを0にする", "Clear the selected bits"},
    {"Btn_Pattern_1", "選択ビットを1にする", "Set the selected bits"},
    {"Btn_Pattern_2", "選択ビットを反転する", "Invert the selected bits"},
    {"Btn_Pattern_3", "パターンを書き込む", "Write the pattern"},
    {"Btn_Parts", "パターンの書式を挿入", "Insert a part of a pattern"},
};

// What assistive technology calls a box that has no caption of its own.
constexpr Caption kBoxNames[] = {
    {"Txt_Cur_X_0", "マウス位置 X", "Mouse position X"},
    {"Txt_Cur_X_1", "マウス位置 X", "Mouse position X"},
    {"Txt_Cur_Y", "マウス位置 Y", "Mouse position Y"},
    {"Txt_Start_Y", "マーカ A Y", "Marker A Y"},
    {"Txt_End_Y", "マーカ B Y", "Marker B Y"},
    {"Txt_Start_X", "マーカ A X", "Marker A X"},
    {"Txt_End_X", "マーカ B X", "Marker B X"},
    {"Txt_Scope", "マーカ間隔", "Distance of the markers"},
    {"Pict_Wave", "波形", "Waveform"},
    {"Pict_Digital", "ディジタルパターン", "Digital pattern"},
    {"Txt_Pattern", "ビットパターン", "Bit pattern"},
};

// The text without the access key: "開く(&O)..." is "開く", "Cu&t" is "Cut".
QString Plain(QString text) {
  const qsizetype bracket = text.indexOf(QStringLiteral("(&"));
  if (bracket >= 0 && text.indexOf(QLatin1Char(')'), bracket) >= 0) {
    text.remove(bracket, text.indexOf(QLatin1Char(')'), bracket) - bracket + 1);
  }
  text.remove(QLatin1Char('&'));
  text.remove(QStringLiteral("..."));
  return text;
}

} // namespace

void SetActionText(QAction& action, const QString& text) {
  action.setText(text);
  const QString keys = action.shortcut().toString(QKeySequence::PortableText);
  action.setToolTip(keys.isEmpty() ? Plain(text) : QStringLiteral("%1 (%2)").arg(Plain(text), keys));
}

void SetMainWindowCaptions(QMainWindow& window, const ErrMsg& language) {
  const Captions captions(window, language.GetLanguage() == Language::English);
  captions.Texts(kMenus);
  captions.Texts(kLabels);
  captions.Texts(kButtons);
  captions.Tips(kTips);
  captions.Names(kBoxNames);
  captions.Find<ExpressionBox>("Txt_Pattern")
      ->setPlaceholderText(captions.Pick({nullptr, "例: Mask $8000 [8H 8L]0", "such as Mask $8000 [8H 8L]0"}));
  for (const WindowCommand& row : WindowCommands()) {
    auto* action = captions.Find<QAction>(row.action);
    if (row.keys != nullptr) action->setShortcut(QKeySequence(QLatin1String(row.keys)));
    SetActionText(*action, captions.Pick({row.action, row.japanese, row.english}));
    if (row.icon != nullptr && action->isVisible() && action->icon().isNull()) action->setIcon(IconNamed(row.icon));
    action->setIconVisibleInMenu(false);
    if (row.button == nullptr) continue;
    auto* button = captions.Find<QToolButton>(row.button);
    button->setDefaultAction(action);
    button->setAccessibleName(Plain(action->text()));
  }
  for (const IconButton& row : kIconButtons) {
    auto* button = captions.Find<QToolButton>(row.caption.control);
    if (!button->isHidden() && button->icon().isNull()) button->setIcon(IconNamed(row.icon)); // the rest is not offered
    button->setToolTip(captions.Pick(row.caption));
    button->setAccessibleName(captions.Pick(row.caption));
  }
}

} // namespace calder
