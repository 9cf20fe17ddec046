#include "tools/expression/ExpressionRun.h"

#include <cmath>

namespace calder {
namespace {

std::string ReasonOf(const Evaluator::Fault& fault, Language language) {
  const EvalSentence reason = EvalReasonText(fault);
  return language == Language::English ? reason.english : reason.japanese;
}

} // namespace

ExpressionFault ExpressionRun::FaultOf(std::int16_t code, const PreparedText& text,
                                       const Evaluator::Fault& fault) const {
  if (code == EVAL_SUCCESS) return {};
  ExpressionFault result;
  result.message = code;
  if (code == EVAL_BAD_CONSTANTS) result.message = kMsgBadConstants;
  // Missing memory is no fault of a place in the text.
  if (fault.code == code && code != EVAL_BUFFER && code != EVAL_NO_MEMORY) result.place = text.PlaceOf(fault.position);
  result.reason = ReasonOf(fault, language_);
  return result;
}

ExpressionFault ExpressionRun::Run(Evaluator& evaluator, const ExpressionTexts& texts, const ExpressionRange& range) {
  const PreparedText text(texts.constants, texts.formula, units_, settings_, range.axisPoints);
  const std::int16_t code = evaluator.EvalArray1(range.start, range.count, range.buffer, text.Text());
  ExpressionFault fault = FaultOf(code, text, evaluator.LastFault());
  if (code == EVAL_SUCCESS || settings_.YUnit == kYCodes) return fault;
  // What the unit puts around the expression may have taken part: "(x" is closed by a parenthesis that is not the
  // user's. The expression alone has the same fault in its own words.
  SystemInfo inCodes = settings_;
  inCodes.YUnit = kYCodes;
  const PreparedText alone(texts.constants, texts.formula, units_, inCodes, range.axisPoints);
  double value = 0;
  aside_.TakeConstants(evaluator);
  const bool isSame = aside_.EvalOneL(alone.Text(), static_cast<std::int32_t>(range.start), value) == code;
  return isSame ? FaultOf(code, alone, aside_.LastFault()) : fault;
}

ExpressionFault ExpressionRun::RunAside(const Evaluator& remembered, std::int32_t seed, const ExpressionTexts& texts,
                                        const ExpressionRange& range) {
  aside_.TakeConstants(remembered);
  aside_.EvalInitRandom(seed);
  return Run(aside_, texts, range);
}

ExpressionFault ExpressionRun::CheckConstants(Evaluator& evaluator, std::string_view constants,
                                              std::initializer_list<double> points) const {
  for (const double position : points) {
    const auto whole = static_cast<std::int32_t>(std::nearbyint(position));
    const PreparedText text(constants, whole);
    double result = 0;
    if (evaluator.EvalOneL(text.Text(), whole, result) == EVAL_SUCCESS) continue;
    ExpressionFault fault;
    fault.message = kMsgBadConstants;
    fault.place = text.PlaceOf(evaluator.LastFault().position);
    fault.place->box = TextBox::Constants;
    fault.reason = ReasonOf(evaluator.LastFault(), language_);
    return fault;
  }
  return {};
}

} // namespace calder
