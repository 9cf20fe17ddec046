// Says what the program is, and what it found on this machine.
#pragma once

#include "print/VersionText.h"

#include <QDialog>

#include <memory>

namespace Ui {
class VersionDialog;
}

namespace calder {

class VersionDialog final : public QDialog {
  Q_OBJECT

public:
  // components: a line each about what the program runs with ("Qt 6.4.2").
  VersionDialog(const VersionText& text, const QStringList& components, const ErrMsg& language, QWidget* parent);
  ~VersionDialog() override;

private:
  std::unique_ptr<Ui::VersionDialog> ui_;
};

} // namespace calder
