// The look of all windows: one calm dark palette, and the primary font of the language.
#pragma once

class QApplication;

namespace calder {

void ApplyTheme(QApplication& application, bool english);

} // namespace calder
