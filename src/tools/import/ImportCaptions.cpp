#include "tools/import/ImportCaptions.h"

#include "platform/qt/Captions.h"
#include "platform/qt/Text.h"

#include <QDialog>

namespace calder {
namespace {

constexpr Caption kDialogTexts[] = {
    {"Label_Preview", "ファイルの先頭(&F)", "Beginning of the &file"},
    {"Btn_OK", "OK", "OK"},
    {"Btn_Cancel", "ｷｬﾝｾﾙ", "Cancel"},
};

constexpr Caption kReportTexts[] = {
    {"Btn_OK", "OK", "OK"},
};
constexpr Caption kReportNames[] = {
    {"Text_Report", "インポートの報告", "Report of the import"},
};

constexpr Caption kProgressTexts[] = {
    {"Btn_Cancel", "ｷｬﾝｾﾙ", "Cancel"},
};
constexpr Caption kProgressNames[] = {
    {"Bar_Import", "進行状況", "Progress"},
};

} // namespace

void SetImportDialogCaptions(QDialog& dialog, const ErrMsg& language, const std::string& name) {
  Captions(dialog, language.GetLanguage() == Language::English).Texts(kDialogTexts);
  dialog.setWindowTitle(
      Text(std::string(language.Pick("Orvo Calder - インポート: ", "Orvo Calder - Import: ")) + name));
}

void SetImportReportCaptions(QDialog& dialog, const ErrMsg& language) {
  const Captions captions(dialog, language.GetLanguage() == Language::English);
  captions.Title("Orvo Calder - インポートの報告", "Orvo Calder - Report of the Import");
  captions.Texts(kReportTexts);
  captions.Names(kReportNames);
}

void SetImportProgressCaptions(QDialog& dialog, const ErrMsg& language) {
  const Captions captions(dialog, language.GetLanguage() == Language::English);
  captions.Title("Orvo Calder - インポート", "Orvo Calder - Import");
  captions.Texts(kProgressTexts);
  captions.Names(kProgressNames);
}

} // namespace calder
