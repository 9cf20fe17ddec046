// Every caption of the Interpolate dialog in both languages, set in one routine.
#pragma once

class QDialog;

namespace calder {

class ErrMsg;

void SetSplineCaptions(QDialog& dialog, const ErrMsg& language);

} // namespace calder
