# Every target of ours links this one: the warnings, the sanitizers, the coverage.
add_library(calder_flags INTERFACE)
target_compile_options(calder_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wcast-qual -Wnon-virtual-dtor
  -Woverloaded-virtual -Wimplicit-fallthrough)
# GCC 12 sees overlaps in string concatenations that are none.
target_compile_options(calder_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(PROJECT_IS_TOP_LEVEL)
  target_compile_options(calder_flags INTERFACE -Werror)
endif()
# Results must not depend on where the compiler may fuse a product and a sum.
target_compile_options(calder_flags INTERFACE -ffp-contract=off)
if(CALDER_SANITIZE)
  target_compile_options(calder_flags INTERFACE
    -fsanitize=${CALDER_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(calder_flags INTERFACE -fsanitize=${CALDER_SANITIZE})
  target_compile_definitions(calder_flags INTERFACE CALDER_SANITIZED)
  # The instrumentation hides from GCC that values are set.
  target_compile_options(calder_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()
if(CALDER_COVERAGE)
  target_compile_options(calder_flags INTERFACE --coverage)
  target_link_options(calder_flags INTERFACE --coverage)
endif()
