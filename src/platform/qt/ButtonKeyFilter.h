// Enter presses the button that has the focus, in every window: the toolkit would press a dialog's default button
// instead, and outside a dialog nothing.
#pragma once

#include <QObject>

namespace calder {

// Installed on the application.
class ButtonKeyFilter : public QObject {
public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace calder
