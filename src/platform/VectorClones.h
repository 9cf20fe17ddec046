// CALDER_VECTOR before a function with a hot, plain loop: the compiler makes one version for the basic processor, one
// for AVX2 and one for AVX-512, and the right one is chosen when the program starts. All give the same results, because
// no product and sum are fused (see cmake/Warnings.cmake). CALDER_SHORT_VECTOR is for loops that often run over few
// elements, where the longest vectors cost more than they give. Where the tools cannot do that (sanitizers, other
// compilers) both are nothing.
#pragma once

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(CALDER_SANITIZED) &&                   \
    defined(__OPTIMIZE__)
#define CALDER_VECTOR __attribute__((target_clones("arch=x86-64-v4", "avx2", "default")))
#define CALDER_SHORT_VECTOR __attribute__((target_clones("avx2", "default")))
#else
#define CALDER_VECTOR
#define CALDER_SHORT_VECTOR
#endif
