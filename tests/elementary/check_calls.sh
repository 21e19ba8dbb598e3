#!/usr/bin/env bash
# check_calls.sh OBJECT...: the objects of the library call those functions of the C library's mathematics alone that
# are exact. A square root is an instruction of the processor, which its name in the sources does not ensure.
set -euo pipefail

exact='ceil|copysign|fabs|floor|fmax|fmin|fmod|frexp|ldexp|modf|nearbyint|rint|trunc'
all="a?(cos|sin|tan)h?|atan2|cbrt|ceil|copysign|erfc?|exp(2|10|m1)?|fabs|floor|fma|fmax|fmin|fmod|frexp|hypot|ldexp"
all+="|lgamma(_r)?|log(10|1p|2|b)?|modf|nearbyint|pow|remainder|remquo|rint|scalbl?n|sincos|sqrt|tgamma|trunc"
symbols=$(nm --print-file-name "$@")
[[ $symbols == *" T "* ]] || { echo "no objects" >&2; exit 1; }
calls=$(grep -E " U _?_?($all)[fl]?\$" <<<"$symbols" | grep -vE " ($exact)\$" || true)
[[ -z $calls ]] || { printf '%s\n' "$calls" >&2; exit 1; }
