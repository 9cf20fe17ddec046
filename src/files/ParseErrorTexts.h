// Why a text file was refused, for people.
#pragma once

#include "app/Messages.h"
#include "libs/file32/TextFault.h"

namespace calder {

// Empty for none.
[[nodiscard]] const char* ReasonText(TextReason reason, Language language);

} // namespace calder
