// The sentences that say why a text is refused. "%1" stands for the word at the fault.
#include "libs/eval32/eval32.h"

#include <cstddef>

namespace calder {

namespace {

struct Sentence {
  EvalReason reason;
  std::string_view japanese;
  std::string_view english;
};

constexpr Sentence kEndOfText = {EvalReason::None, "文末", "the end of the text"};

// In the order of the reasons.
constexpr Sentence kSentences[] = {
    {EvalReason::None, "", ""},
    {EvalReason::NoNumber, "%1は数値ではありません", "%1 is no number"},
    {EvalReason::OperatorExpected, "%1の前に演算子が必要です", "an operator expected before %1"},
    {EvalReason::ValueExpected, "%1の前に値が必要です", "a value expected before %1"},
    {EvalReason::CloseExpected, "%1の前に「)」が必要です", "\")\" expected before %1"},
    {EvalReason::ColonExpected, "%1の前に「:」が必要です", "\":\" expected before %1"},
    {EvalReason::ArgumentEndExpected, "%1の前に「,」か「)」が必要です", "\",\" or \")\" expected before %1"},
    {EvalReason::DefinitionEndExpected, "%1の前に「;」か「]」が必要です", "\";\" or \"]\" expected before %1"},
    {EvalReason::ConstantNameExpected, "%1の前に定数名が必要です", "the name of a constant expected before %1"},
    {EvalReason::EqualSignExpected, "%1の前に「=」が必要です", "\"=\" expected before %1"},
    {EvalReason::OpenExpected, "関数%1の後に「(」が必要です", "\"(\" expected after the function %1"},
    {EvalReason::CloseWithoutOpen, "「)」に対応する「(」がありません", "\")\" without \"(\""},
    {EvalReason::OpenWithoutClose, "「(」に対応する「)」がありません", "\"(\" without \")\""},
    {EvalReason::BracketWithoutEnd, "「[」に対応する「]」がありません", "\"[\" without \"]\""},
    {EvalReason::BracketWithoutStart, "「]」に対応する「[」がありません", "\"]\" without \"[\""},
    {EvalReason::ArgumentCount, "関数%1の引数の数が違います", "the number of arguments of %1"},
    {EvalReason::DivisionByZero, "0で除算しています", "division by zero"},
    {EvalReason::UnknownName, "%1という名前はありません", "unknown name %1"},
    {EvalReason::XIsTheVariable, "xは変数なので定数名に使えません", "x is the variable and no constant"},
    {EvalReason::ConstantUsesX, "定数の値にxは使えません", "a constant cannot depend on x"},
    {EvalReason::ComparisonsInARow, "比較は&&でつないでください", "join comparisons with &&"},
    {EvalReason::TooComplex, "入れ子が深すぎるか、演算が多すぎます", "nested too deeply, or too many operations"},
    {EvalReason::RangeOutsideBuffer, "範囲がバッファの中にありません", "the range does not lie in a buffer"},
    {EvalReason::NoMemory, "メモリを確保できません", "no memory"},
    {EvalReason::TextTooLong, "文が長すぎます", "the text is too long"},
    {EvalReason::GroupsTooDeep, "[]の入れ子が深すぎます", "too many groups inside each other"},
    {EvalReason::GroupsTakeTooLong, "[]の繰り返しに時間がかかりすぎます", "the groups take too long"},
    {EvalReason::MaskDigits, "Maskの後には「$」と1～4桁の16進数が必要です",
     "Mask takes \"$\" and 1 to 4 hexadecimal digits"},
    {EvalReason::WordDigits, "「$」の後には1～4桁の16進数が必要です", "a word has 1 to 4 hexadecimal digits"},
    {EvalReason::BraceWithoutEnd, "「{」に対応する「}」がありません", "\"{\" without \"}\""},
    {EvalReason::BraceWithoutStart, "「}」に対応する「{」がありません", "\"}\" without \"{\""},
    {EvalReason::ActExpected, "回数の後にL、H、N、X、$のどれかが必要です", "L, H, N, X or $ expected after the count"},
    {EvalReason::NotInLanguage, "使えない文字です", "no part of the language"},
    {EvalReason::CountTooLarge, "回数が大きすぎます", "the count is too large"},
    {EvalReason::NoCount, "回数が負か、大きすぎるか、数値ではありません",
     "the count is negative, too large or no number"},
};

constexpr bool IsInOrder() {
  for (std::size_t i = 0; i < std::size(kSentences); ++i)
    if (static_cast<std::size_t>(kSentences[i].reason) != i) return false;
  return std::size(kSentences) == static_cast<std::size_t>(EvalReason::Count);
}
static_assert(IsInOrder());

std::string Filled(std::string_view sentence, const std::string& word) {
  constexpr std::string_view mark = "%1";
  std::string filled(sentence);
  if (const std::size_t at = filled.find(mark); at != std::string::npos) filled.replace(at, mark.size(), word);
  return filled;
}

} // namespace

EvalSentence EvalReasonText(const EvalFault& fault) {
  const Sentence& sentence = kSentences[static_cast<std::size_t>(fault.reason)];
  const bool isEnd = fault.word.empty();
  return {Filled(sentence.japanese, isEnd ? std::string(kEndOfText.japanese) : "「" + fault.word + "」"),
          Filled(sentence.english, isEnd ? std::string(kEndOfText.english) : "\"" + fault.word + "\"")};
}

} // namespace calder
