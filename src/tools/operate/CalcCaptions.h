// Every caption of the Operate dialog in both languages, set in one routine.
#pragma once

#include "app/Messages.h"

class QDialog;

namespace calder {

void SetCalcCaptions(QDialog& dialog, const ErrMsg& language);

} // namespace calder
