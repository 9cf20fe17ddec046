#include "tools/create/PageGenerator.h"

namespace calder {

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
  evaluator_.EvalInitRandom(seed);
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

ExpressionFault PageGenerator::Make_Wave(const CreatePage& page, Expressions expressions) {
  if (page.Function == kFunctionExpression) {
    if (expressions == Expressions::Evaluated) return Evaluate(page);
    ClearArea(page);
  } else if (MakeStandard(page) != W_SUCCESS) {
    ClearArea(page);
  }
  return {};
}

ExpressionRange PageGenerator::RangeOf(const CreatePage& page) const {
  return {buffer_, StartOf(page), page.EndX - page.StartX};
}

ExpressionFault PageGenerator::Evaluate(const CreatePage& page) {
  return run_.Run(evaluator_, {page.Constants, page.Expression}, RangeOf(page));
}

ExpressionFault PageGenerator::EvaluateAside(const CreatePage& page) {
  return run_.RunAside(evaluator_, seed_, {page.Constants, page.Expression}, RangeOf(page));
}

ExpressionFault PageGenerator::CheckConstants(const CreatePage& page) const {
  return run_.CheckConstants(evaluator_, page.Constants, {page.StartX, page.EndX});
}

} // namespace calder
