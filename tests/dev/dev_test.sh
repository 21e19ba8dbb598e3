#!/usr/bin/env bash
# dev_test.sh: ./dev refuses by its name what it does not know, and a CMake that is too old, before it does anything.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.." || exit
faults=0

# expect STATUS TEXT [WORD...]: what ./dev of these words ends with and says.
expect() {
    local output status
    output=$(timeout 30 ./dev "${@:3}" 2>&1)
    status=$?
    [[ $status == "$1" && $output == *"$2"* ]] && return
    printf './dev %s: %s instead of %s, "%s" without "%s"\n' "${*:3}" "$status" "$1" "$output" "$2" >&2
    faults=1
}

expect 2 "unknown command 'bogus'" bogus
expect 2 "unknown command 'package_linux'" package_linux
for command in package test; do
    expect 2 "$command: linux or windows, not 'mac'" "$command" mac
    expect 2 "$command: unexpected 'now'" "$command" linux now
done
for command in demo docs accuracy coverage memcheck format lint help; do
    expect 2 "$command: unexpected 'now'" "$command" now
done
expect 2 "fuzz: clustering, contingency, " fuzz bogus
expect 2 "fuzz: a number of executions, not 'many'" fuzz numerics many
expect 2 "fuzz: unexpected '3'" fuzz numerics 1 3
FUZZ_PRESET=asan expect 2 "FUZZ_PRESET: fuzz or fuzz-quick, not 'asan'" fuzz

cmakes=$(mktemp -d)
trap 'rm -r "$cmakes"' EXIT
for version in 3.9.6 3.24.4; do
    printf '#!/bin/sh\necho cmake version %s\n' "$version" >"$cmakes/cmake"
    chmod +x "$cmakes/cmake"
    PATH=$cmakes:$PATH expect 1 "CMake 3.25 or newer is needed, $cmakes/cmake is $version." demo
done
exit "$faults"
