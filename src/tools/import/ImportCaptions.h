// Every caption of the import's forms in both languages.
#pragma once

#include "app/Messages.h"

#include <string>

class QDialog;

namespace calder {

// name: the plug-in's.
void SetImportDialogCaptions(QDialog& dialog, const ErrMsg& language, const std::string& name);
void SetImportReportCaptions(QDialog& dialog, const ErrMsg& language);
void SetImportProgressCaptions(QDialog& dialog, const ErrMsg& language);

} // namespace calder
