// Every caption of the main window in both languages, set in one routine.
#pragma once

#include "app/Messages.h"

class QMainWindow;

namespace calder {

void SetMainWindowCaptions(QMainWindow& window, const ErrMsg& language);

} // namespace calder
