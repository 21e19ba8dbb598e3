# zul_warnings: for every target of this project, never for its consumers.
add_library(zul_warnings INTERFACE)
target_compile_options(
  zul_warnings
  INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wdouble-promotion
            $<$<BOOL:${ZUL_WARNINGS_AS_ERRORS}>:-Werror>)

# zul_arithmetic: for code whose arithmetic may trap. A trap is turned into a C++ exception, so the
# compiler must neither assume that arithmetic cannot throw nor move or contract it.
add_library(zul_arithmetic INTERFACE)
target_compile_options(
  zul_arithmetic
  INTERFACE -ffp-contract=off
            $<$<CXX_COMPILER_ID:GNU>:-fnon-call-exceptions>
            $<$<CXX_COMPILER_ID:Clang>:-ffp-exception-behavior=maytrap>)
