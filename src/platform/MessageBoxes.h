// The boxes that inform or ask the user. Each waits for the answer.
#pragma once

#include <string>

namespace calder {

enum class BoxButtons { Ok, YesNo };
enum class BoxIcon { None, Information, Question, Critical };
enum class BoxAnswer { Ok, Yes, No };

class MessageBoxes {
public:
  virtual ~MessageBoxes() = default;
  // Texts are UTF-8; CR, LF and CR LF break lines. Closing a Yes/No box without an answer is No.
  virtual BoxAnswer Show(const std::string& title, const std::string& text, BoxButtons buttons, BoxIcon icon) = 0;
  // Asks for a line of text; empty when the user gives none.
  virtual std::string Input(const std::string& title, const std::string& prompt) = 0;
};

} // namespace calder
