#include "editor/MainWindowCaptions.h"

#include "platform/qt/Captions.h"
#include "platform/qt/SvgIcon.h"

#include <QAction>
#include <QMainWindow>
#include <QToolButton>

namespace calder {
namespace {

struct ActionCaption {
  Caption caption;
  const char* shortcut;
  const char* icon;
};

constexpr Caption kMenus[] = {
    {"Menu_File", "ﾌｧｲﾙ(&F)", "&File"}, {"Menu_Edit", "編集(&E)", "&Edit"},  {"Menu_Tools", "ﾂｰﾙ(&T)", "&Tools"},
    {"Menu_Set", "設定(&S)", "&Setup"}, {"Menu_MHelp", "ﾍﾙﾌﾟ(&H)", "&Help"},
};

constexpr ActionCaption kActions[] = {
    {{"Menu_FileNew", "新規作成(&N)", "&New"}, "Ctrl+N", nullptr},
    {{"Menu_FileOpen", "開く(&O)...", "&Open..."}, "Ctrl+O", "open"},
    {{"Menu_FileSave", "上書き保存(&S)", "&Save"}, "Ctrl+S", "save"},
    {{"Menu_FileSaveAs", "保存(独自形式)(&A)...", "Save &As(WDB)..."}, "Ctrl+A", nullptr},
    {{"Menu_FileSaveAs2", "保存(ﾃｷｽﾄ形式)(&T)...", "Save As(&TXT)..."}, "Ctrl+T", nullptr},
    {{"Menu_FileImport", "ｲﾝﾎﾟｰﾄ(&I)...", "Import(&I)..."}, "Ctrl+I", nullptr},
    {{"Menu_Print", "印刷(&P)...", "&Print..."}, "Ctrl+P", nullptr},
    {{"Menu_Exit", "終了(&X)", "&Exit"}, nullptr, nullptr},
    {{"Menu_Undo", "元に戻す(&U)", "&Undo"}, "Ctrl+U", "undo"},
    {{"Menu_Cut", "切り取り(&T)", "Cu&t"}, "Ctrl+X", "cut"},
    {{"Menu_Copy", "ｺﾋﾟｰ(&C)", "&Copy"}, "Ctrl+C", "copy"},
    {{"Menu_Paste", "貼り付け(&P)", "&Paste"}, "Ctrl+V", "paste"},
    {{"Menu_Delete", "削除(&D)", "&Delete"}, "Ctrl+D", "delete"},
    {{"Menu_Create", "波形生成(&C)...", "Wave &Create..."}, nullptr, "create"},
    {{"Menu_Compress", "圧縮/伸張(&P)...", "Com&press/Decompress"}, nullptr, "elastic"},
    {{"Menu_Spline", "補間編集(&I)...", "&Interpolate..."}, nullptr, "spline"},
    {{"Menu_Compute", "波形間演算(&O)...", "&Operate..."}, nullptr, "calc"},
    {{"Menu_Pwf", "PWF(&W)...", "P&WF"}, nullptr, "pwf"},
    {{"Menu_System", "ｼｽﾃﾑ設定(&S)...", "&Setup..."}, nullptr, nullptr},
    {{"Menu_Grid", "ｸﾞﾘｯﾄﾞ表示(&G)", "Show &Grid"}, nullptr, "grid"},
    {{"Menu_Version", "ﾊﾞｰｼﾞｮﾝ情報(&A)", "&About"}, nullptr, nullptr},
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

// Tool buttons that stand for a menu entry.
struct ToolOfMenu {
  const char* button;
  const char* action;
};

constexpr ToolOfMenu kTools[] = {
    {"Tool_Open", "Menu_FileOpen"}, {"Tool_Save", "Menu_FileSave"}, {"Tool_Undo", "Menu_Undo"},
    {"Tool_Cut", "Menu_Cut"},       {"Tool_Copy", "Menu_Copy"},     {"Tool_Paste", "Menu_Paste"},
    {"Tool_Delete", "Menu_Delete"}, {"Tool_Grid", "Menu_Grid"},
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
  captions.Names(kBoxNames);
  for (const ActionCaption& row : kActions) {
    auto* action = captions.Find<QAction>(row.caption.control);
    if (row.shortcut != nullptr) action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
    SetActionText(*action, captions.Pick(row.caption));
    if (row.icon != nullptr && action->isVisible() && action->icon().isNull()) action->setIcon(IconNamed(row.icon));
    action->setIconVisibleInMenu(false);
  }
  for (const IconButton& row : kIconButtons) {
    auto* button = captions.Find<QToolButton>(row.caption.control);
    if (!button->isHidden() && button->icon().isNull()) button->setIcon(IconNamed(row.icon)); // the rest is not offered
    button->setToolTip(captions.Pick(row.caption));
    button->setAccessibleName(captions.Pick(row.caption));
  }
  for (const ToolOfMenu& tool : kTools) {
    auto* button = captions.Find<QToolButton>(tool.button);
    auto* action = captions.Find<QAction>(tool.action);
    button->setDefaultAction(action);
    button->setAccessibleName(Plain(action->text()));
  }
}

} // namespace calder
