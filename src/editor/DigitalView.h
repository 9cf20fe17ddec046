// The controls of the digital view, wired to the editor's lanes and patterns.
#pragma once

#include "editor/Editor.h"

#include <QCursor>
#include <QObject>

namespace Ui {
class MainWindow;
}

namespace calder {

// What a press was made with.
[[nodiscard]] Editor::PressKeys PressKeysOf(Qt::KeyboardModifiers modifiers);

class DigitalView final : public QObject, public TextTarget {
  Q_OBJECT

public:
  // Both must outlive this object.
  DigitalView(Ui::MainWindow& form, Editor& editor);
  ~DigitalView() override;

  // What of the change these controls show.
  void Show(Changes changes);
  void Draw();

  // Txt_Pattern
  [[nodiscard]] std::string SelectedText() const override;
  void ReplaceSelection(const std::string& text) override;

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void ConnectPicture();
  void ConnectPatterns();
  void FillParts();
  void KeyPressed(int key);
  void ShowPointer();
  void ShowFault();
  [[nodiscard]] PicturePoint At(QPoint pixel) const;

  Ui::MainWindow& ui_;
  Editor& editor_;
  QCursor lanePointer_;
  double pointerScale_ = 0; // for which the pointer was drawn
};

} // namespace calder
