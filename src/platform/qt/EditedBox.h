// A box whose text counts when it is left. Who needs the text earlier commits the box.
#pragma once

namespace calder {

class EditedBox {
public:
  virtual ~EditedBox() = default;
  // Hands the text over as leaving the box does; the focus stays.
  virtual void Commit() = 0;
};

} // namespace calder
