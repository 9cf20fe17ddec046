#include "files/ParseErrorTexts.h"

#include <array>
#include <cstddef>

namespace calder {
namespace {

struct Pair {
  const char* japanese;
  const char* english;
};

// In the order of TextReason.
constexpr std::array<Pair, 10> kReasons{{
    {"", ""},
    {"数値ではありません。", "not a number"},
    {"整数ではありません。", "not a whole number"},
    {"-32768 から 32767 の範囲外です。", "outside -32768 to 32767"},
    {"数値の間に空行があります。", "an empty line between numbers"},
    {"ファイルに数値がありません。", "no number in the file"},
    {"すべての値が 0 か、小さすぎます。", "every value is zero, or too small to be scaled"},
    {"データの入る場所がありません。", "no room for the points"},
    {"ファイルを読み込めません。", "the file cannot be read"},
    {"メモリが不足しています。", "not enough memory"},
}};

} // namespace

const char* ReasonText(TextReason reason, Language language) {
  const Pair& pair = kReasons[static_cast<std::size_t>(reason)];
  return language == Language::English ? pair.english : pair.japanese;
}

} // namespace calder
