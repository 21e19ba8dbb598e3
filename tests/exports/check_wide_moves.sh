#!/usr/bin/env bash
# check_wide_moves.sh OBJDUMP DLL: no move of four or eight doubles asks for an aligned place, which stacks of this
# system do not have.
set -euo pipefail
moves=$("$1" --disassemble "$2" | grep -E 'vmov[a-z]+[0-9]*[[:space:]].*%[yz]mm')
aligned=$(grep -E 'vmov(ap|dqa|nt).*\(' <<< "$moves" || true)
[[ -z $aligned ]] || { echo "$aligned" >&2; exit 1; }
grep --count 'vmovup.*%zmm.*(' <<< "$moves"  # there are such lanes at all
