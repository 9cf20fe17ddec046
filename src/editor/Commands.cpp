#include "editor/Commands.h"

#include "editor/Editor.h"

#include <cstddef>

namespace calder {
namespace {

void OpenFile(Editor& editor) {
  if (editor.fileCommands.Open_File(Kind_Wave)) editor.ShowNewWaveform();
}

void ImportFile(Editor& editor) {
  if (editor.fileCommands.Open_File(Kind_Import)) editor.ShowNewWaveform();
}

void StartCopy(Editor& editor) {
  if (!editor.program.desktop.instances.StartCopy({})) editor.ReportNoCopy();
}

void ToggleGrid(Editor& editor) {
  editor.painter.ShowGrid(!editor.painter.GridShown());
}

using C = Command;
using E = Editor;

// clang-format off
constexpr WindowCommand kCommands[] = {
    {C::FileNew, "Menu_FileNew", "新規作成(&N)", "&New", "Ctrl+N", nullptr, nullptr, StartCopy, {}},
    {C::FileOpen, "Menu_FileOpen", "開く(&O)...", "&Open...", "Ctrl+O", "open", "Tool_Open", OpenFile, {}},
    {C::FileSave, "Menu_FileSave", "上書き保存(&S)", "&Save", "Ctrl+S", "save", "Tool_Save",
     [](E& e) { e.fileCommands.SaveCurrent(); }, Change::Title},
    {C::FileSaveAs, "Menu_FileSaveAs", "保存(独自形式)(&A)...", "Save &As(WDB)...", "Ctrl+A", nullptr, nullptr,
     [](E& e) { e.fileCommands.Save_File(Kind_Wave, false); }, Change::Title},
    {C::FileSaveAs2, "Menu_FileSaveAs2", "保存(ﾃｷｽﾄ形式)(&T)...", "Save As(&TXT)...", "Ctrl+T", nullptr, nullptr,
     [](E& e) { e.fileCommands.Save_File(Kind_Wave, true); }, Change::Title},
    {C::FileImport, "Menu_FileImport", "ｲﾝﾎﾟｰﾄ(&I)...", "Import(&I)...", "Ctrl+I", nullptr, nullptr, ImportFile, {}},
    {C::Print, "Menu_Print", "印刷(&P)...", "&Print...", "Ctrl+P", nullptr, nullptr, nullptr, {}},
    {C::Export, "Menu_Export", "図の書き出し(&U)...", "Export Pict&ure...", nullptr, nullptr, nullptr, nullptr, {}},
    {C::Exit, "Menu_Exit", "終了(&X)", "&Exit", nullptr, nullptr, nullptr, nullptr, {}},
    {C::Undo, "Menu_Undo", "元に戻す(&U)", "&Undo", "Ctrl+U", "undo", "Tool_Undo",
     [](E& e) { e.commands.Undo(); }, kEdited},
    {C::Cut, "Menu_Cut", "切り取り(&T)", "Cu&t", "Ctrl+X", "cut", "Tool_Cut",
     [](E& e) { e.commands.Cut(); }, kEdited},
    {C::Copy, "Menu_Copy", "ｺﾋﾟｰ(&C)", "&Copy", "Ctrl+C", "copy", "Tool_Copy",
     [](E& e) { e.commands.Copy(); }, Change::Commands},
    {C::Paste, "Menu_Paste", "貼り付け(&P)", "&Paste", "Ctrl+V", "paste", "Tool_Paste",
     [](E& e) { e.commands.Paste(); }, kEdited},
    {C::Delete, "Menu_Delete", "削除(&D)", "&Delete", "Ctrl+D", "delete", "Tool_Delete",
     [](E& e) { e.commands.Delete(); }, kEdited},
    {C::Create, "Menu_Create", "波形生成(&C)...", "Wave &Create...", nullptr, "create", nullptr, nullptr, {}},
    {C::Compress, "Menu_Compress", "圧縮/伸張(&P)...", "Com&press/Decompress", nullptr, "elastic", nullptr, nullptr, {}},
    {C::Spline, "Menu_Spline", "補間編集(&I)...", "&Interpolate...", nullptr, "spline", nullptr, nullptr, {}},
    {C::Compute, "Menu_Compute", "波形間演算(&O)...", "&Operate...", nullptr, "calc", nullptr, nullptr, {}},
    {C::Pwf, "Menu_Pwf", "PWF(&W)...", "P&WF", nullptr, "pwf", nullptr, nullptr, {}},
    {C::System, "Menu_System", "ｼｽﾃﾑ設定(&S)...", "&Setup...", nullptr, nullptr, nullptr, nullptr, {}},
    {C::Grid, "Menu_Grid", "ｸﾞﾘｯﾄﾞ表示(&G)", "Show &Grid", nullptr, "grid", "Tool_Grid", ToggleGrid,
     Change::Picture | Change::Commands},
    {C::Version, "Menu_Version", "ﾊﾞｰｼﾞｮﾝ情報(&A)", "&About", nullptr, nullptr, nullptr, nullptr, {}},
};
// clang-format on

} // namespace

std::span<const WindowCommand> WindowCommands() {
  return kCommands;
}

const WindowCommand& CommandRow(Command id) {
  return kCommands[static_cast<std::size_t>(id)];
}

} // namespace calder
