#include "tools/create/PageGenerator.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

std::string ReasonOf(const Evaluator::Fault& fault, Language language) {
  const EvalSentence reason = EvalReasonText(fault);
  return language == Language::English ? reason.english : reason.japanese;
}

ExpressionFault FaultOf(std::int16_t code, const PreparedText& text, const Evaluator::Fault& fault, Language language) {
  if (code == EVAL_SUCCESS) return {};
  ExpressionFault result;
  result.message = code;
  if (code == EVAL_BAD_CONSTANTS) result.message = kMsgBadConstants;
  // Missing memory is no fault of a place in the text.
  if (fault.code == code && code != EVAL_BUFFER && code != EVAL_NO_MEMORY) result.place = text.PlaceOf(fault.position);
  result.reason = ReasonOf(fault, language);
  return result;
}

} // namespace

void PageGenerator::SetTarget(WaveHandle buffer, Placement placement) {
  buffer_ = buffer;
  placement_ = placement;
}

double PageGenerator::StartOf(const CreatePage& page) const {
  return placement_ == Placement::OwnArea ? page.StartX : 0;
}

void PageGenerator::InitRandom(std::int32_t seed) {
  seed_ = seed;
  W_InitRand(seed);
  program_.evaluator.EvalInitRandom(seed);
}

void PageGenerator::ClearArea(const CreatePage& page) const {
  W_ClearMemory(buffer_, StartOf(page), page.EndX - page.StartX);
}

std::int32_t PageGenerator::MakeStandard(const CreatePage& page) const {
  const double start = StartOf(page);
  const double count = page.EndX - page.StartX;
  switch (page.Function) {
  case kFunctionSine: return W_MakeSin(buffer_, start, count, page.Offset, page.Amplitude, page.Period, page.Phase);
  case kFunctionTriangle:
    return W_MakeTriangle(buffer_, start, count, page.Offset, page.Amplitude, page.Period, page.Phase, page.Symmetry);
  case kFunctionSquare:
    return W_MakeSquare(buffer_, start, count, page.Offset, page.Amplitude, page.Period, page.Phase, page.Duty,
                        page.Transition);
  case kFunctionNoise: return W_MakeNoise(buffer_, start, count, page.Offset, page.Amplitude);
  case kFunctionDc: return W_MakeDC(buffer_, start, count, page.Offset);
  default: return W_BAD_VALUE;
  }
}

ExpressionFault PageGenerator::Make_Wave(const CreatePage& page) {
  if (page.Function == kFunctionExpression) {
    if (ExprEnabled) return Evaluate(page);
    ClearArea(page);
  } else if (MakeStandard(page) != W_SUCCESS) {
    ClearArea(page);
  }
  return {};
}

ExpressionFault PageGenerator::EvaluateWith(Evaluator& evaluator, const CreatePage& page) {
  const PreparedText text(page.Constants, page.Expression, program_.units, program_.settings);
  const std::int16_t code = evaluator.EvalArray1(StartOf(page), page.EndX - page.StartX, buffer_, text.Text());
  ExpressionFault fault = FaultOf(code, text, evaluator.LastFault(), program_.language);
  if (code == EVAL_SUCCESS || program_.settings.YUnit == kYCodes) return fault;
  // What the unit puts around the expression may have taken part: "(x" is closed by a parenthesis that is not the
  // user's. The expression alone has the same fault in its own words.
  SystemInfo inCodes = program_.settings;
  inCodes.YUnit = kYCodes;
  const PreparedText alone(page.Constants, page.Expression, program_.units, inCodes);
  double value = 0;
  live_.TakeConstants(evaluator);
  const bool isSame = live_.EvalOneL(alone.Text(), static_cast<std::int32_t>(StartOf(page)), value) == code;
  return isSame ? FaultOf(code, alone, live_.LastFault(), program_.language) : fault;
}

ExpressionFault PageGenerator::Evaluate(const CreatePage& page) {
  return EvaluateWith(program_.evaluator, page);
}

ExpressionFault PageGenerator::EvaluateAside(const CreatePage& page) {
  live_.TakeConstants(program_.evaluator);
  live_.EvalInitRandom(seed_);
  return EvaluateWith(live_, page);
}

ExpressionFault PageGenerator::CheckConstants(const CreatePage& page) {
  for (const double position : {page.StartX, page.EndX}) {
    const auto whole = static_cast<std::int32_t>(std::nearbyint(position));
    const PreparedText text(page.Constants, whole);
    double result = 0;
    if (program_.evaluator.EvalOneL(text.Text(), whole, result) == EVAL_SUCCESS) continue;
    ExpressionFault fault;
    fault.message = kMsgBadConstants;
    fault.place = text.PlaceOf(program_.evaluator.LastFault().position);
    fault.place->box = TextBox::Constants;
    fault.reason = ReasonOf(program_.evaluator.LastFault(), program_.language);
    return fault;
  }
  return {};
}

} // namespace calder
