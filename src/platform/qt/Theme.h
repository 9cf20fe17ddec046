// The look of all windows: one calm dark palette, the primary font of the language, and the toolkit's own texts in it.
#pragma once

class QApplication;

namespace calder {

void ApplyTheme(QApplication& application, bool english);

} // namespace calder
