// The captions of the print dialog.
#pragma once

class QDialog;

namespace calder {

class ErrMsg;

void SetPrintCaptions(QDialog& dialog, const ErrMsg& language);

} // namespace calder
