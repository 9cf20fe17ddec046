// Every caption of the main window in both languages, set in one routine.
#pragma once

#include "app/Messages.h"

class QAction;
class QMainWindow;
class QString;

namespace calder {

void SetMainWindowCaptions(QMainWindow& window, const ErrMsg& language);

// The entry's text, and its tip: the text without the access key, with the shortcut.
void SetActionText(QAction& action, const QString& text);

} // namespace calder
