// The vector math library as the evaluator finds it. Inside the evaluator only.
#pragma once

namespace calder::eval {

// Reads a byte of every page of the library's constants, about 50, so that the pages are mapped. A load whose lanes are
// all masked out does not bring in the page that it names, and on AVX-512 processors costs hundreds of cycles as long
// as the page is not mapped: without this the logarithm of ordinary numbers, which never needs its constant for
// infinity, may take 20 times as long. The system unmaps pages again when it likes, so this belongs before every long
// work.
void MapMathConstants();

} // namespace calder::eval
