// What an import shows: its settings, its progress, its report.
#pragma once

#include "files/PluginImport.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

class QWidget;

namespace calder {

class ImportProgress;
class clsRegistry;

class ImportWindows final : public QObject, public ImportPort {
  Q_OBJECT

public:
  // What they refer to must outlive this object.
  ImportWindows(clsRegistry& registry, const ErrMsg& messages);
  ~ImportWindows() override;

  void Begin(Running running) override;
  void KeepAlive() override;
  void Finished() override;
  bool AskOptions(const std::string& name, PluginForm& form, const PluginSp::ChangeOption& change,
                  const std::function<void()>& stop) override;
  void ShowReport(const std::string& report) override;

  // Between Begin and Finished no other window gets what the user does.
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void Look();

  clsRegistry& registry_;
  const ErrMsg& messages_;
  Running running_;
  QTimer looks_;
  QElapsedTimer since_;
  QElapsedTimer alive_;
  QPointer<ImportProgress> progress_; // once an import takes longer
};

} // namespace calder
