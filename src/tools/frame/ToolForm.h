// What every tool dialog does alike: it comes up where it was left, takes the text of the box that has the focus before
// anything else happens, and closes once, whatever closes it.
//
// A form derives from it, lays its controls out, calls Place at the end of its constructor and puts what its closing
// does into Closing.
#pragma once

#include <QDialog>
#include <QMenuBar>

#include <functional>
#include <initializer_list>

class QAbstractButton;

namespace calder {

class clsRegistry;

class ToolForm : public QDialog {
  Q_OBJECT

public:
  // formName: the form's name in the session state; it must live as long as the form.
  ToolForm(clsRegistry& registry, const char* formName, QWidget* parent);

Q_SIGNALS:
  // The form's Print entry.
  void PrintWanted();

protected:
  // Where it was left, with that size in logical pixels. The first time: over the middle of its owner, or beside it, as
  // far as the screen allows, for a form whose work is seen in the owner.
  enum class FirstPlace { Middle, Beside };
  void Place(QSize size, FirstPlace first = FirstPlace::Middle);
  // The text of the box that has the focus counts now; the focus stays there.
  virtual void CommitFocus();
  // A press of the button or a choice of the entry: the box that has the focus is committed first.
  void On(QAbstractButton* button, std::function<void()> handler);
  void On(QAction* entry, std::function<void()> handler);
  // A menu of the form's own bar, which `bar` names; made by the first call.
  QMenu* AddMenu(const char* name, const QString& title, std::initializer_list<QAction*> entries);
  // To be called by the derived destructor: controls that go may lose the focus meanwhile, and their signals would
  // reach what is gone already.
  void DisconnectControls();

  // What closing does, before the form is hidden and after the box that has the focus was committed: called once.
  virtual void Closing() {}

  void done(int result) final;
  void showEvent(QShowEvent* event) override;

private:
  void StorePosition();

  clsRegistry& registry_;
  const char* const formName_;
  QMenuBar* bar_ = nullptr;
  bool closing_ = false;
};

} // namespace calder
