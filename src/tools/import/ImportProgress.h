// The small window of an import that takes longer: how far it is, and the button that cancels it.
#pragma once

#include <QDialog>

#include <functional>
#include <memory>

namespace Ui {
class ImportProgress;
}

namespace calder {

class ErrMsg;

class ImportProgress final : public QDialog {
  Q_OBJECT

public:
  ImportProgress(const ErrMsg& messages, std::function<void()> cancel, QWidget* parent);
  ~ImportProgress() override;

  // 0 to 1.
  void ShowFraction(double fraction);

protected:
  void reject() override; // Escape and the title bar cancel too; the import closes the window

private:
  std::function<void()> cancel_;
  std::unique_ptr<Ui::ImportProgress> ui_;
};

} // namespace calder
