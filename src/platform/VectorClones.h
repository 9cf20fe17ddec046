// CALDER_VECTOR before a function with a hot, plain loop: the compiler makes one version for the basic processor and
// one for AVX2, and the right one is chosen when the program starts. Both give the same results, because no product and
// sum are fused (see cmake/Warnings.cmake). Where the tools cannot do that (sanitizers, other compilers) it is nothing.
#pragma once

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(CALDER_SANITIZED) &&                   \
    defined(__OPTIMIZE__)
#define CALDER_VECTOR __attribute__((target_clones("avx2", "default")))
#else
#define CALDER_VECTOR
#endif
