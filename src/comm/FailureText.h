// What a transfer says of a failed operation, in the user's language.
#pragma once

#include "comm/BackEnd.h"

namespace calder {

class ErrMsg;

// The sentence of an error code, with the hint after it. errorCode: not 0.
[[nodiscard]] std::string FailureText(const ErrMsg& messages, int errorCode, const FailureHint& hint);

// What the user can do; empty for no hint.
[[nodiscard]] std::string HintText(const ErrMsg& messages, const FailureHint& hint);

} // namespace calder
