// Alt with a letter is an access key. A drop-down list that has the focus would otherwise take the letter of one that
// no control has for the beginning of an entry, and choose that.
#pragma once

#include <QObject>

namespace calder {

// Installed on the application.
class ComboBoxKeyFilter : public QObject {
public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace calder
