#!/usr/bin/env bash
# check_calls.sh OBJECT...: the objects of the library call those functions of the C library's mathematics alone that
# are exact. A square root is an instruction of the processor, which its name in the sources does not ensure.
set -euo pipefail

exact='ceil|copysign|fabs|floor|fmax|fmin|fmod|frexp|ldexp|modf'
all="a?(cos|sin|tan)h?|atan2|cbrt|ceil|copysign|erfc?|exp(2|10|m1)?|fabs|floor|fma|fmax|fmin|fmod|frexp|hypot|ldexp"
all+="|[lt]gamma|(ll?)?r(int|ound)|log(10|1p|2|b)?|modf|nearbyint|pow|remainder|remquo|scalbl?n|sincos|sqrt|trunc"
calls=$(nm --undefined-only --print-file-name "$@" | grep -E " _?_?($all)[fl]?\$" | grep -vE " ($exact)\$" || true)
[[ -z $calls ]] || { printf '%s\n' "$calls" >&2; exit 1; }
