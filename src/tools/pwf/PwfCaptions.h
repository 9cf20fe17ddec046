// Every caption of the parameter-variable dialog in both languages, set in one routine.
#pragma once

#include "app/Messages.h"

class QDialog;

namespace calder {

void SetPwfCaptions(QDialog& dialog, const ErrMsg& language);

} // namespace calder
