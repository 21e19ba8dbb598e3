#!/usr/bin/env bash
# check_allocations.sh LIST OBJECT...: of the objects of the library those of LIST, and no others, allocate or call
# what does. errors.cpp alone may make exceptions, and does so at load time: to throw needs no memory.
set -euo pipefail
export LC_ALL=C

allocating() {
    nm --print-file-name "$@" | awk '
        { object = substr($0, 1, index($0, ":") - 1); sub(/.*zul_objects\.dir\/(\.\/)?/, "", object); sub(/\.o$/, "", object) }
        $(NF - 1) == "U" { if (object != "frame/errors.cpp") uses[object, $NF] }
        $(NF - 1) ~ /[A-TV-Z]/ { definedIn[$NF] = object }
        END {
            for (pair in uses) {
                split(pair, use, SUBSEP)
                if (use[2] ~ /^_Zn[wa]|^_ZNSt.*(error|argument)C[12]E/) allocates[use[1]]
            }
            do {
                grown = 0
                for (pair in uses) {
                    split(pair, use, SUBSEP)
                    if (use[1] in allocates || !(use[2] in definedIn) || !(definedIn[use[2]] in allocates)) continue
                    allocates[use[1]]
                    grown = 1
                }
            } while (grown)
            for (object in allocates) print object
        }'
}
diff <(grep -v '^#' "$1") <(allocating "${@:2}" | sort) ||
    { echo "objects that allocate (>) differ from the list (<)" >&2; exit 1; }
