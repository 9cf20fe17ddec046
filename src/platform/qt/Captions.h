// The captions of a form in both languages, from tables of (object name, Japanese, English).
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include <span>

class QWidget;

namespace calder {

struct Caption {
  const char* control; // the object's name in the form
  const char* japanese;
  const char* english;
};

// Made for one form and one language, used, thrown away. A row whose control the form lacks is a mistake in the table:
// it is passed over, and a debug build stops there.
class Captions {
public:
  Captions(QWidget& form, bool english);

  void Title(const char* japanese, const char* english) const;
  // What the control shows: the text of a label, a button or an action, the title of a frame or a menu, the tab of a
  // page.
  void Texts(std::span<const Caption> captions) const;
  void Tips(std::span<const Caption> captions) const;
  // What assistive technology calls a control that has no caption of its own.
  void Names(std::span<const Caption> captions) const;

  // For rows with more than a caption.
  [[nodiscard]] QString Pick(const Caption& caption) const;
  // Null: the form has no such object of that kind.
  template <typename Kind>
  [[nodiscard]] Kind* Find(const char* name) const {
    return qobject_cast<Kind*>(objects_.value(QString::fromLatin1(name)));
  }

private:
  QWidget& form_;
  const bool english_;
  QHash<QString, QObject*> objects_; // by name
};

} // namespace calder
