#!/usr/bin/env bash
# check_lanes.sh OBJECT...: of the objects of the library, those compiled for one level of processors (named *_of_four
# and *_of_eight) define their one table and no common function, which the linker might take for all processors.
set -euo pipefail

found=0
for object in "$@"; do
    case $object in *_of_four.cpp.*|*_of_eight.cpp.*) ;; *) continue ;; esac
    found=$((found + 1))
    shared=$(nm --defined-only "$object" |
        awk '$2 ~ /[A-Zuvw]/ && !($2 ~ /[DR]/ && $3 ~ /^_ZN3zul([0-9]+[a-z]+)+[0-9]+k[A-Z]/) && $3 !~ /^DW\.ref\./')
    [[ -z $shared ]] || { printf '%s defines\n%s\n' "$object" "$shared" >&2; exit 1; }
done
((found >= 4))
