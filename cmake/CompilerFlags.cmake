# zul_warnings: for every target of this project, never for its consumers.
add_library(zul_warnings INTERFACE)
if(MSVC)
  target_compile_options(zul_warnings INTERFACE /W4 $<$<BOOL:${ZUL_WARNINGS_AS_ERRORS}>:/WX>)
else()
  target_compile_options(
    zul_warnings
    INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wdouble-promotion
              $<$<BOOL:${ZUL_WARNINGS_AS_ERRORS}>:-Werror>)
endif()

# zul_arithmetic: for code whose arithmetic may trap. A trap is turned into a C++ exception, so the
# compiler must neither assume that arithmetic cannot throw nor move or contract it.
add_library(zul_arithmetic INTERFACE)
if(MSVC)
  # Not tested by this project. CMake's own /EHsc has to make way for /EHa, also in the programs that catch.
  string(REPLACE "/EHsc" "/EHa" CMAKE_CXX_FLAGS "${CMAKE_CXX_FLAGS}")
  target_compile_options(zul_arithmetic INTERFACE /EHa /fp:strict)
else()
  target_compile_options(
    zul_arithmetic
    INTERFACE -ffp-contract=off
              $<$<CXX_COMPILER_ID:GNU>:-fnon-call-exceptions>
              $<$<CXX_COMPILER_ID:Clang>:-ffp-exception-behavior=maytrap>)
endif()

if(MINGW)
  # Two builds of the same sources are equal byte for byte.
  add_link_options(LINKER:--no-insert-timestamp)
  # This system aligns stacks to 16 bytes, and some builds of GCC move vectors of four doubles there by instructions
  # that fault unless it is 32 (GCC's bug 54412; that of Debian 12 writes none). The assembler makes sure.
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wa,-muse-unaligned-vector-move>)
  if(ZUL_STATIC_RUNTIME)
    add_link_options(-static)
  endif()
endif()
