// Every caption of the Compress/Decompress dialog in both languages, set in one routine.
#pragma once

#include "app/Messages.h"

class QDialog;

namespace calder {

void SetElasticCaptions(QDialog& dialog, const ErrMsg& language);

} // namespace calder
