// Every caption of the Create dialog in both languages, set in one routine.
#pragma once

#include "app/Messages.h"

class QDialog;

namespace calder {

void SetCreateCaptions(QDialog& dialog, const ErrMsg& language);

} // namespace calder
